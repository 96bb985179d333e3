#include "eda/CJOBXdataPkgObjContour.h"

#include "eda/CJOBXdataPkgObjFields.h"
#include "eda/EdaFormat.h"
#include "foundation/ScaleLengths.h"

CJOBXdataPkgObjContour::CJOBXdataPkgObjContour()
{
    m_sKeyword = eda_format::kContour;
}

CJOBXdataPkgObjContour::~CJOBXdataPkgObjContour() = default;

CJOBXdataPkgObjContour* CJOBXdataPkgObjContour::clone() const
{
    return new CJOBXdataPkgObjContour(*this);
}

void CJOBXdataPkgObjContour::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}
