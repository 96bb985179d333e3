// Options that several commands take: each is spelt and described once.
#pragma once

#include "output/ExitError.h"
#include "output/Table.h"
#include "reading/JobReader.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

// What was typed is wrong. The command line adds which help to read.
class UsageError : public ExitError
{
public:
    explicit UsageError(const std::string& line) : ExitError(ExitCode::WrongUsage, line) {}
};
[[noreturn]] void RaiseWrongUsage(const std::string& message);

// The finite number that the whole text spells, with a decimal point whatever the language; nothing for other texts.
std::optional<double> NumberIn(const std::string& text);

// A command without options; its help refers to that of the program.
CLI::App& AddCommand(CLI::App& app, const char* name, const char* about);

// A command that reads one job, with JOB and the options of reading.
CLI::App& AddJobCommand(CLI::App& app, const char* name, const char* about, ReadOptions& read);

// How jobs are read and what is said about it. Every command that reads a job takes these.
void AddReading(CLI::App& command, ReadOptions& read);

// Which steps: --step and --steps are two names of one option.
void AddSteps(CLI::App& command, std::vector<std::string>& steps);

void AddSystemAttributes(CLI::App& command, ReadOptions& read);

// --csv and --json, one of which may be given.
void AddTableForms(CLI::App& command, TableForm& form);
