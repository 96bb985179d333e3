#include "compact/CODBcmpToe.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

template class CExPtrArray<CODBcmpToe*, CODBcmpToe*>;

CODBcmpToe::~CODBcmpToe() = default;

CODBcmpToe* CODBcmpToe::clone() const
{
    return NewCopy(*this);
}

void CODBcmpToe::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBcmpToeArray* CODBcmpToeArray::clone() const
{
    return NewCopy(*this);
}
