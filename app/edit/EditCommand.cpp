#include "edit/EditCommand.h"

#include "convert/SavedJob.h"
#include "edit/EditJob.h"
#include "edit/TreeDiff.h"
#include "options/CommonOptions.h"
#include "output/ExitError.h"
#include "output/Messages.h"
#include "output/Text.h"
#include "reading/JobPath.h"
#include "write/SignalHold.h"
#include "write/StagingDirectory.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>

namespace fs = std::filesystem;

namespace
{
struct EditArguments
{
    ReadOptions read;
    std::optional<std::string> output; // none for a dry run
    std::vector<ChangeText> changes;
    std::string script; // "" for none, "-" for standard input
    bool isDryRun = false;
    bool force = false;
};

constexpr const char* kEditFooter = R"(A change is KIND NAME.MEMBER=VALUE, or "delete" and what goes:
  comp R5.part=RES-12K-0603   also: name, rotation, x, y, mirror, package
  comp R5.prop.VALUE=12k      a property
  comp R5.attr..comp_height=0.5
                              an attribute; its name begins with a dot
  net GND.name=0V             also: prop, attr
  package SOIC14.pitch=0.05   also: name, prop, attr
  layer top.type=SIGNAL       also: name, context, polarity, start, end, color,
                              addtype, attr
  step pcb.name=board         also: x_datum, y_datum, x_origin, y_origin, attr
  job.info.SAVE_USER=         a key of misc/info; also: job.name, job.attr
  delete comp R5              also: net, layer, step
  delete comp R5.prop.VALUE   a property or attribute
  delete features top .pad_usage=1
                              the features of a layer with all these attributes

Where a name is not unique, its step stands before it: pcb/R5. Attributes and
features of a layer are those of all steps without it. Lengths are in the unit
of the step. Only the named member changes: a component that is moved leaves
its pins and their copper where they are. What refers to something that is
renamed or deleted is corrected. The changes are made in the order given, first
those of the script.

--dry-run prints the lines that would change as a unified diff.

Exit codes and more examples: jobx --help)";

std::string TextOfScript(const std::string& name)
{
    if (name == "-")
        return {std::istreambuf_iterator<char>(std::cin), {}};
    std::ifstream file(name, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw ExitError(ExitCode::UnreadableInput, fmt::format("the script {} cannot be read", Quoted(name)));
    return text;
}

std::vector<ChangeText> ChangesIn(const EditArguments& arguments)
{
    std::vector<ChangeText> changes;
    if (!arguments.script.empty())
        changes = ParseScript(TextOfScript(arguments.script));
    changes.insert(changes.end(), arguments.changes.begin(), arguments.changes.end());
    return changes;
}

void PrintDryRun(ReadJob& job, const ReadOptions& read)
{
    const SignalHold hold;
    const StagingDirectory staging(fs::temp_directory_path());
    const fs::path saved = staging.Inside() / "job";
    SaveReadJobAs(saved, job, read);
    Output out;
    PrintTreeDiff(NamedJobPath(read.jobPath), saved, out);
    out.Flush();
}

void RunEdit(const EditArguments& arguments)
{
    const std::vector<ChangeText> changes = ChangesIn(arguments);
    CheckJobDirectory(arguments.read.jobPath);
    WriteTarget target;
    if (!arguments.isDryRun)
    {
        target = TargetNamed(*arguments.output, arguments.force);
        CheckTarget(target, NamedJobPath(arguments.read.jobPath));
    }
    ReadJob job = ReadGoodJobDirectory(arguments.read);
    CheckStrictly(arguments.read, job);
    for (const ChangeText& change : changes)
        MakeChange(*job.job, change);
    if (arguments.isDryRun)
        PrintDryRun(job, arguments.read);
    else
        SaveReadJob(job, arguments.read, target);
}

void CheckEditArguments(const EditArguments& arguments)
{
    if (arguments.isDryRun == arguments.output.has_value())
        RaiseWrongUsage("one of --output and --dry-run is needed, and not both");
    if (arguments.changes.empty() && arguments.script.empty())
        RaiseWrongUsage("--set or --script is needed");
}

ChangeText ChangeIn(const std::string& text)
{
    try
    {
        return ParseChange(text);
    }
    catch (const ExitError& error)
    {
        RaiseWrongUsage(error.what());
    }
}

void AddChangeOptions(CLI::App& command, EditArguments& arguments)
{
    command
        .add_option_function<std::vector<std::string>>(
            "--set",
            [&arguments](const std::vector<std::string>& texts)
            {
                for (const std::string& text : texts)
                    arguments.changes.push_back(ChangeIn(text));
            },
            "Make this change; may be repeated")
        ->type_name("CHANGE")
        ->allow_extra_args(false);
    command
        .add_option_function<std::string>(
            "--script",
            [&arguments](const std::string& name)
            {
                if (name.empty())
                    RaiseWrongUsage("--script needs the name of a file");
                arguments.script = name;
            },
            "Make the changes in this file, one a line; - is standard input")
        ->type_name("FILE");
    command.add_flag("--dry-run", arguments.isDryRun, "Print the lines that would change, and save nothing");
}
} // namespace

void AddEditCommand(CLI::App& app)
{
    const auto arguments = std::make_shared<EditArguments>();
    arguments->read.way = JOBXway::Complete;
    CLI::App& command = AddJobCommand(app, "edit", "Makes small changes and saves the job", arguments->read);
    AddMessages(command, arguments->read);
    command.add_option("-o,--output", arguments->output, "The directory to save the job as")->type_name("OUT");
    AddChangeOptions(command, *arguments);
    command.add_flag("--force", arguments->force, "Replace an existing directory if it is a job or empty");
    SetExample(command, "what another value of R5 changes",
               "jobx edit samples/blinker --set 'comp R5.prop.VALUE=12k' --dry-run");
    command.footer(kEditFooter);
    command.callback(
        [arguments]
        {
            CheckEditArguments(*arguments);
            RunEdit(*arguments);
        });
}
