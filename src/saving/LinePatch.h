// Changes single fields of a line.
#pragma once

#include <string>
#include <string_view>

// The line `source`, which says what `before` says in its own spelling, changed so that it says what `now` says: only
// the fields that differ are replaced. Blanks, tabs and the semicolons of the tail separate fields; a field that begins
// with an apostrophe goes on to the next one. A line that does not have the fields of `before` is replaced, except for
// fields behind them.
std::string PatchLine(std::string_view source, std::string_view before, std::string_view now);

// The same for "KEY=VALUE", whose value is one field.
std::string PatchKeyLine(std::string_view source, std::string_view now);
