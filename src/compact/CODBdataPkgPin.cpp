#include "compact/CODBdataPkgPin.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBdataPkgPin*, CODBdataPkgPin*>;

CODBdataPkgPin::~CODBdataPkgPin() = default;

CODBdataPkgPin* CODBdataPkgPin::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgPin::vRescale(double factor)
{
    m_arrOutlines.vRescale(factor);
    m_ptCenter.ReScale(factor);
}

CODBdataPkgPinArray* CODBdataPkgPinArray::clone() const
{
    return NewCopy(*this);
}
