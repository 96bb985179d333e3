#include "compact/CODBlayer.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBlayer*, CODBlayer*>;

CODBlayer::~CODBlayer() = default;

CODBlayer* CODBlayer::clone() const
{
    return NewCopy(*this);
}

void CODBlayer::vRescale()
{
    m_arrFeatures.vRescale(m_dRescaleFactor);
}

CODBlayerArray* CODBlayerArray::clone() const
{
    return NewCopy(*this);
}
