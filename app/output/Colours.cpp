#include "output/Colours.h"

#include "output/CleanEnd.h"
#include "output/Terminal.h"

#include <fmt/core.h>

#include <cstdlib>

namespace
{
// Of the process, like the streams that it is about.
ColourUse& Use()
{
    static ColourUse use = ColourUse::Auto;
    return use;
}

std::string_view Environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

const char* CodeOf(Colour colour)
{
    switch (colour)
    {
    case Colour::Error:
        return "1;31"; // bold red
    case Colour::Warning:
        return "1;33"; // bold yellow
    case Colour::Note:
        return "36"; // cyan
    case Colour::Added:
        return "32"; // green
    default:
        return "31"; // red
    }
}
} // namespace

void SetColourUse(ColourUse use)
{
    Use() = use;
}

bool IsColoured(std::FILE* stream)
{
    if (Use() != ColourUse::Auto)
        return Use() == ColourUse::Always;
    const std::string_view terminal = Environment("TERM");
    return IsTerminal(stream) && Environment("NO_COLOR").empty() && !terminal.empty() && terminal != "dumb";
}

Paint::Paint(std::FILE* stream) : m_isOn(IsColoured(stream))
{
    if (m_isOn && IsTerminal(stream))
        ResetColoursAtEnd(stream);
}

std::string Paint::operator()(Colour colour, std::string_view text) const
{
    return m_isOn ? fmt::format("\x1b[{}m{}\x1b[0m", CodeOf(colour), text) : std::string(text);
}
