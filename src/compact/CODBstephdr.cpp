#include "compact/CODBstephdr.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBstephdr*, CODBstephdr*>;

CODBstephdr::~CODBstephdr() = default;

CODBstephdr* CODBstephdr::clone() const
{
    return NewCopy(*this);
}

void CODBstephdr::vRescale(double factor)
{
    m_ptDatum.ReScale(factor);
    m_ptOrigin.ReScale(factor);
    m_arrStepRepeats.vRescale(factor);
}

CODBstephdrArray* CODBstephdrArray::clone() const
{
    return NewCopy(*this);
}
