#include "diff/DiffCommand.h"

#include "diff/ChangesText.h"
#include "diff/JobDiff.h"
#include "diff/MeaningDiff.h"
#include "options/CommonOptions.h"
#include "output/Colours.h"
#include "output/JsonOutput.h"
#include "output/NearestName.h"
#include "output/Terminal.h"
#include "output/Text.h"
#include "output/Wrapping.h"
#include "reading/JobReader.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace
{
struct DiffOptions
{
    ReadOptions read; // of both jobs
    std::string jobA;
    std::string jobB;
    std::optional<double> tolerance;
    bool ignoreLineNumbers = false;
    MeaningRules meaning;
    bool json = false;
};

constexpr std::size_t kIndent = 8; // of further lines

std::string ShownValue(const DiffValue& value)
{
    if (const auto* const text = std::get_if<std::string>(&value))
        return '"' + Printable(*text) + '"';
    if (const auto* const number = std::get_if<std::int64_t>(&value))
        return std::to_string(*number);
    if (const auto* const real = std::get_if<double>(&value))
        return std::string(NumberText(*real).View());
    if (const auto* const point = std::get_if<CPointD>(&value))
        return fmt::format("{}, {}", NumberText(point->x).View(), NumberText(point->y).View());
    return {};
}

std::string ShownChange(DiffChange change)
{
    const Paint paint(stdout);
    switch (change)
    {
    case DiffChange::OnlyInA:
        return paint(Colour::Removed, "only in A");
    case DiffChange::OnlyInB:
        return paint(Colour::Added, "only in B");
    default:
        return "changed";
    }
}

const char* JsonChange(DiffChange change)
{
    switch (change)
    {
    case DiffChange::OnlyInA:
        return "onlyInA";
    case DiffChange::OnlyInB:
        return "onlyInB";
    default:
        return "changed";
    }
}

bool HasValues(const DiffExample& example)
{
    return !std::holds_alternative<std::monostate>(example.a) || !std::holds_alternative<std::monostate>(example.b);
}

// Errors of reading; what they hide could not be compared.
struct ReadErrors
{
    std::int64_t a = 0;
    std::int64_t b = 0;
};

std::string ErrorsOf(const char* job, std::int64_t count)
{
    return count == 0 ? "" : fmt::format("{} has {} error{}", job, count, count == 1 ? "" : "s");
}

void PrintErrors(Output& output, const ReadErrors& errors)
{
    const std::string a = ErrorsOf("A", errors.a);
    const std::string b = ErrorsOf("B", errors.b);
    if (a.empty() && b.empty())
        return;
    const std::string line =
        fmt::format("{}{}{}: some of it could not be compared", a, !a.empty() && !b.empty() ? ", " : "", b);
    output.Write(Wrapped(line, TerminalWidth(stdout), kIndent) + "\n");
}

// On a terminal, lines are broken where it would break them.
void PrintGroups(Output& output, const DiffCollector& collector)
{
    const std::size_t width = TerminalWidth(stdout);
    const auto print = [&](const std::string& line) { output.Write(Wrapped(line, width, kIndent) + "\n"); };
    for (const DiffGroup& group : collector.Groups())
    {
        const std::string field = group.field.empty() ? "" : fmt::format(" ({})", group.field);
        print(fmt::format("{}: {}{}: {} {}", group.place, group.kind, field, group.count, ShownChange(group.change)));
        for (const DiffExample& example : group.examples)
            if (HasValues(example))
                print(fmt::format("    {}: {} {} -> {}", example.path, group.field, ShownValue(example.a),
                                  ShownValue(example.b)));
            else
                print(fmt::format("    {}: {}{}{}", example.path, group.field, group.field.empty() ? "" : " ",
                                  ShownChange(group.change)));
    }
}

// The parts that are compared.
std::vector<std::string_view> PartsOf(const MeaningRules& rules)
{
    std::vector<std::string_view> names;
    for (std::size_t i = 0; i < kDiffParts.size(); ++i)
        if (rules.only.empty() || rules.only.contains(static_cast<DiffPart>(i)))
            names.push_back(kDiffParts[i]);
    return names;
}

// "identical" alone says that the jobs are, not parts of them.
std::string IdenticalText(const MeaningRules& rules)
{
    const std::string text = rules.only.empty() ? "" : fmt::format(" in {}", fmt::join(PartsOf(rules), ", "));
    return Wrapped("identical" + text, TerminalWidth(stdout), kIndent) + "\n";
}

// The changes are null after classic reading.
void PrintText(const DiffOptions& options, const DiffCollector& collector, const JobChanges* changes,
               const ReadErrors& errors)
{
    Output output;
    if (changes != nullptr)
        PrintChanges(output, *changes, collector);
    PrintGroups(output, collector);
    if (collector.Differences() == 0)
        output.Write(IdenticalText(options.meaning));
    else
        output.Write(fmt::format("{} difference{} in {} place{}\n", collector.Differences(),
                                 collector.Differences() == 1 ? "" : "s", collector.Places(),
                                 collector.Places() == 1 ? "" : "s"));
    PrintErrors(output, errors);
    output.Flush();
}

void WriteValue(JsonOutput& json, std::string_view key, const DiffValue& value)
{
    if (const auto* const text = std::get_if<std::string>(&value))
        json.Member(key, std::string_view(*text));
    else if (const auto* const number = std::get_if<std::int64_t>(&value))
        json.Member(key, *number);
    else if (const auto* const real = std::get_if<double>(&value))
        json.Member(key, *real);
    else if (const auto* const point = std::get_if<CPointD>(&value))
        json.Member(key, *point);
}

void WriteGroup(JsonOutput& json, const DiffGroup& group)
{
    json.Object(
        [&]
        {
            json.Member("place", std::string_view(group.place));
            json.Member("kind", group.kind);
            json.Member("change", std::string_view(JsonChange(group.change)));
            json.Member("field", group.field);
            json.Member("count", group.count);
            json.ArrayMember("examples",
                             [&]
                             {
                                 for (const DiffExample& example : group.examples)
                                     json.Object(
                                         [&]
                                         {
                                             json.Member("path", std::string_view(example.path));
                                             WriteValue(json, "a", example.a);
                                             WriteValue(json, "b", example.b);
                                         });
                             });
        });
}

void PrintJson(const DiffOptions& options, const DiffCollector& collector, const JobChanges& changes,
               const ReadErrors& errors)
{
    Output output;
    JsonOutput json(output, TextBytes::Utf8OrLatin1);
    json.Object(
        [&]
        {
            json.Member("a", std::string_view(options.jobA));
            json.Member("b", std::string_view(options.jobB));
            json.Member("differences", collector.Differences());
            json.Member("places", collector.Places());
            if (options.read.way == JOBXway::Complete)
            {
                json.ArrayMember("compared",
                                 [&]
                                 {
                                     for (const std::string_view part : PartsOf(options.meaning))
                                         json.Value(part);
                                 });
                json.Member("errorsInA", errors.a);
                json.Member("errorsInB", errors.b);
                WriteChanges(json, changes);
            }
            json.ArrayMember("groups",
                             [&]
                             {
                                 for (const DiffGroup& group : collector.Groups())
                                     WriteGroup(json, group);
                             });
        });
    json.Finish();
}

constexpr const char* kDiffFooter = R"(The summary comes first, then the differences in detail. Lengths are in mm:
  Components, Nets  how many were added, removed, moved or changed, and the
                    first of them
  Features          how many each layer has that the other job has not, with
                    their area, and how many were moved or changed
  Drills            each diameter, and how many holes A and B have of it
  Aligned           with --align: the shift that was found
  Other             everything else, by its place, and how many differences
The details name a place, a kind of record and its field, how many differ, and
the first of them with both values.

The nets of pins are compared with the nets, all else of pins with the
components. "identical in" names the parts if --only chooses them.

The exit code is 1 if the jobs differ.

Exit codes and more examples: jobx --help)";

