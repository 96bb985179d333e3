// The spellings of the drill tools file. Only complete reading reads this file.
#pragma once

namespace tools_format
{
inline constexpr char kTools[] = "tools"; // the file

inline constexpr char kTool[] = "TOOLS"; // the name of a block
inline constexpr char kBlock[] = "TOOLS {";
inline constexpr char kNum[] = "NUM";
inline constexpr char kType[] = "TYPE";
inline constexpr char kType2[] = "TYPE2";
inline constexpr char kMinTol[] = "MIN_TOL";
inline constexpr char kMaxTol[] = "MAX_TOL";
inline constexpr char kBit[] = "BIT";
inline constexpr char kFinishSize[] = "FINISH_SIZE";
inline constexpr char kDrillSize[] = "DRILL_SIZE";
inline constexpr char kID[] = "ID"; // only read
inline constexpr char kUnits[] = "UNITS";
inline constexpr char kThickness[] = "THICKNESS";
inline constexpr char kUserParams[] = "USER_PARAMS";
} // namespace tools_format
