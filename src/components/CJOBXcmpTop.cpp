#include "components/CJOBXcmpTop.h"

#include "components/CJOBXcmpTopFields.h"
#include "foundation/ScaleLengths.h"

template class CExPtrArray<CJOBXcmpTop*, CJOBXcmpTop*>;

CJOBXcmpTop::CJOBXcmpTop() = default;

CJOBXcmpTop::~CJOBXcmpTop() = default;

void CJOBXcmpTop::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXcmpTopArray::CJOBXcmpTopArray() = default;

CJOBXcmpTopArray::~CJOBXcmpTopArray() = default;

CJOBXcmpTop* CJOBXcmpTopArray::pGetCmpToeWithPinID(int pin) const
{
    return GetAt(nGetCmpPinIndexWithPinID(pin));
}

int CJOBXcmpTopArray::nGetCmpPinIndexWithPinID(int pin) const
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (GetAt(i) != nullptr && GetAt(i)->m_nPin == pin)
            return static_cast<int>(i);
    return -1;
}

void CJOBXcmpTopArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXcmpTop& top : Records())
        top.UnitConvert(by);
}
