// What can be said about features files.
#pragma once

#include "reading/CJOBXmessage.h"

namespace feature_message
{
inline constexpr char kAskWriter[] = "Ask whoever wrote the job.";

inline constexpr CJOBXmessageKind kTooFew{"FEA001", JOBXseverity::Error, "A record has too few fields.", "P 1 2 0",
                                          "The record is kept with defaults for the rest; ask whoever wrote the job."};
inline constexpr CJOBXmessageKind kTooMany{"FEA002", JOBXseverity::Warning, "A record has too many fields.",
                                           "L 1 2 3 4 0 P 0 9 9",
                                           "The further fields are not kept; ask whoever wrote the job."};
inline constexpr CJOBXmessageKind kNoNumber{
    "FEA003", JOBXseverity::Error, "A field that should be a number is not one.", "L 1 2 3 x 0 P 0",
    "The field is read as the number that it begins with, or 0; ask whoever wrote the job."};
inline constexpr CJOBXmessageKind kNoSymbol{"FEA004", JOBXseverity::Error,
                                            "A feature's symbol number is not in the file's table of symbols.",
                                            "P 1 2 7 P 0 0 in a file without a line $7", kAskWriter};
inline constexpr CJOBXmessageKind kOddLetter{
    "FEA005", JOBXseverity::Warning,
    "A polarity, a direction, a kind of contour or an orientation is not one of those that the format has.",
    "L 1 2 3 4 0 Q 0", "It is kept; ask whoever wrote the job."};
inline constexpr CJOBXmessageKind kBadTableLine{
    "FEA006", JOBXseverity::Warning,
    "A line of the table of symbols, attribute names or attribute texts has no number.", "$x r10",
    "The line is not kept; ask whoever wrote the job."};
inline constexpr CJOBXmessageKind kTwice{"FEA007", JOBXseverity::Warning,
                                         "A table has two entries with the same number; the first one counts.",
                                         "$0 r10 and further down $0 r20", kAskWriter};
inline constexpr CJOBXmessageKind kOddUnit{"FEA008", JOBXseverity::Warning,
                                           "What follows a symbol's name is neither I nor M.", "$0 r10 X",
                                           "The symbol is taken to be in the unit of its file."};
inline constexpr CJOBXmessageKind kOpenSurface{
    "FEA009", JOBXseverity::Warning, "A surface is not closed; it ends where the next feature begins.",
    "S P 0 and a contour, but no SE", "Look at the surface: part of it may be missing."};
inline constexpr CJOBXmessageKind kOpenContour{
    "FEA010", JOBXseverity::Warning,
    "A contour is not closed; it ends where the next contour begins, or with its surface.",
    "OB 0 0 I and some OS lines, but no OE", "Look at the surface: part of it may be missing."};
inline constexpr CJOBXmessageKind kNeverOpened{
    "FEA011", JOBXseverity::Error, "Part of a contour or of a surface stands outside of one; it is not kept.",
    "OS 1 2 without a line OB before it", kAskWriter};
inline constexpr CJOBXmessageKind kOpenQuote{"FEA012", JOBXseverity::Warning,
                                             "The quote around a text is not closed; the text ends with the line.",
                                             "T 1 2 standard P 0 0.1 0.1 1 'abc", kAskWriter};
inline constexpr CJOBXmessageKind kCount{
    "FEA013", JOBXseverity::Warning,
    "The number of features in the F record is not the number of features in the file.",
    "F 5 in a file with four features", "The file may be cut short; ask for the job again."};
inline constexpr CJOBXmessageKind kUnknownRecord{"FEA014", JOBXseverity::Note,
                                                 "A record is of a kind that is not known.", "X 1 2 3",
                                                 "The record is not in the model."};

inline constexpr const CJOBXmessageKind* kAll[] = {
    &kTooFew,  &kTooMany,     &kNoNumber,    &kNoSymbol,    &kOddLetter, &kBadTableLine, &kTwice,
    &kOddUnit, &kOpenSurface, &kOpenContour, &kNeverOpened, &kOpenQuote, &kCount,        &kUnknownRecord};
} // namespace feature_message
