#include "json/JsonCommand.h"

#include "options/CommonOptions.h"
#include "output/ExitError.h"
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
};

void PrintJob(const JsonOptions& options)
{
    const ReadJob read = ReadJobDirectory(options.read);
    Output output;
    JsonOutput json(output, options.latin1 ? TextBytes::Latin1 : TextBytes::Utf8OrLatin1);
    json.Object(
        [&]
        {
            json.Member("result", read.result);
            if (options.read.way == JOBXway::Complete)
            {
                json.Member("schemaVersion", kSchemaVersion);
                WriteFields<JOBXway::Complete>(json, *read.job);
            }
            else
                WriteFields<JOBXway::Classic>(json, *read.job);
        });
    json.Finish();
    if (read.result == 0)
        throw ExitError(ExitCode::UnreadableInput, read.problem);
    CheckStrictly(options.read, read);
}
} // namespace

void AddJsonCommand(CLI::App& app)
{
    const auto options = std::make_shared<JsonOptions>();
    CLI::App& command =
        AddJobCommand(app, "json", "Prints everything as one JSON document (see docs/job.schema.json)", options->read);
    AddWay(command, options->read);
    AddSteps(command, options->read.steps);
    AddSystemAttributes(command, options->read);
    command.add_flag("--latin1", options->latin1,
                     "Map every byte of a text to the character of that number, even in UTF-8");
    command.callback([options] { PrintJob(*options); });
}
