#include "compact/CODBdataPkg.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

template class CExPtrArray<CODBdataPkg*, CODBdataPkg*>;

CODBdataPkg::~CODBdataPkg() = default;

CODBdataPkg* CODBdataPkg::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkg::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBdataPkgArray* CODBdataPkgArray::clone() const
{
    return NewCopy(*this);
}
