// The spellings of a file of attribute definitions.
#pragma once

namespace sys_attr_format
{
inline constexpr char kOption[] = "OPTION";
inline constexpr char kEnd[] = "}";
inline constexpr char kName[] = "NAME";
inline constexpr char kOptions[] = "OPTIONS";
} // namespace sys_attr_format
