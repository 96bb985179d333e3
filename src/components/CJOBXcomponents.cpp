#include "components/CJOBXcomponents.h"

#include "components/CJOBXcomponentsFields.h"
#include "foundation/NumberedTable.h"
#include "foundation/ScaleLengths.h"

template class CExPtrArray<CJOBXcomponents*, CJOBXcomponents*>;

CJOBXcomponents::CJOBXcomponents() = default;

CJOBXcomponents::~CJOBXcomponents() = default;

CString CJOBXcomponents::GetAttributeName(int number) const
{
    return FirstTextOfNumber(m_arrAttributeNameNumbers, m_arrAttributeNames, number);
}

CString CJOBXcomponents::GetAttributeText(int number) const
{
    return FirstTextOfNumber(m_arrAttributeTextNumbers, m_arrAttributeTexts, number);
}

int CJOBXcomponents::nGetFirstBtmIndex() const
{
    for (__int64 i = 0; i < m_arrCmps.GetSize(); ++i)
        if (m_arrCmps.GetAt(i) != nullptr && m_arrCmps.GetAt(i)->m_nSide == 0)
            return static_cast<int>(i);
    return 0;
}

void CJOBXcomponents::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXcomponentsArray::CJOBXcomponentsArray() = default;

CJOBXcomponentsArray::~CJOBXcomponentsArray() = default;

void CJOBXcomponentsArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXcomponents& components : Records())
        components.UnitConvert(by);
}
