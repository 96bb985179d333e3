#pragma once

#include "reading/JobReader.h"

#include <optional>
#include <string>

namespace CLI
{
class App;
}

struct WriteOptions
{
    std::string directory;           // where the job's directory goes
    std::optional<std::string> name; // instead of the name of the directory that was read
    std::optional<double> scale;     // multiplies every length
    bool withEda = true;
    bool rebuildSteps = false;
    bool force = false;           // replaces a directory that is there
    bool allowIncomplete = false; // even if this job is incomplete
};

// Reads the job, changes it and writes it in the library's form.
void RunWrite(const ReadOptions& read, const WriteOptions& options);

// jobx write.
void AddWriteCommand(CLI::App& app);
