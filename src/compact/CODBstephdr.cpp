#include "compact/CODBstephdr.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

template class CExPtrArray<CODBstephdr*, CODBstephdr*>;

CODBstephdr::~CODBstephdr() = default;

CODBstephdr* CODBstephdr::clone() const
{
    return NewCopy(*this);
}

void CODBstephdr::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBstephdrArray* CODBstephdrArray::clone() const
{
    return NewCopy(*this);
}
