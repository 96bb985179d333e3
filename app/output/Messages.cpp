#include "output/Messages.h"

#include <fmt/core.h>

#include <cstdio>

void PrintError(const std::string& line)
{
    const std::string text = fmt::format("jobx: {}\n", line);
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void PrintWarning(const std::string& line)
{
    PrintError("warning: " + line);
}
