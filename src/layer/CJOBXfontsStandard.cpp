#include "layer/CJOBXfontsStandard.h"

#include "foundation/ScaleLengths.h"
#include "layer/CJOBXfontsFields.h"
#include "layer/FontFile.h"

template class CExPtrArray<CJOBXfontsStandard*, CJOBXfontsStandard*>;

CJOBXfontsStandard::CJOBXfontsStandard() = default;

CJOBXfontsStandard::~CJOBXfontsStandard() = default;

void CJOBXfontsStandard::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXfontsStandardArray::CJOBXfontsStandardArray() = default;

CJOBXfontsStandardArray::~CJOBXfontsStandardArray() = default;

void CJOBXfontsStandardArray::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    font_file::Write(out, *this);
}

void CJOBXfontsStandardArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of what is converted
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXfontsStandard* const character = GetAt(i))
            character->UnitConvert(by);
}

void font_file::Write(CTextWriter& out, const CJOBXfontsStandardArray& characters)
{
    for (__int64 i = 0; i < characters.GetSize(); ++i)
        if (const CJOBXfontsStandard* const character = characters.GetAt(i))
        {
            out << '\n' << kCharacter << ' ' << character->m_sName << '\n';
            Write(out, character->m_arrStrokes);
            out << kCharacterEnd << '\n';
        }
}
