#include "output/Messages.h"

#include "output/CleanEnd.h"
#include "output/Colours.h"

#include <fmt/core.h>

#include <cstdio>

namespace
{
void Print(const std::string& text)
{
    ClearProgressLine();
    std::fwrite(text.data(), 1, text.size(), stderr);
}
} // namespace

void PrintError(const std::string& line)
{
    Print(fmt::format("{} {}\n", Paint(stderr)(Colour::Error, "jobx:"), line));
}

void PrintWarning(const std::string& line)
{
    PrintMessage(fmt::format("{} {}", Paint(stderr)(Colour::Warning, "warning:"), line));
}

void PrintNote(const std::string& line)
{
    PrintMessage(fmt::format("{} {}", Paint(stderr)(Colour::Note, "note:"), line));
}

void PrintMessage(const std::string& line)
{
    Print(fmt::format("jobx: {}\n", line));
}
