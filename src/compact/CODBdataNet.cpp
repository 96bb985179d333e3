#include "compact/CODBdataNet.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBdataNet*, CODBdataNet*>;

CODBdataNet::~CODBdataNet() = default;

CODBdataNet* CODBdataNet::clone() const
{
    return NewCopy(*this);
}

CODBdataNetArray* CODBdataNetArray::clone() const
{
    return NewCopy(*this);
}
