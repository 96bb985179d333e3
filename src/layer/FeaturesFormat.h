// The letters of a features file, spelled once for reader and writer.
#pragma once

namespace features_format
{
// Records.
inline constexpr char kLine = 'L';
inline constexpr char kPad = 'P';
inline constexpr char kArc = 'A';
inline constexpr char kText = 'T';
inline constexpr char kBarcode = 'B';
inline constexpr char kSurface = 'S';

// Tables and the units line.
inline constexpr char kUnits = 'U'; // this letter is enough for the reader
inline constexpr char kUnitsKey[] = "UNITS";
inline constexpr char kSymbol = '$';
inline constexpr char kAttributeName = '@';
inline constexpr char kAttributeText = '&';

inline constexpr char kCount = 'F';      // of the features
inline constexpr char kFileID[] = "ID="; // of the file itself
inline constexpr char kFileIDKey[] = "ID";

// A line beginning with "O" belongs to a contour; one of these letters follows. "SE" ends a surface.
inline constexpr char kContour = 'O';
inline constexpr char kBegin = 'B';
inline constexpr char kSegment = 'S';
inline constexpr char kCurve = 'C';
inline constexpr char kEnd = 'E';

// The mark between a record's fields and its attributes, and the quote around a text.
inline constexpr char kAttributes = ';';
inline constexpr char kQuote = '\'';

inline constexpr char kPositive = 'P';
inline constexpr char kNegative = 'N';
inline constexpr char kClockwise = 'Y';
inline constexpr char kCounterClockwise = 'N';

// Orientations with an angle.
inline constexpr int kTurned = 8;
inline constexpr int kTurnedAndMirrored = 9;
} // namespace features_format
