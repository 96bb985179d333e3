// Messages about any file of a job, whatever its contents.
#pragma once

#include "reading/CJOBXmessage.h"

namespace file_message
{
inline constexpr CJOBXmessageKind kMissing{
    "FIL001", JOBXseverity::Error, "A file that the job needs is not there.",
    "a matrix with a row TOP, and a folder steps/pcb/layers/top without a features file",
    "Ask for the job again: it was probably packed or copied incompletely."};
inline constexpr CJOBXmessageKind kUnreadable{
    "FIL002", JOBXseverity::Error, "A file is there but cannot be read.",
    "a file without read permission, a link to nowhere, a pipe or a folder where a file belongs",
    "Look at the permissions of the file, and whether it is a regular file."};
inline constexpr CJOBXmessageKind kDamaged{
    "FIL003", JOBXseverity::Error, "A compressed file is damaged or cut short; nothing of it is read.",
    "a features.Z whose second half is missing", "Ask for the job again, or for the file uncompressed."};
inline constexpr CJOBXmessageKind kNoExpander{
    "FIL004", JOBXseverity::Error, "A file is compressed by gzip, and the program that reads the job cannot expand it.",
    "a features.gz read by a program that sets no expander",
    "Expand the file with gunzip, or set CJOBXreading::pGzipExpander."};
inline constexpr CJOBXmessageKind kTooLong{
    "FIL005", JOBXseverity::Error, "A compressed file expands to more bytes than are allowed; nothing of it is read.",
    "a features.Z of a few kilobytes that expands to gigabytes",
    "If the file is meant to be that large, raise the limit."};
inline constexpr CJOBXmessageKind kNotText{"FIL006", JOBXseverity::Error, "A file is not text; nothing of it is read.",
                                           "a features file that holds a picture or an archive",
                                           "Ask for the job again."};
inline constexpr CJOBXmessageKind kTwoForms{
    "FIL007", JOBXseverity::Warning,
    "A file is there twice, plain and compressed, with different contents; only the plain one is read.",
    "features and features.Z in one folder, where features is older", "Remove the one that is out of date."};
inline constexpr CJOBXmessageKind kSameName{
    "FIL008", JOBXseverity::Warning,
    "Two folders of layers, steps or user symbols, or two files in one folder, have the same name if letter case is "
    "ignored.",
    "folders steps/pcb/layers/top and steps/pcb/layers/TOP",
    "Layers and symbols are both read, of steps and files only one; remove what is out of date."};
inline constexpr CJOBXmessageKind kNul{
    "FIL009", JOBXseverity::Error, "A line has a NUL byte; what follows it on the line is not read.",
    "NAME=TOP with a byte 0 before the P", "Ask for the job again: the file was probably damaged."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kMissing, &kUnreadable, &kDamaged,  &kNoExpander, &kTooLong,
                                                   &kNotText, &kTwoForms,   &kSameName, &kNul};
} // namespace file_message
