#include "features/FeaturesCommand.h"

#include "features/FeatureRow.h"
#include "model/RecordCounts.h"
#include "options/CommonOptions.h"
#include "output/Terminal.h"
#include "output/Text.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <array>
#include <memory>

namespace
{
constexpr const char* kFeaturesFooter = R"(Columns; lengths are in the unit of the title:
  Step, Layer  the step and the layer; only if there are several
  Kind         line, pad, arc, text, barcode or surface
  X, Y, X2, Y2
               the place of a pad or text, the ends of a line or arc, the box
               around a surface
  Symbol       that draws a line, arc or pad
  Polarity     positive or negative; only if both are there
  Net          the net that the EDA data gives it
  Text         of a text or barcode
  Line         the line in the features file; empty if the file is compressed
  Attributes   names with values; a flag has none
With --wide:
  Index        the number of the feature in its file, from 0, which records of
               the EDA data use
  Angle        how a pad is turned, clockwise, in degrees
  Mirror       1 if it is mirrored after that, else 0
  File         the features file
  Unit         of the lengths: mm or inch

--near finds what has a part within R of the point. Standard symbols count with
the box around them, a pad with another symbol and a text only with their place,
and a surface with all its area. X, Y and R are in the unit that is shown.

--ndjson prints one JSON object in a line, always in mm: "at" of a pad or text,
"start", "end" and "centre" of lines and arcs, "box" of a surface (left, bottom,
right, top).

Names have the wildcards * and ?. Case counts only in names of nets, and only if
a net of that case matches.

On a terminal, texts are shortened, and columns left out from the right, until
the lines fit; --wide and --columns prevent that. Lengths in the aligned table
are rounded to 4 decimals of mm or 5 of inch. With --legacy, the job is read
like the library does by default.

Exit codes and more examples: jobx --help)";

struct FeaturesOptions
{
    ReadOptions read;
    TableView view;
    std::optional<JOBXunit> unit;
    bool ndjson = false;
    FeatureQuery query;
    std::optional<std::array<double, 3>> near; // x, y and radius in the unit shown
};

std::array<double, 3> PlaceIn(const std::string& text)
{
    std::array<double, 3> numbers{};
    std::size_t count = 0;
    std::string_view rest = text;
    for (bool isMore = true; isMore;)
    {
        const std::size_t comma = rest.find(',');
        const std::optional<double> number = NumberIn(std::string(rest.substr(0, comma)));
        if (!number || count == numbers.size())
            break;
        numbers[count++] = *number;
        isMore = comma != std::string_view::npos;
        rest.remove_prefix(isMore ? comma + 1 : rest.size());
        if (!isMore && count == numbers.size() && numbers[2] >= 0.0)
            return numbers;
    }
    RaiseWrongUsage(fmt::format("--near needs X,Y,R: three numbers, R at least 0, not \"{}\"", Printable(text)));
}

FeatureAttribute AttributeIn(const std::string& text)
{
    const std::size_t sign = text.find('=');
    if (text.empty() || sign == 0)
        RaiseWrongUsage("--attribute needs a name, as in .pad_usage=via");
    return {text.substr(0, sign), sign == std::string::npos ? std::nullopt : std::optional(text.substr(sign + 1))};
}

FeatureQuery QueryOf(const FeaturesOptions& options, const ShownUnit& unit)
{
    FeatureQuery query = options.query;
    if (options.near)
    {
        const double factor = JOBXfactorToMM(unit.Unit());
        const auto& [x, y, radius] = *options.near;
        query.place = FeaturePlace{{x * factor, y * factor}, radius * factor};
    }
    return query;
}

void PrintFeatures(const FeaturesOptions& options)
{
    CheckView(EmptyFeatureTable(ShownUnit(JOBXunit::Inch)).Columns(), kFeatureTable, options.view);
    const ReadJob read = ReadGoodJobDirectory(options.read);
    const ShownUnit unit(*read.job, options.unit);
    const FeatureQuery query = QueryOf(options, unit);
    LineFinder lines(options.read.jobPath);
    if (options.ndjson)
    {
        CountedProgress progress("searching", options.read.quiet || IsTerminal(stdout), CountFeatures(*read.job));
        Output output;
        FindFeatures(*read.job, query, progress,
                     [&](const FoundFeature& found)
                     {
                         JsonOutput json(output, TextBytes::Utf8OrLatin1);
                         WriteFeature(json, found, lines);
                         output.Put('\n');
                     });
        output.Flush();
    }
    else
    {
        Table table = EmptyFeatureTable(unit);
        {
            CountedProgress progress("searching", options.read.quiet, CountFeatures(*read.job));
            FindFeatures(*read.job, query, progress,
                         [&](const FoundFeature& found) { table.Add(FeatureCells(found, unit, lines)); });
        }
        PrintView(std::move(table), kFeatureTable, options.view, options.read.quiet);
    }
    CheckStrictly(options.read, read);
}

void AddPattern(CLI::App& command, const char* name, const char* about, std::string& pattern)
{
    command
        .add_option_function<std::string>(
            name,
            [name, &pattern](const std::string& text)
            {
                if (text.empty())
                    RaiseWrongUsage(std::string(name) + " needs a name");
                pattern = text;
            },
            about)
        ->type_name("GLOB");
}

void AddQuery(CLI::App& command, FeaturesOptions& options)
{
    AddPattern(command, "--layer", "Only on layers whose names match, with * and ?", options.query.layer);
    AddPattern(command, "--net", "Only features of nets whose names match", options.query.net);
    AddPattern(command, "--symbol", "Only features with a symbol whose name matches", options.query.symbol);
    command
        .add_option_function<std::string>(
            "--attribute", [&options](const std::string& text) { options.query.attribute = AttributeIn(text); },
            "Only features with this attribute, or with this value of it: NAME=VALUE")
        ->type_name("NAME");
    command
        .add_option_function<std::string>(
            "--near", [&options](const std::string& text) { options.near = PlaceIn(text); },
            "Only what is at most R away from the point X,Y")
        ->type_name("X,Y,R");
}
} // namespace

void AddFeaturesCommand(CLI::App& app)
{
    const auto options = std::make_shared<FeaturesOptions>();
    CLI::App& command =
        AddJobCommand(app, "features", "Prints features of layers: those of a net, or at a place", options->read);
    AddWay(command, options->read);
    AddSteps(command, options->read.steps);
    AddQuery(command, *options);
    AddTableView(command, options->view);
    AddUnits(command, options->unit);
    CLI::Option* const ndjson =
        command.add_flag("--ndjson", options->ndjson, "As JSON, one object in a line, lengths in mm");
    RefuseTogether(command, ndjson, {"--csv", "--json", "--wide", "--columns", "--sort", "--units"});
    SetExample(command, "what is at this place", "jobx features samples/blinker --step pcb --near 0.44,0.45,0");
    command.footer(kFeaturesFooter);
    command.callback([options] { PrintFeatures(*options); });
}
