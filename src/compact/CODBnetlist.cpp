#include "compact/CODBnetlist.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

CODBnetlist::~CODBnetlist() = default;

CODBnetlist* CODBnetlist::clone() const
{
    return NewCopy(*this);
}

void CODBnetlist::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}
