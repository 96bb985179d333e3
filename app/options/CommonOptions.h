// Options of several commands: each is spelled and described once.
#pragma once

#include "output/ExitError.h"
#include "output/TableView.h"
#include "reading/JobReader.h"

#include <initializer_list>
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

// A command with the options of all commands; its help refers to that of the program.
CLI::App& AddCommand(CLI::App& app, const char* name, const char* about);

// Obeys the option --color of a command line that may yet turn out to be wrong.
void UseColoursAsIn(const std::vector<std::string>& words);

// Puts an example in front of the command's help. It works on the sample, from the directory that has "samples".
void SetExample(CLI::App& command, const char* purpose, const char* example);

// A command that reads one job, with JOB and the options of reading.
CLI::App& AddJobCommand(CLI::App& app, const char* name, const char* about, ReadOptions& read);

// How jobs are read and reported. Every command that reads a job has these options.
void AddReading(CLI::App& command, ReadOptions& read);

// What the faults of a job do that is read completely.
void AddMessages(CLI::App& command, ReadOptions& read);

// As above, and whether the job is read completely or as before. Every command has these options, except those that
// need one way. Returns the option for the latter.
CLI::Option* AddWay(CLI::App& command, ReadOptions& read);

// The steps; --step and --steps are two names of one option.
void AddSteps(CLI::App& command, std::vector<std::string>& steps);

void AddSystemAttributes(CLI::App& command, ReadOptions& read);

// The form, columns and order of a table: --csv, --json, --wide, --columns and --sort.
void AddTableView(CLI::App& command, TableView& view);

// The unit of shown lengths: --units.
void AddUnits(CLI::App& command, std::optional<JOBXunit>& unit,
              const char* about = "Show lengths in mm or inch, instead of the job's unit");

// Makes it wrong usage to give the option and one of the others.
void RefuseTogether(CLI::App& command, CLI::Option* option, std::initializer_list<const char*> others);
