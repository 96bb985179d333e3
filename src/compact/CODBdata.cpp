#include "compact/CODBdata.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

CODBdata::~CODBdata() = default;

CODBdata* CODBdata::clone() const
{
    return NewCopy(*this);
}

void CODBdata::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}
