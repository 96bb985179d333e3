#include "foundation/corekit/CStringEx.h"

#include "foundation/base/NumberText.h"

template class CArray<CStringEx, const CStringEx&>;
template class CValueArray<CStringEx>;

CStringEx::~CStringEx() = default;

double CStringEx::ToDouble() const
{
    return ParseReal(m_sText.View());
}

int CStringEx::ToInteger() const
{
    return ParseInteger(m_sText.View());
}

CStringExArray::~CStringExArray() = default;

bool CStringExArray::bStringInArray(const CString& text) const
{
    return std::any_of(m_pData, m_pData + m_nSize,
                       [&text](const CStringEx& element) { return element.m_sText == text; });
}
