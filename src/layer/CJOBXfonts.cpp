#include "layer/CJOBXfonts.h"

#include "foundation/ScaleLengths.h"
#include "layer/CJOBXfontsFields.h"

CJOBXfonts::CJOBXfonts() = default;

CJOBXfonts::~CJOBXfonts() = default;

void CJOBXfonts::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}
