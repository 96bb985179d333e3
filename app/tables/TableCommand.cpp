#include "tables/TableCommand.h"

#include "options/CommonOptions.h"
#include "output/TableView.h"
#include "output/Text.h"
#include "tables/Tables.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>

namespace
{
using MakeTable = Table (*)(const CJOBX& job, const TableRequest& request);

// An option that chooses rows by their names.
struct NameOption
{
    const char* name; // null: the command has none
    const char* about;
};

// A command line, and what it is for.
struct Example
{
    const char* purpose;
    const char* line;
};

struct TableCommand
{
    const char* name;
    const char* about;
    Example example;
    const char* footer;
    TableKind kind;
    MakeTable make;
    NameOption filter;
};

constexpr const char* kNetsFooter = R"(Columns; a count has no unit:
  Step             the step; only if nets of several steps are shown
  Name             the net's name
  Pins (toeprints)
                   how many pins of components are on the net
  Vias, Traces, Planes
                   how many connected pieces of these kinds it has
  Features         how many features of layers belong to the net
  Netlist points   how many test points the netlist "cadnet" has for it; empty
                   if the netlist does not have the net
With --wide:
  Index            the place among the nets, from 0
  Number           the number in the file
  Subnets, Others  how many connected pieces it has, of all and of other kinds

Columns of --pins, with one pin in a row, net by net; pins without a net, and
those of the net $NONE$, come last:
  Step             the step; only if pins of several steps are shown
  Net              the net
  Component        the designator of the component
  Pin              the name of its pin
  Side             top or bottom, from the place of the component layer in the
                   matrix
  X, Y             where the pin meets the board, in the unit of the title
With --wide:
  Layer            the component layer
  Unit             of X and Y: mm or inch

)";
constexpr const char* kComponentsFooter = R"(Columns:
  Step        the step; only if components of several steps are shown
  Name        the reference designator
  Part        the part name
  Package     the package; "jobx packages" describes it
  Value       the property VALUE
  Mount       the attribute .comp_mount_type: smt, thmt (through hole), pressfit
              or other; without it smt or thmt, as the pins of the package say
  Side        top or bottom, from the place of the component layer in the matrix
  X, Y        the place on the board, in the unit of the title
  Angle (rotation)
              clockwise, in degrees
  Height      the attribute .comp_height, in the unit of the title
With --wide:
  Layer       the component layer
  Number      the place in its file, from 0
  Mirror      1 for a mirrored component, else 0
  Pins (toeprints), Properties, Attributes
              how many there are
  Unit        of X, Y and Height: mm or inch

)";
constexpr const char* kPackagesFooter = R"(Columns; lengths are in the unit of the title:
  Step        the step; only if packages of several steps are shown
  Name        the package; "jobx components" also shows it
  Pins        how many pins it has
  Pitch       the distance between its pins
  Size x, Size y
              of the box around it
  Used (components)
              how many components have it
  Components (designators)
              their designators; the list is shortened without --wide
With --wide:
  Index       the place among the packages, from 0
  Number      the number in the file
  Left, Bottom, Right, Top
              the box around the package
  Outline records (outlines)
              how many records describe its outline
  Unit        of the lengths: mm or inch

)";
constexpr const char* kLayersFooter = R"(Columns:
  Row         the row of the matrix, from the top of the board
  Name, Context, Type, Polarity
              as in the matrix; Context and Polarity only if they differ
  Features    how many, in all steps that were read
  Span        the first and the last layer of a drill or rout
  Thickness   of the dielectric, from the attribute .layer_dielectric, in the
              unit of the title
  Cu (copperWeight)
              the attribute .copper_weight
  Cu unit (copperUnit)
              of Cu: "oz" (ounces per square foot) for a file in inch, else
              "um" (microns)
  Dielectric  its material, from the matrix
  Er (dielectricConstant)
              the attribute .dielectric_constant, without a unit
With --wide:
  Components  how many a component layer has
  Unit        of Thickness: mm or inch

An amount of 0 in an attribute list means that it is not known.

)";
constexpr const char* kCommonFooter = R"(Columns that are empty in every row are left out. On a terminal, texts are
shortened, and columns left out from the right, until the lines fit; --wide and
--columns prevent that. Lengths in the aligned table are rounded to 4 decimals
of mm or 5 of inch; --csv and --json have all digits, all columns, and the unit
of lengths in a column "unit". --columns and --sort take a title, or a key from
the first line of --csv, above in brackets where it is another word.

--legacy prints the columns of earlier versions, some with the words in brackets
as titles. It can be combined with --csv, --json and --step only.

Exit codes and more examples: jobx --help)";

constexpr TableKind kPins{"pins", "step?,net,component,pin,side,x,y"};

