// Writing steps as tasks of their own.
#pragma once

#include "foundation/CWriteTasks.h"

class CJOBXstepObj;
class CJOBXstepObjArray;

// As the WriteODBData of both: the directories are made now, the files when the tasks run.
void AddStepWrites(CWriteTasks& tasks, const CJOBXstepObj& step, const CString& stepsDirectory, int withEda);
void AddStepWrites(CWriteTasks& tasks, const CJOBXstepObjArray& steps, const CString& directory, int withEda);
