#include "info/InfoCommand.h"

#include "info/BoardScreen.h"
#include "info/CompactInfo.h"
#include "info/InfoJson.h"
#include "info/InfoTables.h"
#include "info/JobSummary.h"
#include "options/CommonOptions.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <tuple>
#include <vector>

namespace
{
struct InfoOptions
{
    ReadOptions read;
    std::optional<InfoPart> tables; // instead of the board's facts
    bool json = false;
    bool compact = false; // prints the compact model instead of the summary
};

void PrintInfo(const InfoOptions& options)
{
    const ReadJob read = ReadGoodJobDirectory(options.read);
    Output output;
    if (options.compact)
    {
        PrintCompactInfo(output, *read.job, options.json);
        return;
    }
    // Classic reading has no facts such as attribute lists and tools.
    const bool isClassic = options.read.way == JOBXway::Classic;
    if (options.json)
        PrintInfoJson(output, JobSummary(*read.job), isClassic ? nullptr : &read);
    else if (options.tables || isClassic)
        PrintInfoTables(output, JobSummary(*read.job), options.tables.value_or(InfoPart::All));
    else
        PrintBoardScreen(output, read, BoardFacts(*read.job));
    CheckStrictly(options.read, read);
}
} // namespace

namespace
{
constexpr const char* kInfoFooter = R"(Lines of the screen; lengths are in mm, and in brackets in inch or mil:
  Board        the step that repeats no other; if there are several, the one
               with the most components
  Thickness    from the attribute .board_thickness, else from the drill tools
  Copper       the copper layers from the top, with their attribute
               .copper_weight in ounces per square foot (oz) or microns
  Line width   the smallest of the lines and arcs on the copper layers
  Top, Bottom  the pins are counted by the pin types of the packages
  Nets         without $NONE$, which collects the pins that have no net
  Drilled      pads of the drill layers are holes, lines and arcs are slots; the
               attribute .drill, else the list of tools, says which are vias,
               other plated or non-plated holes
  Drill sizes  each diameter in mm, and how many holes and slots have it
  Drill spans  how many holes and slots go between which copper layers
  Panel        a step that repeats others, and how often
  Reading      what reading the job found wrong; First is the most serious
               message
What the job does not say is left out.

Columns of the tables; a count has no unit, a length has that of its file:
  Column, Step           the steps of the matrix and their columns there
  Row, Layer, Context, Type, Polarity, Span
                         the layers of the matrix; Span: of a drill or rout
  Layer, Symbol          a layer of the step, or a user symbol
  Units                  of the lengths in its file
  Symbols, Features      how many it has
  Lines, Pads, Arcs, Texts, Barcodes, Surfaces
                         how many features of each kind
  Contours               how many its surfaces have
  Attr. names, Attr. texts
                         how many names and texts of attributes it declares
  Component layer, Components, Toeprints, Properties, Attributes
                         a component layer, and how many components, pins,
                         properties and attributes it has
  Repeated step, X, Y, Pitch x, Pitch y, Columns, Rows
                         a repeated step, its place, the distances between its
                         copies, and how many there are in x and y
  Angle, Mirror, Flip    how the copies lie; the angle clockwise, in degrees
  Attribute, Options     a system attribute and its values
Columns of --compact:
  Part, Name, Units      a part of the model, its name, and its unit
  Factor                 by which its lengths were multiplied
  Records, Pieces        how many it has, and how many parts these have
  Left, Bottom, Right, Top
                         the box around it, in that unit

Exit codes and more examples: jobx --help)";

void AddParts(CLI::App& command, std::optional<InfoPart>& part)
{
    constexpr std::tuple<const char*, InfoPart, const char*> kParts[] = {
        {"--layers", InfoPart::Layers, "The matrix, and tables of the layers of each step, instead"},
        {"--symbols", InfoPart::Symbols, "A table of the user symbols instead"},
        {"--all", InfoPart::All, "Everything in numbers instead: header, matrix, steps, layers, symbols"},
    };
    std::vector<CLI::Option*> options;
    for (const auto& [name, value, about] : kParts)
    {
        options.push_back(command.add_flag_callback(
            name, [&part, value = value] { part = value; }, about));
        for (CLI::Option* const other : options)
            if (other != options.back())
                options.back()->excludes(other);
    }
}
} // namespace

void AddInfoCommand(CLI::App& app)
{
    const auto options = std::make_shared<InfoOptions>();
    CLI::App& command = AddJobCommand(app, "info", "Prints the facts about the board on one screen", options->read);
    AddWay(command, options->read);
    AddSteps(command, options->read.steps);
    AddSystemAttributes(command, options->read);
    AddParts(command, options->tables);
    command.add_flag("--json", options->json, "Facts and tables as one JSON document");
    SetExample(command, "the facts about the board", "jobx info samples/blinker");
    command.footer(kInfoFooter);
    command
        .add_flag("--compact", options->compact,
                  "Show the compact model of each step instead, before and after its conversion to inches; reads as "
                  "--legacy does")
        ->excludes("--strict");
    command.callback(
        [options]
        {
            if (options->compact)
                options->read.way = JOBXway::Classic;
            PrintInfo(*options);
        });
}
