#include "convert/ConvertCommand.h"

#include "convert/ConvertChanges.h"
#include "convert/SavedJob.h"
#include "options/CommonOptions.h"
#include "reading/JobPath.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace
{
struct ConvertArguments
{
    ReadOptions read;
    ConvertChanges changes;
    std::string output;
    bool force = false;
};

constexpr const char* kConvertFooter =
    R"(The job is saved as the directory OUT, which is made. Without options that
change it, every file is the same to the byte. With them, only the lines differ
that they change: comments, unknown files and the spelling of numbers stay. A
check sum of a file that changes is left out.

The job is written beside its place first and moved there when it is complete
and on the disk, so a failure changes nothing. --force replaces a job or an
empty directory, and nothing else.

Exit codes and more examples: jobx --help)";

void RunConvert(const ConvertArguments& arguments)
{
    CheckJobDirectory(arguments.read.jobPath);
    const WriteTarget target = TargetNamed(arguments.output, arguments.force);
    CheckTarget(target, NamedJobPath(arguments.read.jobPath));
    ReadJob source = ReadGoodJobDirectory(arguments.read);
    CheckStrictly(arguments.read, source);
    MakeConvertChanges(*source.job, arguments.changes);
    SaveReadJob(source, arguments.read, target);
}
} // namespace

void AddConvertCommand(CLI::App& app)
{
    const auto arguments = std::make_shared<ConvertArguments>();
    arguments->read.way = JOBXway::Complete;
    CLI::App& command = AddJobCommand(app, "convert", "Saves the job without losing anything", arguments->read);
    AddMessages(command, arguments->read);
    command.add_option("-o,--output", arguments->output, "The directory to save the job as")
        ->required()
        ->type_name("OUT");
    AddConvertChanges(command, arguments->changes);
    command.add_flag("--force", arguments->force, "Replace an existing directory if it is a job or empty");
    SetExample(command, "the job in mm, in the directory copy", "jobx convert samples/blinker --units mm -o copy");
    command.footer(kConvertFooter);
    command.callback([arguments] { RunConvert(*arguments); });
}
