// Writing the layers of a step as separate tasks.
#pragma once

#include "foundation/CWriteTasks.h"

class CJOBXlayerArray;

// Like CJOBXlayerArray::WriteODBData, but only makes the directories now; the tasks write the files.
void AddLayerWrites(CWriteTasks& tasks, const CJOBXlayerArray& layers, const CString& stepDirectory);
