// Messages about saving a job.
#pragma once

#include "reading/CJOBXmessage.h"

namespace saving_message
{
inline constexpr CJOBXmessageKind kNotComplete{
    "SAV001", JOBXseverity::Error, "The model is not one job that was read completely, so it cannot be saved.",
    "a job that was read classically, or two jobs that were read into one object",
    "Read one job, with CJOBXreading::way set to Complete, into a new object."};
inline constexpr CJOBXmessageKind kChanged{"SAV002", JOBXseverity::Error,
                                           "A file of the job has changed or gone since it was read; nothing is saved.",
                                           "a features file that another program wrote after the job was read",
                                           "Read the job again, or set CJOBXreading::bKeepText before you read it."};
inline constexpr CJOBXmessageKind kInTheWay{
    "SAV003", JOBXseverity::Error, "There is something at the place where the job is to be saved.",
    "an output directory that exists and is not empty", "Choose a directory that does not exist."};
inline constexpr CJOBXmessageKind kNotWritten{
    "SAV004", JOBXseverity::Error, "A file or folder could not be written; nothing is saved.",
    "a full disk, or an output directory without write permission", "Look at the reason that the message gives."};
inline constexpr CJOBXmessageKind kNotExpressible{
    "SAV005", JOBXseverity::Error, "The format has no way to write something that the model holds; nothing is saved.",
    "a net name with a blank in it", "Change the value that the message quotes."};
inline constexpr CJOBXmessageKind kBadName{
    "SAV006", JOBXseverity::Error,
    "A step, layer, user symbol or netlist has a name that no folder can have, or that of another one.",
    "two layers called top, or a layer called ../top", "Give it another name."};
inline constexpr CJOBXmessageKind kGoneReference{
    "SAV007", JOBXseverity::Warning, "A record refers to something that was deleted; the reference is left out.",
    "FID C 0 12 after the feature 12 of its layer was deleted", "Nothing, if that was meant."};
inline constexpr CJOBXmessageKind kSum{"SAV008", JOBXseverity::Note,
                                       "A check sum file is left out because the file it is about has changed.",
                                       "features.sum beside a features file that has changed", "Nothing."};
inline constexpr CJOBXmessageKind kNoFile{"SAV009", JOBXseverity::Warning,
                                          "Something in the job is neither a file nor a folder; it is left out.",
                                          "a pipe, or a link to nowhere", "Look at what it is."};

inline constexpr const CJOBXmessageKind* kAll[] = {
    &kNotComplete, &kChanged, &kInTheWay, &kNotWritten, &kNotExpressible, &kBadName, &kGoneReference, &kSum, &kNoFile};
} // namespace saving_message
