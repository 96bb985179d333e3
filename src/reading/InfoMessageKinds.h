// Messages about a job's information.
#pragma once

#include "reading/CJOBXmessage.h"

namespace info_message
{
inline constexpr CJOBXmessageKind kNotNumber{
    "INF001", JOBXseverity::Error, "The value of a key should be a number and is not.", "ODB_VERSION_MAJOR=eight",
    "The value is read as the number that it begins with, or 0; export the job again."};
inline constexpr CJOBXmessageKind kNotKey{"INF002", JOBXseverity::Warning,
                                          "A line is neither a key with a value nor part of a block.", "JOB_NAME job",
                                          "The line is not in the model."};
inline constexpr CJOBXmessageKind kUnknown{"INF003", JOBXseverity::Note, "A key or a block is not known.", "COLOR=red",
                                           "It is kept with its value, among the further keys."};
inline constexpr CJOBXmessageKind kTwice{"INF004", JOBXseverity::Warning, "A key is given twice in the same place.",
                                         "JOB_NAME=a and JOB_NAME=b", "The last value counts; look at the file."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kNotNumber, &kNotKey, &kUnknown, &kTwice};
} // namespace info_message
