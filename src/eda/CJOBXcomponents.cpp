#include "eda/CJOBXcomponents.h"

template class CExPtrArray<CJOBXcomponents*, CJOBXcomponents*>;

namespace
{
// The first text whose number in the parallel table equals `number`; "" when there is none.
CString FirstOfNumber(const CArrayN& numbers, const CStringArray& texts, int number)
{
    const INT_PTR count = std::min(numbers.GetSize(), texts.GetSize());
    for (INT_PTR i = 0; i < count; ++i)
        if (numbers.GetAt(i) == number)
            return texts.GetAt(i);
    return CString();
}
} // namespace

CJOBXcomponents::CJOBXcomponents() = default;

CJOBXcomponents::~CJOBXcomponents() = default;

CString CJOBXcomponents::GetAttributeName(int number) const
{
    return FirstOfNumber(m_arrAttributeNameNumbers, m_arrAttributeNames, number);
}

CString CJOBXcomponents::GetAttributeText(int number) const
{
    return FirstOfNumber(m_arrAttributeTextNumbers, m_arrAttributeTexts, number);
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
    m_arrCmps.UnitConvert(factor);
}

CJOBXcomponentsArray::CJOBXcomponentsArray() = default;

CJOBXcomponentsArray::~CJOBXcomponentsArray() = default;

void CJOBXcomponentsArray::UnitConvert(const double& factor)
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXcomponents* const components = GetAt(i))
            components->UnitConvert(factor);
}
