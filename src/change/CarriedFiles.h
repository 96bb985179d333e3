// The files of a job that no reader took, where an operation moves or drops what they belong to.
#pragma once

#include "foundation/framework/CString.h"

#include <functional>
#include <string_view>
#include <vector>

class CJOBX;

// The parts of a path below the job directory: "steps", "pcb", "layers", "top", "notes".
using PathParts = std::vector<std::string_view>;
// Where the names of steps and layers are in it.
inline constexpr std::size_t kStepInPath = 1;
inline constexpr std::size_t kLayerInPath = 3;

// Whether the path is in the folder of that step, or of that layer of any step. Names are compared without letter case.
bool IsInStep(const PathParts& parts, const CString& step);
bool IsInLayer(const PathParts& parts, const CString& layer);

// Takes the files for which `isUnwanted` answers true out of the list.
void DropCarriedFiles(CJOBX& job, const std::function<bool(const PathParts&)>& isUnwanted);
// Replaces that part of the paths for which `isWanted` answers true.
void RenameInCarriedFiles(CJOBX& job, std::size_t part, const CString& name,
                          const std::function<bool(const PathParts&)>& isWanted);
