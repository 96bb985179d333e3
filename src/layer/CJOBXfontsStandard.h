#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "layer/CJOBXfontsStandardObj.h"

// One character of the job's font; owns its strokes. Not copyable.
// Units:     lengths in the unit of the job, inch or millimetre.
class JOBX_API CJOBXfontsStandard : public CRaisingNew
{
public:
    CJOBXfontsStandard();
    CJOBXfontsStandard(const CJOBXfontsStandard&) = delete;
    CJOBXfontsStandard& operator=(const CJOBXfontsStandard&) = delete;
    virtual ~CJOBXfontsStandard();

    // Multiplies every stroke's points by `factor`.
    void UnitConvert(const double& factor);

    CString m_sName; // the character as in the file
    CJOBXfontsStandardObjArray m_arrStrokes;
};

extern template class JOBX_API CExPtrArray<CJOBXfontsStandard*, CJOBXfontsStandard*>;

// The characters of a font in file order; owns them. Null entries are skipped.
class JOBX_API CJOBXfontsStandardArray : public COwningPtrArray<CJOBXfontsStandard>
{
public:
    CJOBXfontsStandardArray();
    ~CJOBXfontsStandardArray() override;

    // Writes a line end and the character's block for each. Does nothing for a null file.
    void WriteODBData(FILE* file) const;
    // Multiplies every stroke's points by `factor`.
    void UnitConvert(const double& factor);
};
