// What the reader and the writer of a netlist file share.
#pragma once

#include <string_view>

namespace netlist_text
{
inline constexpr std::string_view kComment = "#";
inline constexpr std::string_view kNet = "$";
} // namespace netlist_text
