// Colours on terminals.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

// When text is coloured.
enum class ColourUse
{
    Auto, // on a terminal, unless the environment says otherwise
    Always,
    Never,
};

// What a colour means.
enum class Colour
{
    Error,
    Warning,
    Note,
    Added,
    Removed,
};

// Sets when text is coloured from now on; initially ColourUse::Auto.
void SetColourUse(ColourUse use);

// Whether text on that stream is coloured. ColourUse::Auto means: the stream is a terminal, the variable NO_COLOR is not
// set or empty, and TERM is set to something other than "dumb".
bool IsColoured(std::FILE* stream);

// Colours text for one stream.
class Paint
{
public:
    explicit Paint(std::FILE* stream);

    // The text, in that colour if the stream is coloured.
    std::string operator()(Colour colour, std::string_view text) const;

private:
    bool m_isOn;
};
