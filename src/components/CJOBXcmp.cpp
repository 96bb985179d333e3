#include "components/CJOBXcmp.h"

#include "components/CJOBXcmpFields.h"
#include "foundation/ScaleLengths.h"

template class CExPtrArray<CJOBXcmp*, CJOBXcmp*>;

namespace
{
// The first non-empty value of a property of that name, "" if there is none.
CString FirstValueOf(const CLPropertyArray& properties, const char* name)
{
    for (__int64 i = 0; i < properties.GetSize(); ++i)
    {
        const CLProperty* const property = properties.GetAt(i);
        if (property != nullptr && property->m_sName == name && !property->m_sValue.IsEmpty())
            return property->m_sValue;
    }
    return CString();
}
} // namespace

CJOBXcmp::CJOBXcmp() = default;

CJOBXcmp::~CJOBXcmp() = default;

CString CJOBXcmp::sGetPartName() const
{
    for (const char* const name : {"ALT_SYMBOLS", "PART_NAME"})
    {
        const CString value = FirstValueOf(m_arrProperties, name);
        if (!value.IsEmpty())
            return value;
    }
    return m_sPartName;
}

CJOBXcmpTop* CJOBXcmp::pGetODBcmpToeFromID(int pin) const
{
    return m_arrTops.pGetCmpToeWithPinID(pin);
}

void CJOBXcmp::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXcmpArray::CJOBXcmpArray() = default;

CJOBXcmpArray::~CJOBXcmpArray() = default;

void CJOBXcmpArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXcmp& component : Records())
        component.UnitConvert(by);
}
