#include "step/CJOBXstephdr.h"

#include "foundation/ScaleLengths.h"
#include "step/CJOBXstephdrFields.h"

template class CExPtrArray<CJOBXstephdr*, CJOBXstephdr*>;

CJOBXstephdr::CJOBXstephdr() = default;

CJOBXstephdr::~CJOBXstephdr() = default;

void CJOBXstephdr::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXstephdrArray::CJOBXstephdrArray() = default;

CJOBXstephdrArray::~CJOBXstephdrArray() = default;

void CJOBXstephdrArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXstephdr& header : Records())
        header.UnitConvert(by);
}
