// Messages about a step's header.
#pragma once

#include "reading/CJOBXmessage.h"

namespace stephdr_message
{
inline constexpr CJOBXmessageKind kNotNumber{
    "HDR001", JOBXseverity::Error, "The value of a key should be a number and is not.", "X_DATUM=left",
    "The value is read as the number that it begins with, or 0; export the job again."};
inline constexpr CJOBXmessageKind kNotKey{"HDR002", JOBXseverity::Warning,
                                          "A line is neither a key with a value nor part of a block.", "X_DATUM 0",
                                          "The line is not in the model."};
inline constexpr CJOBXmessageKind kUnknown{"HDR003", JOBXseverity::Note, "A key or a block is not known.",
                                           "THICKNESS=3", "It is kept with its value, among the further keys."};
inline constexpr CJOBXmessageKind kTwice{"HDR004", JOBXseverity::Warning, "A key is given twice in the same place.",
                                         "X_DATUM=0 and X_DATUM=1", "The last value counts; look at the file."};
inline constexpr CJOBXmessageKind kNotClosed{"HDR005", JOBXseverity::Error, "A block is not closed.",
                                             "STEP-REPEAT { and no } before the next block",
                                             "It ends where the next one begins; the file may be cut short."};
inline constexpr CJOBXmessageKind kNotOpen{"HDR006", JOBXseverity::Warning, "A brace closes no block.",
                                           "} before the first block", "Nothing is lost; look at the file."};
inline constexpr CJOBXmessageKind kNoStep{
    "HDR007", JOBXseverity::Error, "A step-and-repeat entry names a step that is not in the matrix.",
    "NAME=BOARD in a STEP-REPEAT block and no step BOARD", "Nothing is placed there; export the job again."};
inline constexpr CJOBXmessageKind kBadCount{"HDR008", JOBXseverity::Warning,
                                            "A step-and-repeat entry has fewer than one column or row.", "NX=0",
                                            "The entry is kept and places nothing."};
inline constexpr CJOBXmessageKind kUnknownWord{"HDR009", JOBXseverity::Warning, "MIRROR or FLIP is neither YES nor NO.",
                                               "MIRROR=X", "The word is kept; look at the file."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kNotNumber, &kNotKey, &kUnknown,  &kTwice,      &kNotClosed,
                                                   &kNotOpen,   &kNoStep, &kBadCount, &kUnknownWord};
} // namespace stephdr_message
