#pragma once

#include "foundation/CJOBXidentified.h"
#include "foundation/CJOBXkeyed.h"
#include "foundation/CJOBXsourced.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/corekit/CPointN.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"

#include <cstdio>

// One step-and-repeat entry: which step is placed where, and how often.
// Units:     lengths in the unit of its file; the angle in degrees.
// Ownership: owned by its array; not copyable.
class JOBX_API CJOBXstepRepeat : public CRaisingNew, public CJOBXkeyed, public CJOBXidentified, public CJOBXsourced
{
public:
    CJOBXstepRepeat();
    CJOBXstepRepeat(const CJOBXstepRepeat&) = delete;
    CJOBXstepRepeat& operator=(const CJOBXstepRepeat&) = delete;
    virtual ~CJOBXstepRepeat();

    // Multiplies position and pitch by `factor`; count, angle and texts do not change.
    void UnitConvert(const double& factor);

    CString m_sName; // of the placed step
    CPointD m_ptPosition;
    CPointD m_ptPitch;     // between columns and between rows
    CPointN m_ptCount;     // of columns and of rows
    double m_dAngle = 0.0; // classic reading truncates it to an integer; intended
    CString m_sMirror = "NO";
    CString m_sFlip;
};

extern template class JOBX_API CExPtrArray<CJOBXstepRepeat*, CJOBXstepRepeat*>;

// The step-and-repeat table of one step; owns its entries.
class JOBX_API CJOBXstepRepeatArray : public COwningPtrArray<CJOBXstepRepeat>
{
public:
    CJOBXstepRepeatArray();
    ~CJOBXstepRepeatArray() override;

    // Writes every entry to an open file. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;
    // Converts every entry.
    void UnitConvert(const double& factor);
};
