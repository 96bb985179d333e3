// Messages about a layer's drill tools.
#pragma once

#include "reading/CJOBXmessage.h"

namespace tools_message
{
inline constexpr CJOBXmessageKind kNotNumber{
    "TOO001", JOBXseverity::Error, "The value of a key should be a number and is not.", "DRILL_SIZE=wide",
    "The value is read as the number that it begins with, or 0; export the job again."};
inline constexpr CJOBXmessageKind kNotKey{"TOO002", JOBXseverity::Warning,
                                          "A line is neither a key with a value nor part of a block.",
                                          "TOOLS on a line without a brace", "The line is not in the model."};
inline constexpr CJOBXmessageKind kUnknown{"TOO003", JOBXseverity::Note, "A key or a block is not known.",
                                           "SPEED=3 in a TOOLS block",
                                           "It is kept with its value, among the further keys."};
inline constexpr CJOBXmessageKind kTwice{"TOO004", JOBXseverity::Warning, "A key is given twice in the same place.",
                                         "NUM=1 and NUM=2 in one TOOLS block",
                                         "The last value counts; look at the file."};
inline constexpr CJOBXmessageKind kNotClosed{"TOO005", JOBXseverity::Error, "A block is not closed.",
                                             "TOOLS { and no } before the next block",
                                             "It ends where the next one begins; the file may be cut short."};
inline constexpr CJOBXmessageKind kNotOpen{"TOO006", JOBXseverity::Warning, "A brace closes no block.",
                                           "} before the first block", "Nothing is lost; look at the file."};
inline constexpr CJOBXmessageKind kSameNumber{"TOO007", JOBXseverity::Warning, "Two tools have the same number.",
                                              "two TOOLS blocks with NUM=1", "Both are kept."};
inline constexpr CJOBXmessageKind kUnknownWord{
    "TOO008", JOBXseverity::Warning, "The type of a tool is neither PLATED, NON_PLATED nor VIA.", "TYPE=GILDED",
    "The word is kept; it is not known whether the hole is plated."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kNotNumber, &kNotKey,  &kUnknown,    &kTwice,
                                                   &kNotClosed, &kNotOpen, &kSameNumber, &kUnknownWord};
} // namespace tools_message