constexpr TableCommand kTableCommands[] = {
    {"layers",
     "Prints the layers of the matrix as a table",
     {"the stack-up from top to bottom", "jobx layers samples/blinker --units mm"},
     kLayersFooter,
     {"layers",
      "row,name,context?,type,polarity?,features,span,thickness,copperWeight,copperUnit,dielectric,dielectricConstant"},
     LayersTable,
     {"--layer", "Only layers whose names match, with * and ?; letter case is ignored"}},
    {"nets",
     "Prints the nets, or their pins, as a table",
     {"which pins the nets of the crystal have", "jobx nets samples/blinker --net 'XT*' --pins"},
     kNetsFooter,
     {"nets", "step?,name,toeprints,vias,traces,planes,features,netlistPoints"},
     NetsTable,
     {"--net", "Only nets whose names match, with * and ?"}},
    {"components",
     "Prints the placed components as a table",
     {"a placement list for a spreadsheet", "jobx components samples/blinker --sort name --csv > placement.csv"},
     kComponentsFooter,
     {"components", "step?,name,part,package,value,mount,side,x,y,rotation,height"},
     ComponentsTable,
     {"--name", "Only components whose names match, with * and ?"}},
    {"packages",
     "Prints the packages as a table",
     {"the packages, those with the most pins first", "jobx packages samples/blinker --sort -pins"},
     kPackagesFooter,
     {"packages", "step?,name,pins,pitch,sizeX,sizeY,components,designators"},
     PackagesTable,
     {nullptr, nullptr}},
};

struct TableOptions
{
    ReadOptions read;
    TableView view;
    std::optional<JOBXunit> unit;
    std::string pattern;
    std::string component;
    std::optional<BoardSide> side;
    bool pins = false;
};

BoardSide SideIn(const std::string& text)
{
    for (const BoardSide side : {BoardSide::Top, BoardSide::Bottom})
        if (WordFor(side) == text)
            return side;
    RaiseWrongUsage(fmt::format("--side needs \"top\" or \"bottom\", not \"{}\"", Printable(text)));
}

void PrintClassicTable(const TableCommand& table, const TableOptions& options)
{
    const ReadJob read = ReadGoodJobDirectory(options.read);
    Output output;
    table.make(*read.job, {.unit = ShownUnit(JOBXunit::Inch), .isClassic = true}).Print(output, options.view.form);
}

void PrintTable(const TableCommand& table, const TableOptions& options)
{
    if (!options.component.empty() && !options.pins)
        RaiseWrongUsage("--component needs --pins");
    const MakeTable make = options.pins ? NetPinsTable : table.make;
    const TableKind& kind = options.pins ? kPins : table.kind;
    CheckView(make(CJOBX(), {.unit = ShownUnit(JOBXunit::Inch)}).Columns(), kind, options.view);
    const ReadJob read = ReadGoodJobDirectory(options.read);
    const TableRequest request{.unit = ShownUnit(*read.job, options.unit),
                               .pattern = options.pattern,
                               .component = options.component,
                               .side = options.side};
    PrintView(make(*read.job, request), kind, options.view, options.read.quiet);
    CheckStrictly(options.read, read);
}

void AddGlob(CLI::App& command, const NameOption& option, std::string& pattern, CLI::Option* legacy)
{
    command
        .add_option_function<std::string>(
            option.name,
            [name = option.name, &pattern](const std::string& text)
            {
                if (text.empty())
                    RaiseWrongUsage(std::string(name) + " needs a name");
                pattern = text;
            },
            option.about)
        ->type_name("GLOB")
        ->excludes(legacy);
}

void AddSide(CLI::App& command, std::optional<BoardSide>& side, CLI::Option* legacy)
{
    command
        .add_option_function<std::string>(
            "--side", [&side](const std::string& text) { side = SideIn(text); },
            "Only components on this side of the board: top or bottom")
        ->type_name("SIDE")
        ->excludes(legacy);
}

void AddTableCommand(CLI::App& app, const TableCommand& table)
{
    const auto options = std::make_shared<TableOptions>();
    CLI::App& command = AddJobCommand(app, table.name, table.about, options->read);
    CLI::Option* const legacy = AddWay(command, options->read);
    AddSteps(command, options->read.steps);
    if (table.filter.name != nullptr)
        AddGlob(command, table.filter, options->pattern, legacy);
    if (table.make == NetsTable)
    {
        command.add_flag("--pins", options->pins, "The pins of the nets, one in a row")->excludes(legacy);
        AddGlob(command, {"--component", "With --pins, only pins of components whose names match, with * and ?"},
                options->component, legacy);
    }
    if (table.make == ComponentsTable)
        AddSide(command, options->side, legacy);
    AddTableView(command, options->view);
    AddUnits(command, options->unit);
    RefuseTogether(command, legacy, {"--wide", "--columns", "--sort", "--units"});
    SetExample(command, table.example.purpose, table.example.line);
    command.footer(std::string(table.footer) + kCommonFooter);
    command.callback([&table, options]
                     { (options->read.way == JOBXway::Classic ? PrintClassicTable : PrintTable)(table, *options); });
}
} // namespace

void AddTableCommands(CLI::App& app)
{
    for (const TableCommand& table : kTableCommands)
        AddTableCommand(app, table);
}
