// Messages about the definitions of attributes: the files "userattr" and "sysattr" of the folder "misc".
#pragma once

#include "reading/CJOBXmessage.h"

namespace definition_message
{
inline constexpr CJOBXmessageKind kNotClosed{
    "DEF001", JOBXseverity::Warning, "The definition of an attribute is not closed.",
    "OPTION { and no } before the next definition", "The definition is not used; the file may be cut short."};
inline constexpr CJOBXmessageKind kNoName{"DEF002", JOBXseverity::Warning,
                                          "The definition of an attribute has no name.",
                                          "INTEGER { and } without NAME between them", "The definition is not used."};
inline constexpr CJOBXmessageKind kUnknown{"DEF003", JOBXseverity::Note,
                                           "The type of an attribute's definition is not known.",
                                           "COLOR { in misc/userattr", "Values of the attribute have an unknown kind."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kNotClosed, &kNoName, &kUnknown};
} // namespace definition_message