double ToleranceIn(const std::string& text)
{
    const std::optional<double> tolerance = NumberIn(text);
    if (!tolerance || *tolerance < 0)
        RaiseWrongUsage(fmt::format("--tolerance needs a number of at least 0, not \"{}\"", Printable(text)));
    return *tolerance;
}

std::string ListOfParts()
{
    return fmt::format("{}", fmt::join(kDiffParts, ", "));
}

std::set<DiffPart> PartsIn(const std::string& text)
{
    std::set<DiffPart> parts;
    for (const std::string& word : SplitAtCommas(text, "--only needs names of parts, separated by commas"))
    {
        const auto* const found = std::find(kDiffParts.begin(), kDiffParts.end(), word);
        if (found == kDiffParts.end())
            RaiseWrongUsage(fmt::format("--only knows no part \"{}\"; the parts are: {}{}", Printable(word),
                                        ListOfParts(), DidYouMean(word, {kDiffParts.begin(), kDiffParts.end()})));
        parts.insert(static_cast<DiffPart>(found - kDiffParts.begin()));
    }
    return parts;
}

ExitCode PrintDiff(const DiffOptions& options)
{
    ReadOptions read = options.read;
    read.jobPath = options.jobA;
    const ReadJob a = ReadGoodJobDirectory(read);
    read.jobPath = options.jobB;
    const ReadJob b = ReadGoodJobDirectory(read);
    DiffCollector collector;
    JobChanges changes;
    if (options.read.way == JOBXway::Complete)
    {
        MeaningRules rules = options.meaning;
        rules.isQuiet = options.read.quiet;
        rules.tolerance = options.tolerance.value_or(rules.tolerance);
        changes = CompareMeanings(collector, a, b, options.jobA, options.jobB, rules);
    }
    else
        CompareJobs(collector, *a.job, *b.job, {options.tolerance.value_or(0.0), options.ignoreLineNumbers});
    const ReadErrors errors{a.errors, b.errors};
    if (options.json)
        PrintJson(options, collector, changes, errors);
    else
        PrintText(options, collector, options.read.way == JOBXway::Complete ? &changes : nullptr, errors);
    read.jobPath = options.jobA;
    CheckStrictly(read, a);
    read.jobPath = options.jobB;
    CheckStrictly(read, b);
    return collector.Differences() == 0 ? ExitCode::Done : ExitCode::Different;
}
} // namespace

