#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "step/CJOBXstepObj.h"

class CWnd;

// The steps of a job and how they are read.
// Ownership: owns the steps; windows are borrowed.
// Threads:   one thread calls; the layers of a step are read on a team of worker threads.
class JOBX_API CJOBXsteps : public CRaisingNew
{
public:
    CJOBXsteps();
    CJOBXsteps(const CJOBXsteps&) = delete;
    CJOBXsteps& operator=(const CJOBXsteps&) = delete;
    virtual ~CJOBXsteps();

    // Reads the named steps below `stepsDirectory` in the order of the names and appends them. A name without a
    // directory is skipped, and so is one that is empty, "." or "..", or holds a separator. After each step the
    // progress bar, when there is one, stands at 20 until the last step, which brings it to 100: intended. Answers 1.
    int ParseODBOfMFC(CString stepsDirectory, const CStringArray& stepNames);

    CJOBXstepObjArray m_arrSteps;
    // The root hands these over for a read with a progress window, and takes them back at the next read. A host may set
    // its own, which stay while the root has no progress window.
    CWnd* m_pProgress = nullptr;
    CWnd* m_pStatus = nullptr;
};
