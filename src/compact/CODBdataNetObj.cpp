#include "compact/CODBdataNetObj.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBdataNetObj*, CODBdataNetObj*>;

CODBdataNetObj::~CODBdataNetObj() = default;

CODBdataNetObj* CODBdataNetObj::clone() const
{
    return NewCopy(*this);
}

CODBdataNetObjArray* CODBdataNetObjArray::clone() const
{
    return NewCopy(*this);
}
