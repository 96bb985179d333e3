#include "eda/CJOBXdataPkgPin.h"

#include "eda/CJOBXdataPkgPinFields.h"
#include "foundation/ScaleLengths.h"

template class CExPtrArray<CJOBXdataPkgPin*, CJOBXdataPkgPin*>;

namespace
{
constexpr double kNowhere = -1111.0;
}

CJOBXdataPkgPin::~CJOBXdataPkgPin() = default;

CJOBXdataPkgPin* CJOBXdataPkgPin::clone() const
{
    return new CJOBXdataPkgPin(*this);
}

bool CJOBXdataPkgPin::operator==(const CJOBXdataPkgPin& other) const
{
    return m_nFlag == other.m_nFlag && m_dHoleSize == other.m_dHoleSize && m_ptCenter == other.m_ptCenter &&
           m_sType == other.m_sType && m_sElectricalType == other.m_sElectricalType &&
           m_sMountType == other.m_sMountType && m_sName == other.m_sName && m_arrOutlines == other.m_arrOutlines;
}

void CJOBXdataPkgPin::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXdataPkgPinArray::CJOBXdataPkgPinArray(const CJOBXdataPkgPinArray& other) : COwningPtrArray()
{
    *this = other;
}

CJOBXdataPkgPinArray& CJOBXdataPkgPinArray::operator=(const CJOBXdataPkgPinArray& other)
{
    CopyElements(other, [](const CJOBXdataPkgPin& pin) { return pin.clone(); });
    return *this;
}

CJOBXdataPkgPinArray::~CJOBXdataPkgPinArray() = default;

CJOBXdataPkgPinArray* CJOBXdataPkgPinArray::clone() const
{
    return new CJOBXdataPkgPinArray(*this);
}

bool CJOBXdataPkgPinArray::operator==(const CJOBXdataPkgPinArray& other) const
{
    return EqualsAtPositionsOf(other);
}

CPointD CJOBXdataPkgPinArray::GetPkgPinLocation(const CString& name) const
{
    for (const CJOBXdataPkgPin& pin : Records())
        if (pin.m_sName == name)
            return pin.m_ptCenter;
    return {kNowhere, kNowhere};
}

void CJOBXdataPkgPinArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of a pin
    for (CJOBXdataPkgPin& pin : Records())
        pin.UnitConvert(by);
}
