#include "layer/CJOBXfontsStandardObj.h"

#include "foundation/ScaleLengths.h"
#include "layer/CJOBXfontsFields.h"

template class CExPtrArray<CJOBXfontsStandardObj*, CJOBXfontsStandardObj*>;

CJOBXfontsStandardObj::CJOBXfontsStandardObj() = default;

CJOBXfontsStandardObj::~CJOBXfontsStandardObj() = default;

void CJOBXfontsStandardObj::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXfontsStandardObjArray::CJOBXfontsStandardObjArray() = default;

CJOBXfontsStandardObjArray::~CJOBXfontsStandardObjArray() = default;

void CJOBXfontsStandardObjArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXfontsStandardObj& stroke : Records())
        stroke.UnitConvert(by);
}
