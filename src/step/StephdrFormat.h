// The keys of a step header's file, and the form of its step-and-repeat table.
#pragma once

#include "foundation/CTextWriter.h"

#include <string_view>

class CJOBXstepRepeatArray;

namespace stephdr_format
{
inline constexpr std::string_view kXDatum = "X_DATUM";
inline constexpr std::string_view kYDatum = "Y_DATUM";
inline constexpr std::string_view kXOrigin = "X_ORIGIN";
inline constexpr std::string_view kYOrigin = "Y_ORIGIN";
inline constexpr std::string_view kAffectingBom = "AFFECTING_BOM";
inline constexpr std::string_view kAffectingBomChanged = "AFFECTING_BOM_CHANGED";
inline constexpr std::string_view kTopActive = "TOP_ACTIVE";
inline constexpr std::string_view kBottomActive = "BOTTOM_ACTIVE";
inline constexpr std::string_view kRightActive = "RIGHT_ACTIVE";
inline constexpr std::string_view kLeftActive = "LEFT_ACTIVE";
inline constexpr std::string_view kOnlineDrcName = "ONLINE_DRC_NAME";
inline constexpr std::string_view kOnlineDrcMode = "ONLINE_DRC_MODE";
inline constexpr std::string_view kOnlineDrcStat = "ONLINE_DRC_STAT";
inline constexpr std::string_view kOnlineDrcTime = "ONLINE_DRC_TIME";
inline constexpr std::string_view kOnlineDrcBeepVol = "ONLINE_DRC_BEEP_VOL";
inline constexpr std::string_view kOnlineDrcBeepTone = "ONLINE_DRC_BEEP_TONE";
inline constexpr std::string_view kOnlineNetMode = "ONLINE_NET_MODE";
inline constexpr std::string_view kOnlineNetStat = "ONLINE_NET_STAT";
inline constexpr std::string_view kOnlineNetTime = "ONLINE_NET_TIME";
inline constexpr std::string_view kOnlineNetBeepVol = "ONLINE_NET_BEEP_VOL";
inline constexpr std::string_view kOnlineNetBeepTone = "ONLINE_NET_BEEP_TONE";

// The reader expects the blank, the writer omits it; both are intended. So written entries are never read back.
inline constexpr std::string_view kEntryRead = "STEP-REPEAT {";
inline constexpr std::string_view kEntryWritten = "STEP-REPEAT{";
inline constexpr std::string_view kEntry = "STEP-REPEAT"; // in complete reading, with or without a blank behind it
inline constexpr std::string_view kEntryEnd = "}";
inline constexpr std::string_view kName = "NAME";
inline constexpr std::string_view kX = "X";
inline constexpr std::string_view kY = "Y";
inline constexpr std::string_view kDX = "DX";
inline constexpr std::string_view kDY = "DY";
inline constexpr std::string_view kNX = "NX";
inline constexpr std::string_view kNY = "NY";
inline constexpr std::string_view kAngle = "ANGLE";
inline constexpr std::string_view kMirror = "MIRROR";
inline constexpr std::string_view kFlip = "FLIP";
inline constexpr std::string_view kID = "ID"; // only read completely
} // namespace stephdr_format

void WriteStepRepeats(CTextWriter& out, const CJOBXstepRepeatArray& entries);
