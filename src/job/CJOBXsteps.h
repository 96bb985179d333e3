#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "step/CJOBXstepObj.h"

class CWnd;

// The steps of a job and their reader.
// Ownership: owns the steps; windows are borrowed.
// Threads:   one thread calls; the layers of a step are read on a team of worker threads.
class JOBX_API CJOBXsteps : public CRaisingNew
{
public:
    CJOBXsteps();
    CJOBXsteps(const CJOBXsteps&) = delete;
    CJOBXsteps& operator=(const CJOBXsteps&) = delete;
    virtual ~CJOBXsteps();

    // Reads the named steps below `stepsDirectory` in the order of the names and appends them. Skips names that have no
    // directory, are empty, "." or "..", or contain a separator. The progress bar, if any, stays at 20 until the step
    // of the last name has been read, and then moves to 100; this is intended. Returns 1.
    int ParseODBOfMFC(CString stepsDirectory, const CStringArray& stepNames);

    CJOBXstepObjArray m_arrSteps;
    // CJOBX sets these for a read with a progress window and takes them back at the next read. A host may set its own.
    // They stay as long as CJOBX has no progress window.
    CWnd* m_pProgress = nullptr;
    CWnd* m_pStatus = nullptr;
};
