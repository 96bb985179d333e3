#include "json/JsonCommand.h"

#include "model/LayerNames.h"
#include "model/RecordCounts.h"
#include "options/CommonOptions.h"
#include "output/ExitError.h"
#include "output/ProgressLine.h"
#include "output/Terminal.h"
#include "json/RecordJson.h"
#include "json/SchemaVersion.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace
{
struct JsonOptions
{
    ReadOptions read;
    bool latin1 = false;
    bool noFeatures = false;
    std::vector<std::string> layers; // patterns
};

LayerChoice ChoiceOf(const JsonOptions& options, const ReadJob& read)
{
    LayerChoice choice;
    choice.withFeatures = !options.noFeatures;
    if (read.result != 0) // what is no job has no layers to choose from
        for (const std::string& pattern : options.layers)
            choice.names.push_back(LayersNamed(*read.job, pattern));
    return choice;
}

void PrintJob(const JsonOptions& options)
{
    const ReadJob read = ReadJobDirectory(options.read);
    const LayerChoice choice = ChoiceOf(options, read);
    Output output;
    JsonOutput json(output, options.latin1 ? TextBytes::Latin1 : TextBytes::Utf8OrLatin1);
    CountedProgress progress("printing", options.read.quiet || IsTerminal(stdout),
                             (options.noFeatures ? 0 : CountFeatures(*read.job)) + CountNetFeatures(*read.job));
    json.CountRecords(progress);
    json.Object(
        [&]
        {
            json.Member("result", read.result);
            if (options.read.way == JOBXway::Complete)
            {
                json.Member("schemaVersion", kSchemaVersion);
                WriteFields<JOBXway::Complete>(json, *read.job, choice);
            }
            else
                WriteFields<JOBXway::Classic>(json, *read.job);
        });
    json.Finish();
    if (read.result == 0)
        throw ExitError(ExitCode::UnreadableInput, read.problem);
    CheckStrictly(options.read, read);
}

void AddLayerChoice(CLI::App& command, JsonOptions& options, CLI::Option* legacy)
{
    command.add_flag("--no-features", options.noFeatures, "Leave out the features of the layers")->excludes(legacy);
    command
        .add_option_function<std::vector<std::string>>(
            "--layer",
            [&options](const std::vector<std::string>& patterns)
            {
                for (const std::string& pattern : patterns)
                    if (pattern.empty())
                        RaiseWrongUsage("--layer needs a name");
                options.layers = patterns;
            },
            "Only layers whose names match, with * and ?; may be repeated")
        ->type_name("GLOB")
        ->allow_extra_args(false)
        ->excludes(legacy);
}
} // namespace

void AddJsonCommand(CLI::App& app)
{
    const auto options = std::make_shared<JsonOptions>();
    CLI::App& command =
        AddJobCommand(app, "json", "Prints everything as one JSON document (see docs/job.schema.json)", options->read);
    CLI::Option* const legacy = AddWay(command, options->read);
    AddSteps(command, options->read.steps);
    AddLayerChoice(command, *options, legacy);
    AddSystemAttributes(command, options->read);
    command.add_flag("--latin1", options->latin1,
                     "Map every byte of a text to the character of that number, even in UTF-8");
    SetExample(command, "one step for another program", "jobx json samples/blinker --step pcb > pcb.json");
    command.callback([options] { PrintJob(*options); });
}
