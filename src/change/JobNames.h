#pragma once

#include "change/CJOBXresult.h"
#include "foundation/framework/CStringArray.h"

class CJOBX;
class CJOBXstepObj;

// Rename parts of a job that was read completely, wherever their names stand, and order its steps.
// Names:     of jobs, steps and layers have 1 to 64 letters, digits, "-", "_", "." or "+". They begin with a letter, a
//            digit or "_" and do not end with ".". They are compared without the case of ASCII letters. Where the old
//            name was written in capitals, as in a matrix, so is the new one; folders have small letters.
// Results:   refused if the old name does not exist, if the new name is not legal, and if another step or layer has it.
//            Exhausted memory raises CMemoryException and may leave some places with the old name.
// Threads:   one thread calls for each job.

// The job's name: that of its directory, and in its information.
JOBX_API CJOBXresult RenameJob(CJOBX& job, const CString& name);
// A step's name in the matrix, in step-repeats, and of its folder.
JOBX_API CJOBXresult RenameStep(CJOBX& job, const CString& oldName, const CString& newName);
// A layer's name in the matrix, in spans, in the layers of the EDA data, and of its folder in every step.
JOBX_API CJOBXresult RenameLayer(CJOBX& job, const CString& oldName, const CString& newName);
// Puts these steps first, in this order; the others follow in the order that they had. Refused if a name does not exist
// or is there twice.
JOBX_API CJOBXresult OrderSteps(CJOBX& job, const CStringArray& names);
// The name of a net of the step, in the EDA data and in all netlists. Letter case counts. Refused if the new name is
// empty, contains a blank or a ";", or belongs to another net.
JOBX_API CJOBXresult RenameNet(CJOBXstepObj& step, const CString& oldName, const CString& newName);
