#include "compact/CODBSnt.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBSnt*, CODBSnt*>;

CODBSnt::~CODBSnt() = default;

CODBSnt* CODBSnt::clone() const
{
    return NewCopy(*this);
}

CODBSntArray* CODBSntArray::clone() const
{
    return NewCopy(*this);
}
