#include "compact/CODBcomponents.h"

#include "compact/CompactFields.h"
#include "compact/NewCopy.h"

CODBcomponents::~CODBcomponents() = default;

CODBcomponents* CODBcomponents::clone() const
{
    return NewCopy(*this);
}

void CODBcomponents::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}
