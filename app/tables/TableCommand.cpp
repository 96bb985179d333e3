#include "tables/TableCommand.h"

#include "options/CommonOptions.h"
#include "output/TableView.h"
#include "tables/Tables.h"

#include <CLI/CLI.hpp>

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

struct TableCommand
{
    const char* name;
    const char* about;
    const char* example;
    const char* footer;
    TableKind kind;
    MakeTable make;
    NameOption filter;
};

constexpr const char* kNetsFooter = R"(Columns:
  Step            the step; only if nets of several steps are shown
  Name            the net's name
  Pins            the pins of components on the net
  Vias, Traces, Planes
                  connected pieces of these kinds
  Features        features of layers that belong to the net
  Netlist points  test points of that net in the netlist "cadnet"; empty if the netlist does not have the net
  Index, Number, Subnets, Others
                  with --wide: the place among the nets, the number in the file, all connected pieces, and those of
                  other kinds

Columns of --pins, with one pin in a row, net by net; pins without a net come last:
  Net, Component, Pin
                  the net, the designator of the component, and the name of its pin
  Side            top or bottom, from the place of the component layer in the matrix
  X, Y            where the pin meets the board
  Layer           with --wide: the component layer

)";
constexpr const char* kComponentsFooter = R"(Columns:
  Step      the step; only if components of several steps are shown
  Name      the reference designator
  Part      the part name
  Package   the package; "jobx packages" describes it
  Value     the property VALUE
  Mount     the attribute .comp_mount_type: smt, thmt (through hole), pressfit or other; without it smt or thmt, as the
            pins of the package say
  Side      top or bottom, from the place of the component layer in the matrix
  X, Y      the place on the board
  Angle     the rotation in degrees, clockwise
  Height    the attribute .comp_height
  Layer, Number, Mirror, Pins, Properties, Attributes, Unit
            with --wide: the component layer, the place in its file, 1 for a mirrored component, counts, and the unit of
            the lengths

)";
constexpr const char* kPackagesFooter = R"(Columns:
  Step        the step; only if packages of several steps are shown
  Name        the package; "jobx components" names it, too
  Pins        how many pins it has
  Pitch       the distance of its pins
  Size x, Size y
              of the box around it
  Used        how many components have it
  Components  their designators; the list is shortened without --wide
  Index, Number, Left, Bottom, Right, Top, Outline records, Unit
              with --wide: the place among the packages, the number in the file, the box around the package, counts, and
              the unit of the lengths

)";
constexpr const char* kLayersFooter = R"(Columns:
  Row         the row of the matrix, from the top of the board
  Name, Context, Type, Polarity
              as in the matrix
  Span        the first and the last layer of a drill or rout
  Features    in all steps that were read
  Thickness   of the dielectric, from the attribute .layer_dielectric
  Cu, Cu unit
              the attribute .copper_weight: ounces per square foot ("oz") in a file in inch, else microns ("um")
  Dielectric  its material, from the matrix
  Er          the attribute .dielectric_constant
  Components, Unit
              with --wide: components of a component layer, and the unit of the lengths

An amount of 0 in an attribute list means that it is not known.

)";
constexpr const char* kCommonFooter =
    R"(Columns that are empty in every row are left out. On a terminal, texts are shortened, and columns left out from the
right, until the lines fit; --wide and --columns prevent that. Lengths in the aligned table are rounded to 4 decimals of
mm or 5 of inch; --csv and --json have all digits, all columns, and a column "unit". --columns and --sort take a title, or
a key from the first line of --csv.

--legacy prints the columns of earlier versions. It can be combined with --csv, --json and --step only.

Examples and exit codes: jobx --help)";

constexpr TableKind kPins{"pins", "step?,net,component,pin,side,x,y"};

constexpr TableCommand kTableCommands[] = {
    {"layers",
     "Prints the layers of the matrix as a table",
     R"(jobx layers board --units mm    the stack-up from top to bottom)",
     kLayersFooter,
     {"layers",
      "row,name,context?,type,polarity?,features,span,thickness,copperWeight,copperUnit,dielectric,dielectricConstant"},
     LayersTable,
     {"--layer", "Only layers whose names match, with * and ?; letter case is ignored"}},
    {"nets",
     "Prints the nets, or their pins, as a table",
     R"(jobx nets board --net 'USB*' --pins    which pins the nets of the USB port have)",
     kNetsFooter,
     {"nets", "step?,name,toeprints,vias,traces,planes,features,netlistPoints"},
     NetsTable,
     {"--net", "Only nets whose names match, with * and ?"}},
    {"components",
     "Prints the placed components as a table",
     R"(jobx components board --sort name --csv > placement.csv    a placement list)",
     kComponentsFooter,
     {"components", "step?,name,part,package,value,mount,side,x,y,rotation,height"},
     ComponentsTable,
     {"--name", "Only components whose names match, with * and ?"}},
    {"packages",
     "Prints the packages as a table",
     R"(jobx packages board --sort -pins    the packages, the largest first)",
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
    bool pins = false;
};

void PrintClassicTable(const TableCommand& table, const TableOptions& options)
{
    const ReadJob read = ReadGoodJobDirectory(options.read);
    Output output;
    table.make(*read.job, {ShownUnit(JOBXunit::Inch), true, ""}).Print(output, options.view.form);
}

void PrintTable(const TableCommand& table, const TableOptions& options)
{
    const MakeTable make = options.pins ? NetPinsTable : table.make;
    const TableKind& kind = options.pins ? kPins : table.kind;
    CheckView(make(CJOBX(), {ShownUnit(JOBXunit::Inch), false, ""}).Columns(), kind, options.view);
    const ReadJob read = ReadGoodJobDirectory(options.read);
    const TableRequest request{ShownUnit(*read.job, options.unit), false, options.pattern};
    PrintView(make(*read.job, request), kind, options.view, options.read.quiet);
    CheckStrictly(options.read, read);
}

void AddTableCommand(CLI::App& app, const TableCommand& table)
{
    const auto options = std::make_shared<TableOptions>();
    CLI::App& command = AddJobCommand(app, table.name, table.about, options->read);
    CLI::Option* const legacy = AddWay(command, options->read);
    AddSteps(command, options->read.steps);
    if (table.filter.name != nullptr)
        command
            .add_option_function<std::string>(
                table.filter.name,
                [&table, options](const std::string& pattern)
                {
                    if (pattern.empty())
                        RaiseWrongUsage(std::string(table.filter.name) + " needs a name");
                    options->pattern = pattern;
                },
                table.filter.about)
            ->type_name("GLOB")
            ->excludes(legacy);
    if (table.make == NetsTable)
        command.add_flag("--pins", options->pins, "The pins of the nets, one in a row")->excludes(legacy);
    AddTableView(command, options->view);
    AddUnits(command, options->unit);
    RefuseTogether(command, legacy, {"--wide", "--columns", "--sort", "--units"});
    SetExample(command, table.example);
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
