#include "compact/CODBsysAttrData.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBsysAttrData*, CODBsysAttrData*>;

CODBsysAttrData::~CODBsysAttrData() = default;

CODBsysAttrData* CODBsysAttrData::clone() const
{
    return NewCopy(*this);
}

CODBsysAttrDataArray* CODBsysAttrDataArray::clone() const
{
    return NewCopy(*this);
}
