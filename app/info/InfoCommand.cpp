#include "info/InfoCommand.h"

#include "info/CompactInfo.h"
#include "info/InfoJson.h"
#include "info/InfoText.h"
#include "info/JobSummary.h"
#include "options/CommonOptions.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace
{
struct InfoOptions
{
    ReadOptions read;
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
    const JobSummary summary(*read.job);
    if (options.json)
        PrintInfoJson(output, summary);
    else
        PrintInfoText(output, summary);
    CheckStrictly(options.read, read);
}
} // namespace

void AddInfoCommand(CLI::App& app)
{
    const auto options = std::make_shared<InfoOptions>();
    CLI::App& command = AddJobCommand(app, "info", "Prints a summary of the job", options->read);
    AddWay(command, options->read);
    AddSteps(command, options->read.steps);
    AddSystemAttributes(command, options->read);
    command.add_flag("--json", options->json, "As a JSON document");
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
