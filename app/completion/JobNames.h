// Names in a job, found without reading the job.
#pragma once

#include "model/Glob.h"

#include <string>
#include <string_view>
#include <vector>

// What a name begins with.
struct NameStart
{
    std::string text;
    LetterCase letterCase = LetterCase::Respected;

    bool IsOf(std::string_view name) const;
};

// Whether the directory has a matrix.
bool IsJob(const std::string& path);

// Names that begin like that, each once. Names that would not be printed as they are, or have blanks, are left out.
std::vector<std::string> StepNames(const std::string& jobPath, const NameStart& start);
std::vector<std::string> LayerNames(const std::string& jobPath, const NameStart& start);
// At most 1000, and those that are found within a second.
std::vector<std::string> NetNames(const std::string& jobPath, const NameStart& start);
