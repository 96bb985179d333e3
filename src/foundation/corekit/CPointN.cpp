#include "foundation/corekit/CPointN.h"

template class CArray<CPointN, const CPointN&>;
template class CValueArray<CPointN>;
template class CArray<CArrayPointN, const CArrayPointN&>;
template class CValueArray<CArrayPointN>;
template class CExPtrArray<CArrayPointN*, CArrayPointN*>;

CPointN::~CPointN() = default;

CArrayPointN::~CArrayPointN() = default;

CArrayPointN* CArrayPointN::clone() const
{
    return new CArrayPointN(*this);
}

bool CArrayPointN::operator!=(const CArrayPointN& other) const
{
    return !(*this == other);
}

CArrayPointN_Array::~CArrayPointN_Array() = default;

CArrayPointN_Array* CArrayPointN_Array::clone() const
{
    return new CArrayPointN_Array(*this);
}

bool CArrayPointN_Array::operator!=(const CArrayPointN_Array& other) const
{
    return !(*this == other);
}
