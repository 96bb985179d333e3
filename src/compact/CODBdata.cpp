#include "compact/CODBdata.h"

#include "compact/NewCopy.h"

CODBdata::~CODBdata() = default;

CODBdata* CODBdata::clone() const
{
    return NewCopy(*this);
}

void CODBdata::vRescale(double factor)
{
    m_arrPkgs.vRescale(factor);
}
