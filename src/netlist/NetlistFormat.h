// The spellings of a netlist file.
#pragma once

#include <string_view>

namespace netlist_format
{
// The file and its folders.
inline constexpr char kNetlist[] = "netlist";
inline constexpr char kFolder[] = "cadnet";
inline constexpr char kFolders[] = "netlists";

inline constexpr std::string_view kHeader = "H";
inline constexpr std::string_view kComment = "#";
inline constexpr std::string_view kNet = "$";
inline constexpr std::string_view kOptimize = "optimize";
inline constexpr std::string_view kStaggered = "staggered";
} // namespace netlist_format
