// Options of several commands: each is spelled and described once.
#pragma once

#include "output/ExitError.h"
#include "output/TableView.h"
#include "reading/JobReader.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
} // namespace CLI

// A mistake in the command line. RunCommandLine adds which help to read.
class UsageError : public ExitError
{
public:
    explicit UsageError(const std::string& line) : ExitError(ExitCode::WrongUsage, line) {}
};
[[noreturn]] void RaiseWrongUsage(const std::string& message);

// The finite number in the whole text, with a decimal point whatever the language; nothing if the text is not one.
std::optional<double> NumberIn(const std::string& text);

// The words between commas, without blanks around them. An empty word raises wrong usage with that problem.
std::vector<std::string> SplitAtCommas(const std::string& text, const char* problem);

// A command without options; its help refers to that of the program.
CLI::App& AddCommand(CLI::App& app, const char* name, const char* about);

// Puts an example in front of the command's help.
void SetExample(CLI::App& command, const char* example);

// A command that reads one job, with JOB and the options of reading.
CLI::App& AddJobCommand(CLI::App& app, const char* name, const char* about, ReadOptions& read);

// How jobs are read and reported. Every command that reads a job has these options.
void AddReading(CLI::App& command, ReadOptions& read);

// Whether the job is read completely or as before, and what its faults do. Every command has these options, except one
// that needs the classic way. The option for the latter, for options that cannot be combined with it.
CLI::Option* AddWay(CLI::App& command, ReadOptions& read);

// The steps; --step and --steps are two names of one option.
void AddSteps(CLI::App& command, std::vector<std::string>& steps);

void AddSystemAttributes(CLI::App& command, ReadOptions& read);

// The forms, columns and order of a table. --csv and --json cannot be combined; with `legacy`, only these two can.
void AddTableView(CLI::App& command, TableView& view, CLI::Option* legacy);

// The unit of shown lengths; not with `legacy`.
void AddUnits(CLI::App& command, std::optional<JOBXunit>& unit, CLI::Option* legacy);
