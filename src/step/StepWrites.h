// Writing steps as separate tasks.
#pragma once

#include "foundation/CWriteTasks.h"

class CJOBXstepObj;
class CJOBXstepObjArray;

// Like WriteODBData of both classes, but only makes the directories now; the tasks write the files.
void AddStepWrites(CWriteTasks& tasks, const CJOBXstepObj& step, const CString& stepsDirectory, int withEda);
void AddStepWrites(CWriteTasks& tasks, const CJOBXstepObjArray& steps, const CString& directory, int withEda);
