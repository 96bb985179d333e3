#include "layer/CJOBXtoolData.h"

#include "foundation/ScaleLengths.h"
#include "foundation/framework/Guarded.h"
#include "layer/CJOBXtoolFields.h"

template class CExPtrArray<CJOBXtoolData*, CJOBXtoolData*>;

namespace
{
constexpr const char* kTypes[] = {"PLATED", "NON_PLATED", "VIA"}; // indexed by code
constexpr int kTypeCount = 3;

bool AreEqualButForNumber(const CJOBXtoolData& a, const CJOBXtoolData& b)
{
    return a.m_sType == b.m_sType && a.m_sType2 == b.m_sType2 && a.m_sBit == b.m_sBit && a.m_dMinTol == b.m_dMinTol &&
           a.m_dMaxTol == b.m_dMaxTol && a.m_dDrillSize == b.m_dDrillSize && a.m_dFinishSize == b.m_dFinishSize;
}
} // namespace

CJOBXtoolData::CJOBXtoolData() = default;

CJOBXtoolData::CJOBXtoolData(const CJOBXtoolData& other) = default;

CJOBXtoolData& CJOBXtoolData::operator=(const CJOBXtoolData& other) = default;

CJOBXtoolData::~CJOBXtoolData() = default;

CJOBXtoolData* CJOBXtoolData::clone() const
{
    return Guarded([this] { return new CJOBXtoolData(*this); });
}

bool CJOBXtoolData::operator==(const CJOBXtoolData& other) const
{
    return this == &other || (m_nNum == other.m_nNum && AreEqualButForNumber(*this, other));
}

bool CJOBXtoolData::operator!=(const CJOBXtoolData& other) const
{
    return !(*this == other);
}

int CJOBXtoolData::GetType(const CString& type)
{
    for (int code = 0; code < kTypeCount; ++code)
        if (type == kTypes[code])
            return code;
    return 0;
}

CString CJOBXtoolData::GetSType(int type)
{
    return type >= 0 && type < kTypeCount ? CString(kTypes[type]) : CString();
}

void CJOBXtoolData::UnitConvert(double factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXtoolDataArray::CJOBXtoolDataArray() = default;

CJOBXtoolDataArray::CJOBXtoolDataArray(const CJOBXtoolDataArray& other) : COwningPtrArray<CJOBXtoolData>()
{
    *this = other;
}

CJOBXtoolDataArray& CJOBXtoolDataArray::operator=(const CJOBXtoolDataArray& other)
{
    CopyElements(other, [](const CJOBXtoolData& tool) { return tool.clone(); });
    return *this;
}

CJOBXtoolDataArray::~CJOBXtoolDataArray() = default;

CJOBXtoolDataArray* CJOBXtoolDataArray::clone() const
{
    return Guarded([this] { return new CJOBXtoolDataArray(*this); });
}

bool CJOBXtoolDataArray::operator==(const CJOBXtoolDataArray& other) const
{
    return this == &other || (GetSize() == other.GetSize() && EqualsAtPositionsOf(other));
}

bool CJOBXtoolDataArray::operator!=(const CJOBXtoolDataArray& other) const
{
    return !(*this == other);
}

void CJOBXtoolDataArray::UnitConvert(double factor)
{
    for (CJOBXtoolData& tool : Records())
        tool.UnitConvert(factor);
}

int CJOBXtoolDataArray::GetSameToolNum(const CJOBXtoolData* candidate) const
{
    if (candidate == nullptr)
        return -1;
    for (const CJOBXtoolData& tool : Records())
        if (AreEqualButForNumber(tool, *candidate))
            return tool.m_nNum;
    return 0;
}
