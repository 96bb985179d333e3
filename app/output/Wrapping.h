#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Breaks a printable line at blanks so that no line has more than `width` characters. Further lines begin with `indent`
// blanks. A word that is longer than a line is broken too. The escape sequences of colours take no room.
// Results: the line itself if the width is 0, which a line that goes to no terminal has.
std::string Wrapped(std::string_view line, std::size_t width, std::size_t indent);
