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

inline constexpr const CJOBXmessageKind* kAll[] = {&kNoStepFolder, &kNoStepRow, &kNoLayerFolder, &kNoLayerRow};
} // namespace matrix_message
