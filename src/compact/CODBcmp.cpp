#include "compact/CODBcmp.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBcmp*, CODBcmp*>;

CODBcmp::~CODBcmp() = default;

CODBcmp* CODBcmp::clone() const
{
    return NewCopy(*this);
}

void CODBcmp::vRescale(double factor)
{
    m_ptLocation.ReScale(factor);
    m_arrToes.vRescale(factor);
}

CODBcmpArray* CODBcmpArray::clone() const
{
    return NewCopy(*this);
}
