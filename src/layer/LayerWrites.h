// Writing the layers of a step as tasks of their own.
#pragma once

#include "foundation/CWriteTasks.h"

class CJOBXlayerArray;

// As CJOBXlayerArray::WriteODBData: the directories are made now, the files when the tasks run.
void AddLayerWrites(CWriteTasks& tasks, const CJOBXlayerArray& layers, const CString& stepDirectory);
