// What can be said about the components of a layer.
#pragma once

#include "reading/CJOBXmessage.h"

namespace components_message
{
inline constexpr CJOBXmessageKind kTooFew{"CMP001", JOBXseverity::Error, "A record has too few fields.",
                                          "CMP 4 1.2 3.4",
                                          "The record is kept with defaults for the rest; export the job again."};
inline constexpr CJOBXmessageKind kTooMany{"CMP002", JOBXseverity::Warning, "A record has too many fields.",
                                           "TOP 0 1 2 0 N 3 0 1 extra",
                                           "The further fields are not kept; export the job again."};
inline constexpr CJOBXmessageKind kNotNumber{
    "CMP003", JOBXseverity::Error, "A field that should be a number is not one.", "CMP 4 left 3.4 0 N R1 R0603",
    "The field is read as the number that it begins with, or 0; export the job again."};
inline constexpr CJOBXmessageKind kNoOwner{
    "CMP004", JOBXseverity::Error, "A toeprint or property stands before the first component.",
    "TOP 0 1 2 0 N 3 0 1 before the first CMP", "The record is not in the model; export the job again."};
inline constexpr CJOBXmessageKind kUnknown{"CMP005", JOBXseverity::Note, "A record is of a kind that is not known.",
                                           "DSC a description", "The record is not in the model."};
inline constexpr CJOBXmessageKind kNoMirror{"CMP006", JOBXseverity::Warning, "A mirror flag is neither N nor M.",
                                            "CMP 4 1.2 3.4 0 X R1 R0603", "The record is read as not mirrored."};
inline constexpr CJOBXmessageKind kOtherNumber{
    "CMP007", JOBXseverity::Warning, "A comment gives a component another number than its position.",
    "# CMP 5 before the first component", "The position counts; references to components count positions."};
inline constexpr CJOBXmessageKind kSameName{"CMP008", JOBXseverity::Warning,
                                            "Two components have the same name if letter case is ignored.",
                                            "two components R1, or R1 and r1", "Both are kept."};
inline constexpr CJOBXmessageKind kNoPackage{
    "CMP009", JOBXseverity::Error, "A component's package number is beyond the packages of the EDA data.",
    "CMP 40 1.2 3.4 0 N R1 R0603 where there are ten packages", "The component has no package; export the job again."};
inline constexpr CJOBXmessageKind kNoPin{
    "CMP010", JOBXseverity::Error, "A toeprint's pin number is beyond the pins of its component's package.",
    "TOP 2 1 2 0 N 3 0 1 where the package has two pins", "The toeprint has no pin; export the job again."};
inline constexpr CJOBXmessageKind kNoNet{
    "CMP011", JOBXseverity::Error, "A toeprint's net or subnet number is beyond those of the EDA data.",
    "TOP 0 1 2 0 N 300 0 1 where there are ten nets", "The pin is not connected; export the job again."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kTooFew,    &kTooMany,  &kNotNumber,   &kNoOwner,
                                                   &kUnknown,   &kNoMirror, &kOtherNumber, &kSameName,
                                                   &kNoPackage, &kNoPin,    &kNoNet};
} // namespace components_message
