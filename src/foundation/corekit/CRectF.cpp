#include "foundation/corekit/CRectF.h"

#include "foundation/corekit/CRectD.h"
#include "foundation/framework/CArchive.h"

template class CArray<CRectF, const CRectF&>;
template class CValueArray<CRectF>;

CRectF::CRectF(const CRectD& rect)
    : m_fLeft(static_cast<float>(rect.m_dLeft)),
      m_fRight(static_cast<float>(rect.m_dRight)),
      m_fBottom(static_cast<float>(rect.m_dBottom)),
      m_fTop(static_cast<float>(rect.m_dTop))
{
}

CRectF& CRectF::operator=(const CRectD& rect)
{
    return *this = CRectF(rect);
}

CRectF::~CRectF() = default;

bool CRectF::operator==(const CRectF& other) const
{
    return this == &other || (m_fLeft == other.m_fLeft && m_fRight == other.m_fRight && m_fBottom == other.m_fBottom &&
                              m_fTop == other.m_fTop);
}

void CRectF::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
        archive << m_fLeft << m_fRight << m_fBottom << m_fTop;
    else
        archive >> m_fLeft >> m_fRight >> m_fBottom >> m_fTop;
}

CArrayRectF::~CArrayRectF() = default;

CArrayRectF* CArrayRectF::clone() const
{
    return new CArrayRectF(*this);
}

bool CArrayRectF::operator!=(const CArrayRectF& other) const
{
    return !(*this == other);
}
