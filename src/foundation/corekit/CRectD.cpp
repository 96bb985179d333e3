#include "foundation/corekit/CRectD.h"

template class CArray<CRectD, const CRectD&>;
template class CValueArray<CRectD>;
template class CExPtrArray<CRectD*, CRectD*>;

CRectD::~CRectD() = default;

CRectD* CRectD::clone() const
{
    return new CRectD(*this);
}

bool CRectD::operator==(const CRectD& other) const
{
    return this == &other || (m_dLeft == other.m_dLeft && m_dRight == other.m_dRight && m_dBottom == other.m_dBottom &&
                              m_dTop == other.m_dTop);
}

CArrayRectD::~CArrayRectD() = default;

CArrayRectD* CArrayRectD::clone() const
{
    return new CArrayRectD(*this);
}

bool CArrayRectD::operator!=(const CArrayRectD& other) const
{
    return !(*this == other);
}
