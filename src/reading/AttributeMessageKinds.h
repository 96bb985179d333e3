// Messages about the attributes and unique numbers after the ";" of a record, in any kind of file.
#pragma once

#include "reading/CJOBXmessage.h"

namespace attribute_message
{
inline constexpr CJOBXmessageKind kNoName{"ATR001", JOBXseverity::Warning,
                                          "An attribute's number is not in the file's table of attribute names.",
                                          "P 1 2 0 P 0 0;7=1 in a file without a line @7",
                                          "The attribute is kept without a name; ask whoever wrote the job."};
inline constexpr CJOBXmessageKind kNoText{"ATR002", JOBXseverity::Warning,
                                          "An attribute's value is not in the file's table of attribute texts.",
                                          "P 1 2 0 P 0 0;0=9 where @0 is a text attribute and there is no line &9",
                                          "The number is kept as the value; ask whoever wrote the job."};
inline constexpr CJOBXmessageKind kBadItem{"ATR003", JOBXseverity::Warning,
                                           "An item of an attribute list does not begin with a number.",
                                           "P 1 2 0 P 0 0;x=1", "The item is not kept; ask whoever wrote the job."};
inline constexpr CJOBXmessageKind kNoOption{
    "ATR004", JOBXseverity::Warning, "An attribute's value is not among the options of its definition.",
    "0=9 where misc/userattr gives the attribute three options", "The number is kept as the value."};
inline constexpr CJOBXmessageKind kBadNumber{
    "ATR005", JOBXseverity::Warning, "The value of a number attribute is not a number.",
    "0=abc where misc/userattr defines the attribute as INTEGER", "The value is kept as a text."};
inline constexpr CJOBXmessageKind kBadID{"ATR006", JOBXseverity::Warning,
                                         "A unique number is not a whole number, or is too large.",
                                         "P 1 2 0 P 0 0;;ID=x", "The record is read without a unique number."};
inline constexpr CJOBXmessageKind kOddTail{"ATR007", JOBXseverity::Note,
                                           "What follows a record's attributes is not known.",
                                           "P 1 2 0 P 0 0;0=1;COLOR=red", "It is not kept in the model."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kNoName,    &kNoText, &kBadItem, &kNoOption,
                                                   &kBadNumber, &kBadID,  &kOddTail};
} // namespace attribute_message
