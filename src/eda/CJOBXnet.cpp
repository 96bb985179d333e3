#include "eda/CJOBXnet.h"

template class CExPtrArray<CJOBXnet*, CJOBXnet*>;

CJOBXnet::CJOBXnet() = default;

CJOBXnet::~CJOBXnet() = default;

void CJOBXnet::UnitConvert(const double& factor)
{
    m_arrPts.UnitConvert(factor);
}

CJOBXnetArray::CJOBXnetArray() = default;

CJOBXnetArray::~CJOBXnetArray() = default;

void CJOBXnetArray::UnitConvert(const double& factor)
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXnet* const net = GetAt(i))
            net->UnitConvert(factor);
}
