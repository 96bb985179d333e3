// What can be said about a netlist.
#pragma once

#include "reading/CJOBXmessage.h"

namespace netlist_message
{
inline constexpr CJOBXmessageKind kTooFew{"NET001", JOBXseverity::Error, "A record has too few fields.", "0 0.02 1.5",
                                          "The record is kept with defaults for the rest; export the job again."};
inline constexpr CJOBXmessageKind kTooMany{"NET002", JOBXseverity::Warning, "A record has too many fields.",
                                           "H optimize n staggered n more",
                                           "The further fields are not kept; export the job again."};
inline constexpr CJOBXmessageKind kNotNumber{
    "NET003", JOBXseverity::Error, "A field that should be a number is not one.", "0 0.02 left 2.5 T e e",
    "The field is read as the number that it begins with, or 0; export the job again."};
inline constexpr CJOBXmessageKind kNoNet{
    "NET004", JOBXseverity::Error, "A point names a net that the netlist does not have.",
    "7 0.02 1.5 2.5 T e e with no line $7", "The point is kept among the points of no net; export the job again."};
inline constexpr CJOBXmessageKind kUnknown{"NET005", JOBXseverity::Note, "A record is of a kind that is not known.",
                                           "XYZ 1 2", "The record is not in the model."};
inline constexpr CJOBXmessageKind kSameNumber{"NET006", JOBXseverity::Warning, "Two nets have the same number.",
                                              "$3 GND and $3 VCC", "Points of that number go to the first."};
inline constexpr CJOBXmessageKind kSameName{"NET007", JOBXseverity::Warning,
                                            "Two nets have the same name if letter case is ignored.",
                                            "$3 gnd and $4 GND", "Both are kept."};
inline constexpr CJOBXmessageKind kOtherCount{"NET008", JOBXseverity::Warning,
                                              "The numbers of nets in the netlist and in the EDA data differ.",
                                              "a netlist with ten nets beside EDA data with twelve",
                                              "One of the two files is out of date; export the job again."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kTooFew,  &kTooMany,    &kNotNumber, &kNoNet,
                                                   &kUnknown, &kSameNumber, &kSameName,  &kOtherCount};
} // namespace netlist_message
