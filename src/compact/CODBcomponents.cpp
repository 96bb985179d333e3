#include "compact/CODBcomponents.h"

#include "compact/NewCopy.h"

CODBcomponents::~CODBcomponents() = default;

CODBcomponents* CODBcomponents::clone() const
{
    return NewCopy(*this);
}

void CODBcomponents::vRescale(double factor)
{
    m_arrCmps.vRescale(factor);
}
