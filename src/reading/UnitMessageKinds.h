// Messages about the units of any file with lengths.
#pragma once

#include "reading/CJOBXmessage.h"

namespace unit_message
{
inline constexpr CJOBXmessageKind kUnknown{
    "UNI001", JOBXseverity::Warning, "The unit of a units line is not known.", "UNITS=CM",
    "The unit does not change; look at the lengths, and ask whoever wrote the job."};
inline constexpr CJOBXmessageKind kContradicts{
    "UNI002", JOBXseverity::Warning, "Two units lines of one file contradict each other; the last one counts.",
    "UNITS=INCH and further down UNITS=MM", "Look at the lengths, and ask whoever wrote the job."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kUnknown, &kContradicts};
} // namespace unit_message
