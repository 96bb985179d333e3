#include "step/CJOBXstephdr.h"

template class CExPtrArray<CJOBXstephdr*, CJOBXstephdr*>;

CJOBXstephdr::CJOBXstephdr() = default;

CJOBXstephdr::~CJOBXstephdr() = default;

void CJOBXstephdr::UnitConvert(const double& factor)
{
    m_ptDatum.UnitConvert(factor);
    m_ptOrigin.UnitConvert(factor);
    m_arrStepRepeats.UnitConvert(factor);
}

CJOBXstephdrArray::CJOBXstephdrArray() = default;

CJOBXstephdrArray::~CJOBXstephdrArray() = default;

void CJOBXstephdrArray::UnitConvert(const double& factor)
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXstephdr* const header = GetAt(i))
            header->UnitConvert(factor);
}
