#include "foundation/corekit/CPoint3D.h"

template class CArray<CPoint3D, const CPoint3D&>;
template class CValueArray<CPoint3D>;
template class CExPtrArray<CPoint3D*, CPoint3D*>;

CPoint3D::~CPoint3D() = default;

CPoint3D* CPoint3D::clone() const
{
    return new CPoint3D(*this);
}

CArrayPoint3D::~CArrayPoint3D() = default;

CArrayPoint3D* CArrayPoint3D::clone() const
{
    return new CArrayPoint3D(*this);
}

bool CArrayPoint3D::operator!=(const CArrayPoint3D& other) const
{
    return !(*this == other);
}
