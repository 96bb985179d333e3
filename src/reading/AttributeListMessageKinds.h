// Messages about the attribute lists of jobs, steps, layers and user symbols.
#pragma once

#include "reading/CJOBXmessage.h"

namespace attribute_list_message
{
inline constexpr CJOBXmessageKind kNotAttribute{"ATL001", JOBXseverity::Warning,
                                                "A line is not an attribute with a value.",
                                                ".comment without an equals sign", "The line is not in the model."};
inline constexpr CJOBXmessageKind kTwice{"ATL002", JOBXseverity::Warning, "An attribute is given twice.",
                                         ".comment = a and further down .comment = b",
                                         "Both are kept; look-ups find the first."};
inline constexpr CJOBXmessageKind kNotNumber{"ATL003", JOBXseverity::Warning,
                                             "The value of a number attribute is not a number.",
                                             ".board_thickness = thin", "The value is kept as a text."};
inline constexpr CJOBXmessageKind kNoOption{
    "ATL004", JOBXseverity::Warning, "The value is not one that the attribute can have.",
    "_finish = wood where misc/userattr gives other options", "The value is kept; look at the definition."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kNotAttribute, &kTwice, &kNotNumber, &kNoOption};
} // namespace attribute_list_message
