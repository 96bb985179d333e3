#include "layer/CJOBXfontsStandard.h"

#include "foundation/ScaleLengths.h"
#include "layer/CJOBXfontsFields.h"

template class CExPtrArray<CJOBXfontsStandard*, CJOBXfontsStandard*>;

CJOBXfontsStandard::CJOBXfontsStandard() = default;

CJOBXfontsStandard::~CJOBXfontsStandard() = default;

void CJOBXfontsStandard::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXfontsStandardArray::CJOBXfontsStandardArray() = default;

CJOBXfontsStandardArray::~CJOBXfontsStandardArray() = default;

void CJOBXfontsStandardArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXfontsStandard& character : Records())
        character.UnitConvert(by);
}
