#include "compact/CODBdataPkgPin.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

template class CExPtrArray<CODBdataPkgPin*, CODBdataPkgPin*>;

CODBdataPkgPin::~CODBdataPkgPin() = default;

CODBdataPkgPin* CODBdataPkgPin::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgPin::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBdataPkgPinArray* CODBdataPkgPinArray::clone() const
{
    return NewCopy(*this);
}