void AddDiffCommand(CLI::App& app, ExitCode& answer)
{
    const auto options = std::make_shared<DiffOptions>();
    CLI::App& command = AddCommand(app, "diff", "Prints what differs between two jobs");
    command.add_option("A", options->jobA, "The directory of the first job")->required()->type_name("");
    command.add_option("B", options->jobB, "The directory of the second job")->required()->type_name("");
    AddReading(command, options->read);
    AddWay(command, options->read);
    command
        .add_option_function<std::string>(
            "--tolerance", [options](const std::string& text) { options->tolerance = ToleranceIn(text); },
            "Ignore coordinates and lengths that differ by at most T, in mm; with --legacy, in the unit of the files")
        ->type_name("T");
    CLI::Option* const legacy = command.get_option("--legacy");
    command.add_flag("--ignore-line-numbers", options->ignoreLineNumbers,
                     "With --legacy, ignore differences in line numbers; else they are never compared");
    command
        .add_flag("--align", options->meaning.align,
                  "Find the shift that most components of B have in common, and compare as if it were undone")
        ->excludes(legacy);
    command
        .add_option_function<std::string>(
            "--only", [options](const std::string& text) { options->meaning.only = PartsIn(text); },
            "Compare only these parts, separated by commas: " + ListOfParts())
        ->type_name("PARTS")
        ->excludes(legacy);
    command.add_flag("--json", options->json, "As a JSON document");
    SetExample(command, "what changed in a newer copy of the job", "jobx diff samples/blinker newer");
    command.footer(kDiffFooter);
    command.callback([options, &answer] { answer = PrintDiff(*options); });
}
