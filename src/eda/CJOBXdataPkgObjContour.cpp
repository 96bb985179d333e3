#include "eda/CJOBXdataPkgObjContour.h"

#include "eda/EdaKeywords.h"

CJOBXdataPkgObjContour::CJOBXdataPkgObjContour()
{
    m_sKeyword = eda_keyword::kContour;
}

CJOBXdataPkgObjContour::~CJOBXdataPkgObjContour() = default;

CJOBXdataPkgObjContour* CJOBXdataPkgObjContour::clone() const
{
    return new CJOBXdataPkgObjContour(*this);
}

void CJOBXdataPkgObjContour::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a coordinate of an element
    for (__int64 i = 0; i < m_arrElements.GetSize(); ++i)
        if (CJOBXlayObjOX* const element = m_arrElements.GetAt(i))
            element->UnitConvert(by);
}
