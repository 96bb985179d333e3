#include "layer/CJOBXfontsStandardObj.h"

#include "foundation/ScaleLengths.h"
#include "layer/CJOBXfontsFields.h"
#include "layer/FontFile.h"

template class CExPtrArray<CJOBXfontsStandardObj*, CJOBXfontsStandardObj*>;

CJOBXfontsStandardObj::CJOBXfontsStandardObj() = default;

CJOBXfontsStandardObj::~CJOBXfontsStandardObj() = default;

void CJOBXfontsStandardObj::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXfontsStandardObjArray::CJOBXfontsStandardObjArray() = default;

CJOBXfontsStandardObjArray::~CJOBXfontsStandardObjArray() = default;

void CJOBXfontsStandardObjArray::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    font_file::Write(out, *this);
}

void CJOBXfontsStandardObjArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of what is converted
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXfontsStandardObj* const stroke = GetAt(i))
            stroke->UnitConvert(by);
}

void font_file::Write(CTextWriter& out, const CJOBXfontsStandardObjArray& strokes)
{
    for (__int64 i = 0; i < strokes.GetSize(); ++i)
        if (const CJOBXfontsStandardObj* const stroke = strokes.GetAt(i))
            out << kStroke << ' ' << General{stroke->m_ptStart.x} << ' ' << General{stroke->m_ptStart.y} << ' '
                << General{stroke->m_ptEnd.x} << ' ' << General{stroke->m_ptEnd.y} << ' ' << stroke->m_sPolarity << ' '
                << stroke->m_sShape << ' ' << General{stroke->m_dWidth} << '\n';
}
