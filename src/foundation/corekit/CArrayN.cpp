#include "foundation/corekit/CArrayN.h"

template class CArray<int, int>;
template class CValueArray<int, int>;
template class CExPtrArray<CArrayN*, CArrayN*>;

CArrayN::~CArrayN() = default;

CArrayN* CArrayN::clone() const
{
    return new CArrayN(*this);
}
