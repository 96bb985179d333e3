// The keywords of a components file, and the form of one component.
#pragma once

#include "foundation/CTextWriter.h"

#include <string_view>

class CJOBXcmp;

namespace components_format
{
inline constexpr std::string_view kNameMark = "@";
inline constexpr std::string_view kTextMark = "&";
inline constexpr std::string_view kNewComponent = "# CMP";
inline constexpr std::string_view kComponent = "CMP";
inline constexpr std::string_view kToeprint = "TOP";
inline constexpr std::string_view kProperty = "PRP";
inline constexpr std::string_view kMirrored = "M";
inline constexpr std::string_view kNotMirrored = "N";
// The layers of the sides.
inline constexpr std::string_view kTopLayer = "comp_+_top";
inline constexpr std::string_view kBottomLayer = "comp_+_bot";
} // namespace components_format

// The component's lines, from the comment above it to its last toeprint.
void WriteComponent(CTextWriter& out, const CJOBXcmp& component);
