#pragma once

#include "eda/CJOBXdataPkgObj.h"
#include "layer/CJOBXlayObjOX.h"

// An outline of straight and round pieces, keyword "CT"; it stands for all records from "CT" to "CE".
// Units, ownership, threads: as CJOBXdataPkgObj; owns its contour elements and copies them deeply.
class JOBX_API CJOBXdataPkgObjContour : public CJOBXdataPkgObj
{
public:
    CJOBXdataPkgObjContour();
    CJOBXdataPkgObjContour(const CJOBXdataPkgObjContour&) = default;
    CJOBXdataPkgObjContour& operator=(const CJOBXdataPkgObjContour&) = default;
    ~CJOBXdataPkgObjContour() override;
    CJOBXdataPkgObjContour* clone() const override;

    // Multiplies the points of every element by `factor`.
    void UnitConvert(const double& factor);
    // The elements; they stay this outline's.
    CJOBXlayObjOXArray* GetODBlayObjOXArray() { return &m_arrElements; }
    const CJOBXlayObjOXArray* GetODBlayObjOXArray() const { return &m_arrElements; }

    CJOBXlayObjOXArray m_arrElements; // "OB", "OS", "OC" and "OE" in file order
};
