// Messages about the matrix and the folders that it names.
#pragma once

#include "reading/CJOBXmessage.h"

namespace matrix_message
{
inline constexpr CJOBXmessageKind kNoStepFolder{
    "MAT001", JOBXseverity::Error, "A step of the matrix has no folder; it is not in the model.",
    "a matrix that names the step PCB, without a folder steps/pcb",
    "Ask for the job again: it was probably packed or copied incompletely."};
inline constexpr CJOBXmessageKind kNoStepRow{
    "MAT002", JOBXseverity::Warning, "A step's folder is not named by the matrix; it is not read.",
    "a folder steps/old, without a step OLD in the matrix", "Add the step to the matrix, or remove the folder."};
inline constexpr CJOBXmessageKind kNoLayerFolder{
    "MAT003", JOBXseverity::Error, "A layer of the matrix has no folder in a step that repeats no other.",
    "a matrix with a row TOP, without a folder steps/pcb/layers/top",
    "Ask for the job again: it was probably packed or copied incompletely."};
inline constexpr CJOBXmessageKind kNoLayerRow{
    "MAT004", JOBXseverity::Warning, "A layer's folder is named by no row of the matrix; it is read.",
    "a folder steps/pcb/layers/old, without a row OLD in the matrix", "Add a row to the matrix, or remove the folder."};
inline constexpr CJOBXmessageKind kNotNumber{
    "MAT005", JOBXseverity::Error, "The value of a key should be a number and is not.", "ROW=first",
    "The value is read as the number that it begins with, or 0; export the job again."};
inline constexpr CJOBXmessageKind kNotKey{"MAT006", JOBXseverity::Warning,
                                          "A line is neither a key with a value nor part of a block.",
                                          "LAYER on a line without a brace", "The line is not in the model."};
inline constexpr CJOBXmessageKind kUnknown{"MAT007", JOBXseverity::Note, "A key or a block is not known.",
                                           "THICKNESS=3 in a LAYER block",
                                           "It is kept with its value, among the further keys."};
inline constexpr CJOBXmessageKind kTwice{"MAT008", JOBXseverity::Warning, "A key is given twice in the same place.",
                                         "ROW=1 and ROW=2 in one LAYER block",
                                         "The last value counts; look at the file."};
inline constexpr CJOBXmessageKind kNotClosed{"MAT009", JOBXseverity::Error, "A block is not closed.",
                                             "LAYER { and no } before the next block",
                                             "It ends where the next one begins; the file may be cut short."};
inline constexpr CJOBXmessageKind kNotOpen{"MAT010", JOBXseverity::Warning, "A brace closes no block.",
                                           "} before the first block", "Nothing is lost; look at the file."};
inline constexpr CJOBXmessageKind kSameName{
    "MAT011", JOBXseverity::Warning, "Two layers or two steps have the same name if letter case is ignored.",
    "LAYER blocks with NAME=TOP and NAME=top", "Both are kept; look-ups by name find the first."};
inline constexpr CJOBXmessageKind kNoName{
    "MAT012", JOBXseverity::Error, "A layer or a step has no name.", "a LAYER block without NAME",
    "It is kept without a name, and no folder belongs to it; export the job again."};
inline constexpr CJOBXmessageKind kNoSpanLayer{
    "MAT013", JOBXseverity::Error, "The first or last layer of a span is not in the matrix.",
    "START_NAME=TOP and no layer TOP", "The span of the drill layer is unknown; export the job again."};
inline constexpr CJOBXmessageKind kUnknownWord{
    "MAT014", JOBXseverity::Warning, "A context, a type or a polarity is not one of those that the format has.",
    "POLARITY=INVERSE", "The word is kept; look at the matrix."};
inline constexpr CJOBXmessageKind kSameNumber{
    "MAT015", JOBXseverity::Warning, "Two layers have the same row, or two steps the same column.",
    "two LAYER blocks with ROW=3", "Both are kept in the order of the file; look at the matrix."};

inline constexpr const CJOBXmessageKind* kAll[] = {
    &kNoStepFolder, &kNoStepRow, &kNoLayerFolder, &kNoLayerRow, &kNotNumber,   &kNotKey,      &kUnknown,   &kTwice,
    &kNotClosed,    &kNotOpen,   &kSameName,      &kNoName,     &kNoSpanLayer, &kUnknownWord, &kSameNumber};
} // namespace matrix_message
