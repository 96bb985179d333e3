#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One stroke of a character of the job's font. Not copyable.
// Units:     lengths in the unit of the job, inch or millimetre.
class JOBX_API CJOBXfontsStandardObj : public CRaisingNew
{
public:
    CJOBXfontsStandardObj();
    CJOBXfontsStandardObj(const CJOBXfontsStandardObj&) = delete;
    CJOBXfontsStandardObj& operator=(const CJOBXfontsStandardObj&) = delete;
    virtual ~CJOBXfontsStandardObj();

    // Multiplies both points by `factor`; the width does not change.
    void UnitConvert(const double& factor);

    CPointD m_ptStart;
    CPointD m_ptEnd;
    CString m_sPolarity = "P";
    CString m_sShape = "R";
    double m_dWidth = 0.0;
};

extern template class JOBX_API CExPtrArray<CJOBXfontsStandardObj*, CJOBXfontsStandardObj*>;

// The strokes of a character in file order; owns them. Null entries are skipped.
class JOBX_API CJOBXfontsStandardObjArray : public COwningPtrArray<CJOBXfontsStandardObj>
{
public:
    CJOBXfontsStandardObjArray();
    ~CJOBXfontsStandardObjArray() override;

    // Writes one line per stroke. Does nothing for a null file.
    void WriteODBData(FILE* file) const;
    // Multiplies every stroke's points by `factor`.
    void UnitConvert(const double& factor);
};
