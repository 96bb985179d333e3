#include "eda/CJOBXdataPkg.h"

#include "eda/CJOBXdataPkgFields.h"
#include "foundation/ScaleLengths.h"

template class CExPtrArray<CJOBXdataPkg*, CJOBXdataPkg*>;

CJOBXdataPkg* CJOBXdataPkg::clone() const
{
    return new CJOBXdataPkg(*this);
}

CJOBXdataPkg::~CJOBXdataPkg() = default;

bool CJOBXdataPkg::operator==(const CJOBXdataPkg& other) const
{
    return m_nNumber == other.m_nNumber && m_nFlag == other.m_nFlag && m_dPitch == other.m_dPitch &&
           m_ptUpperRight == other.m_ptUpperRight && m_ptLowerLeft == other.m_ptLowerLeft && m_sName == other.m_sName &&
           m_arrProperties == other.m_arrProperties && m_arrAttributes == other.m_arrAttributes &&
           m_arrOutlines == other.m_arrOutlines && m_arrPins == other.m_arrPins;
}

bool CJOBXdataPkg::operator!=(const CJOBXdataPkg& other) const
{
    return !(*this == other);
}

void CJOBXdataPkg::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXdataPkgArray::~CJOBXdataPkgArray() = default;

void CJOBXdataPkgArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of a package
    for (CJOBXdataPkg& package : Records())
        package.UnitConvert(by);
}
