#pragma once

#include "eda/CJOBXdataPkgObj.h"
#include "layer/CJOBXlayObjOX.h"

// An outline of line segments and arcs, keyword "CT". It replaces all records from "CT" to "CE".
// Units, ownership, threads: as CJOBXdataPkgObj. Owns its contour elements; copies are deep.
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
    // The elements, borrowed.
    CJOBXlayObjOXArray* GetODBlayObjOXArray() { return &m_arrElements; }
    const CJOBXlayObjOXArray* GetODBlayObjOXArray() const { return &m_arrElements; }

    CJOBXlayObjOXArray m_arrElements; // "OB", "OS", "OC" and "OE" in file order
};
