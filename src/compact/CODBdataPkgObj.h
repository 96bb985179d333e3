#pragma once

#include "compact/CODBlayObjOX.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CStringArray.h"

// One outline record of a package or pin of the compact model. A plain record, of this class itself, keeps keyword and
// parameters as text and has no geometry. The subclasses have it. Rescaling a list converts plain records to subclasses
// where possible (see CODBdataPkgObjArray::vMakeGeometry). The class, not the keyword, decides what is rescaled. The
// constructor of each subclass sets the keyword.
// Units:     lengths of the subclasses in the unit of the EDA data; parameter texts are never converted.
// Ownership: owned by its array; copies are deep. Copy with clone: assignment would slice a subclass.
class JOBX_API CODBdataPkgObj : public CRaisingNew
{
public:
    CODBdataPkgObj() = default;
    CODBdataPkgObj(const CODBdataPkgObj&) = default;
    CODBdataPkgObj& operator=(const CODBdataPkgObj&) = default;
    virtual ~CODBdataPkgObj();
    virtual CODBdataPkgObj* clone() const; // the caller owns the copy

    // Multiplies the geometry by `factor`; a plain record has none.
    virtual void vRescale(double factor);

    int m_nLineNumber = 0;        // in the source file, counted from 1
    CStringArray m_arrParameters; // as in the file
    CString m_sKeyword;           // "CR", "SQ", "RC", "CT", "OB", "OS", "OC", "OE", "CE"
};

extern template class JOBX_API CExPtrArray<CODBdataPkgObj*, CODBdataPkgObj*>;

// The outline records of a package or pin, in order; owns them.
class JOBX_API CODBdataPkgObjArray : public CRescalableArray<CODBdataPkgObj>
{
public:
    CODBdataPkgObjArray* clone() const override; // the caller owns the copy

    // Converts plain records to the subclass with their geometry, by the rules of CJOBXdataPkgObjArray::vMakeGeometry.
    // Line number and parameters are kept, records that do not parse stay plain, null entries are removed.
    void vMakeGeometry();
    // Calls vMakeGeometry, then vRescale of every record.
    void vRescale(double factor);
};

// A round outline, keyword "CR".
class JOBX_API CODBdataPkgObjCircle : public CODBdataPkgObj
{
public:
    CODBdataPkgObjCircle();
    CODBdataPkgObjCircle(const CODBdataPkgObjCircle&) = default;
    CODBdataPkgObjCircle& operator=(const CODBdataPkgObjCircle&) = default;
    ~CODBdataPkgObjCircle() override;
    CODBdataPkgObjCircle* clone() const override;
    void vRescale(double factor) override;

    CPointD m_ptCenter;
    double m_dRadius = 0.0;
};

// A square outline, keyword "SQ".
class JOBX_API CODBdataPkgObjSquare : public CODBdataPkgObj
{
public:
    CODBdataPkgObjSquare();
    CODBdataPkgObjSquare(const CODBdataPkgObjSquare&) = default;
    CODBdataPkgObjSquare& operator=(const CODBdataPkgObjSquare&) = default;
    ~CODBdataPkgObjSquare() override;
    CODBdataPkgObjSquare* clone() const override;
    void vRescale(double factor) override;

    CPointD m_ptCenter;
    double m_dHalfSide = 0.0;
};

// A rectangular outline, keyword "RC".
class JOBX_API CODBdataPkgObjRectangle : public CODBdataPkgObj
{
public:
    CODBdataPkgObjRectangle();
    CODBdataPkgObjRectangle(const CODBdataPkgObjRectangle&) = default;
    CODBdataPkgObjRectangle& operator=(const CODBdataPkgObjRectangle&) = default;
    ~CODBdataPkgObjRectangle() override;
    CODBdataPkgObjRectangle* clone() const override;
    void vRescale(double factor) override;

    double m_dWidth = 0.0;
    double m_dHeight = 0.0;
    CPointD m_ptLowerLeft;
};

// An outline of line segments and arcs, keyword "CT".
class JOBX_API CODBdataPkgObjContour : public CODBdataPkgObj
{
public:
    CODBdataPkgObjContour();
    CODBdataPkgObjContour(const CODBdataPkgObjContour&) = default;
    CODBdataPkgObjContour& operator=(const CODBdataPkgObjContour&) = default;
    ~CODBdataPkgObjContour() override;
    CODBdataPkgObjContour* clone() const override;
    void vRescale(double factor) override;

    CODBlayObjOXArray m_arrElements; // "OB", "OS", "OC" and "OE" in order
};
