#include "compact/CODBdataPkg.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBdataPkg*, CODBdataPkg*>;

CODBdataPkg::~CODBdataPkg() = default;

CODBdataPkg* CODBdataPkg::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkg::vRescale(double factor)
{
    m_arrOutlines.vRescale(factor);
    m_arrPins.vRescale(factor);
    m_dPitch *= factor;
    m_ptUpperRight.ReScale(factor);
    m_ptLowerLeft.ReScale(factor);
}

CODBdataPkgArray* CODBdataPkgArray::clone() const
{
    return NewCopy(*this);
}
