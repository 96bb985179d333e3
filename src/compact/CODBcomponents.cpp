#include "compact/CODBcomponents.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

CODBcomponents::~CODBcomponents() = default;

CODBcomponents* CODBcomponents::clone() const
{
    return NewCopy(*this);
}

void CODBcomponents::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}
