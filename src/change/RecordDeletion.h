#pragma once

#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/JobxExport.h"

class CJOBXcomponents;
class CJOBXlayer;
class CJOBXstepObj;

// Delete records of a step that was read completely, and correct whatever refers to them: a number that led to a record
// leads to the same record afterwards. The references of the step must be right before, so a host that deletes records
// itself does that after these calls, or not at all.
// Results:   places outside the list are ignored. Exhausted memory raises CMemoryException and may leave the numbers
//            that refer to the deleted records as they were.
// Threads:   one thread calls for each step.

// Deletes the features at these places of a layer of the step. The records of the EDA data that list them go too.
JOBX_API void DeleteFeatures(CJOBXstepObj& step, CJOBXlayer& layer, const CArrayN& places);
// Deletes the components at these places of a components file of the step. The subnets of their pins become traces,
// because their copper stays.
JOBX_API void DeleteComponents(CJOBXstepObj& step, CJOBXcomponents& file, const CArrayN& places);
// Deletes the nets at these places of the EDA data, and the nets of the same names from all netlists. Toeprints in them
// are not connected any more.
JOBX_API void DeleteNets(CJOBXstepObj& step, const CArrayN& places);
