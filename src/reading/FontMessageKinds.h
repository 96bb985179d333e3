// Messages about a job's font.
#pragma once

#include "reading/CJOBXmessage.h"

namespace font_message
{
inline constexpr CJOBXmessageKind kTooFew{"FNT001", JOBXseverity::Error, "A record has too few fields.", "LINE 0 0 1",
                                          "The stroke is kept with defaults for the rest; export the job again."};
inline constexpr CJOBXmessageKind kTooMany{"FNT002", JOBXseverity::Warning, "A record has too many fields.",
                                           "LINE 0 0 1 1 P R 0.012 9", "The further fields are not kept."};
inline constexpr CJOBXmessageKind kNotNumber{
    "FNT003", JOBXseverity::Error, "A field that should be a number is not one.", "XSIZE wide",
    "The field is read as the number that it begins with, or 0; export the job again."};
inline constexpr CJOBXmessageKind kNoCharacter{
    "FNT004", JOBXseverity::Error, "A stroke or an end stands outside of a character.",
    "LINE 0 0 1 1 P R 0.012 before the first CHAR", "The record is not in the model; export the job again."};
inline constexpr CJOBXmessageKind kNotClosed{"FNT005", JOBXseverity::Warning,
                                             "A character is not closed; it ends where the next one begins.",
                                             "CHAR A and no ECHAR before CHAR B", "Look at the file."};
inline constexpr CJOBXmessageKind kUnknown{"FNT006", JOBXseverity::Note, "A record is of a kind that is not known.",
                                           "ARC 0 0 1 1", "The record is not in the model."};
inline constexpr CJOBXmessageKind kSameName{"FNT007", JOBXseverity::Warning, "Two characters have the same name.",
                                            "CHAR A twice", "Both are kept; texts are drawn with the first."};
inline constexpr CJOBXmessageKind kUnknownWord{"FNT008", JOBXseverity::Warning,
                                               "A stroke's polarity is neither P nor N, or its shape neither R nor S.",
                                               "LINE 0 0 1 1 X R 0.012", "The letter is kept; look at the file."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kTooFew,    &kTooMany, &kNotNumber, &kNoCharacter,
                                                   &kNotClosed, &kUnknown, &kSameName,  &kUnknownWord};
} // namespace font_message
