#include "step/CJOBXstepRepeat.h"

#include "foundation/ScaleLengths.h"
#include "step/CJOBXstepRepeatFields.h"

template class CExPtrArray<CJOBXstepRepeat*, CJOBXstepRepeat*>;

CJOBXstepRepeat::CJOBXstepRepeat() = default;

CJOBXstepRepeat::~CJOBXstepRepeat() = default;

void CJOBXstepRepeat::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXstepRepeatArray::CJOBXstepRepeatArray() = default;

CJOBXstepRepeatArray::~CJOBXstepRepeatArray() = default;

void CJOBXstepRepeatArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXstepRepeat& entry : Records())
        entry.UnitConvert(by);
}
