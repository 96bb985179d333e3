#include "compact/CODBcmp.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

template class CExPtrArray<CODBcmp*, CODBcmp*>;

CODBcmp::~CODBcmp() = default;

CODBcmp* CODBcmp::clone() const
{
    return NewCopy(*this);
}

void CODBcmp::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBcmpArray* CODBcmpArray::clone() const
{
    return NewCopy(*this);
}
