// The letters of a features file: one spelling for reader and writer.
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
inline constexpr char kUnits = 'U'; // is enough for the reader
inline constexpr char kUnitsKey[] = "UNITS";
inline constexpr char kSymbol = '$';
inline constexpr char kAttributeName = '@';
inline constexpr char kAttributeText = '&';

// What begins with "O" belongs to a contour: these follow it. "SE" ends a surface.
inline constexpr char kContour = 'O';
inline constexpr char kBegin = 'B';
inline constexpr char kSegment = 'S';
inline constexpr char kCurve = 'C';
inline constexpr char kEnd = 'E';

// Behind a record's fields: its attributes. Around a text: quotes.
inline constexpr char kAttributes = ';';
inline constexpr char kQuote = '\'';

inline constexpr char kPositive = 'P';
inline constexpr char kNegative = 'N';
inline constexpr char kClockwise = 'Y';
inline constexpr char kCounterClockwise = 'N';

// Orientations that an angle follows.
inline constexpr int kTurned = 8;
inline constexpr int kTurnedAndMirrored = 9;
} // namespace features_format
