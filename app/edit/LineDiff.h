// Differences of two texts, line by line, as `diff -u` shows them.
#pragma once

#include <string>
#include <string_view>

// The hunks of a unified diff, each with up to three lines around its changes; "" for equal texts. Lines end with LF, so a CR
// before it belongs to its line. A last line without LF is followed by the usual remark.
std::string UnifiedHunks(std::string_view before, std::string_view after);
