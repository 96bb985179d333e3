#include "step/CJOBXstepRepeat.h"

template class CExPtrArray<CJOBXstepRepeat*, CJOBXstepRepeat*>;

CJOBXstepRepeat::CJOBXstepRepeat() = default;

CJOBXstepRepeat::~CJOBXstepRepeat() = default;

void CJOBXstepRepeat::UnitConvert(const double& factor)
{
    m_ptPosition.UnitConvert(factor);
    m_ptPitch.UnitConvert(factor);
}

CJOBXstepRepeatArray::CJOBXstepRepeatArray() = default;

CJOBXstepRepeatArray::~CJOBXstepRepeatArray() = default;

void CJOBXstepRepeatArray::UnitConvert(const double& factor)
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXstepRepeat* const entry = GetAt(i))
            entry->UnitConvert(factor);
}
