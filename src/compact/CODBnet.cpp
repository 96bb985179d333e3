#include "compact/CODBnet.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

template class CExPtrArray<CODBnet*, CODBnet*>;

CODBnet::~CODBnet() = default;

CODBnet* CODBnet::clone() const
{
    return NewCopy(*this);
}

void CODBnet::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBnetArray* CODBnetArray::clone() const
{
    return NewCopy(*this);
}

CODBnet* CODBnetArray::pGetODBnetWithName(const CString& name) const
{
    for (CODBnet& net : Records())
        if (net.m_sName == name)
            return &net;
    return nullptr;
}
