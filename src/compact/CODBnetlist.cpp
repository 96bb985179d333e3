#include "compact/CODBnetlist.h"

#include "compact/NewCopy.h"

CODBnetlist::~CODBnetlist() = default;

CODBnetlist* CODBnetlist::clone() const
{
    return NewCopy(*this);
}

void CODBnetlist::vRescale(double factor)
{
    m_arrPts.vRescale(factor);
    m_arrNets.vRescale(factor);
}
