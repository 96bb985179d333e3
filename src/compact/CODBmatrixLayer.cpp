#include "compact/CODBmatrixLayer.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBmatrixLayer*, CODBmatrixLayer*>;

CODBmatrixLayer::~CODBmatrixLayer() = default;

CODBmatrixLayer* CODBmatrixLayer::clone() const
{
    return NewCopy(*this);
}

CODBmatrixLayerArray* CODBmatrixLayerArray::clone() const
{
    return NewCopy(*this);
}
