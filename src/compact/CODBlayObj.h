#pragma once

#include "compact/CODBlayObjOX.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CStringArray.h"

// One feature of the compact model. The class, not the type text, decides what is rescaled; a record of this class
// itself has no geometry. The constructor of each subclass sets the type text.
// Units:     lengths in the unit of the layer, angles in degrees.
// Ownership: owned by its layer's array, owns its properties; copies are deep. Copy with clone: assignment would slice
//            a subclass.
class JOBX_API CODBlayObj : public CRaisingNew
{
public:
    CODBlayObj() = default;
    CODBlayObj(const CODBlayObj&) = default;
    CODBlayObj& operator=(const CODBlayObj&) = default;
    virtual ~CODBlayObj();
    virtual CODBlayObj* clone() const; // the caller owns the copy

    // Multiplies every length of the feature by `factor`: points, the height and width of a barcode, the size and width
    // factor of a text. The resize factor of a pad and all angles do not change.
    virtual void vRescale(double factor);

    CJOBXPropertyArray m_arrProperties;
    int m_nDcode = 0;
    CString m_sPolarity = "P"; // "P" positive or "N" negative
    int m_nSymbol = -1;        // number in the layer's symbol table; -1 for none
    int m_nIndex = 0;          // index among the features of the file, from 0
    int m_nSurfaceIndex = -1;  // for the host, as is m_arrTexts
    CStringArray m_arrTexts;
    CString m_sType;          // "L" line, "P" pad, "A" arc, "T" text, "B" barcode, "S" surface
    __int64 m_nUserValue = 0; // for the host
};

// A straight line drawn with a symbol, type "L".
class JOBX_API CODBlayObjLine : public CODBlayObj
{
public:
    CODBlayObjLine();
    CODBlayObjLine(const CODBlayObjLine&) = default;
    CODBlayObjLine& operator=(const CODBlayObjLine&) = default;
    ~CODBlayObjLine() override;
    CODBlayObjLine* clone() const override;
    void vRescale(double factor) override;

    CPointD m_ptEnd;
    CPointD m_ptStart;
    CString m_sPadName;
};

// A symbol placed at a point, type "P".
class JOBX_API CODBlayObjPad : public CODBlayObj
{
public:
    CODBlayObjPad();
    CODBlayObjPad(const CODBlayObjPad&) = default;
    CODBlayObjPad& operator=(const CODBlayObjPad&) = default;
    ~CODBlayObjPad() override;
    CODBlayObjPad* clone() const override;
    void vRescale(double factor) override;

    CString m_sPadName;
    int m_nOrientation = 0; // 0 to 7: quarter turns, mirrored from 4 on; 8 rotated by the angle, 9 rotated and mirrored
    double m_dResizeFactor = 0.0;
    int m_nResizeFlag = 0; // 1 if resized
    double m_dAngle = 0.0;
    CPointD m_ptCenter;
};

// An arc drawn with a symbol, type "A"; a full circle if start and end are equal.
class JOBX_API CODBlayObjArc : public CODBlayObj
{
public:
    CODBlayObjArc();
    CODBlayObjArc(const CODBlayObjArc&) = default;
    CODBlayObjArc& operator=(const CODBlayObjArc&) = default;
    ~CODBlayObjArc() override;
    CODBlayObjArc* clone() const override;
    void vRescale(double factor) override;

    CString m_sClockwise; // "Y" clockwise, "N" counter-clockwise
    CPointD m_ptCenter;
    CPointD m_ptEnd;
    CPointD m_ptStart;
    CString m_sPadName;
};

// Text in a stroke font, type "T".
class JOBX_API CODBlayObjText : public CODBlayObj
{
public:
    CODBlayObjText();
    CODBlayObjText(const CODBlayObjText&) = default;
    CODBlayObjText& operator=(const CODBlayObjText&) = default;
    ~CODBlayObjText() override;
    CODBlayObjText* clone() const override;
    void vRescale(double factor) override;

    int m_nVersion = 1;
    CString m_sText;
    double m_dWidthFactor = 0.0;
    CPointD m_ptSize;       // of a character cell
    int m_nOrientation = 0; // as for a pad
    CString m_sFontName = "standard";
    CPointD m_ptPosition;
    double m_dAngle = 0.0;
};

// A barcode, type "B".
class JOBX_API CODBlayObjBarcode : public CODBlayObj
{
public:
    CODBlayObjBarcode();
    CODBlayObjBarcode(const CODBlayObjBarcode&) = default;
    CODBlayObjBarcode& operator=(const CODBlayObjBarcode&) = default;
    ~CODBlayObjBarcode() override;
    CODBlayObjBarcode* clone() const override;
    void vRescale(double factor) override;

    CString m_sText;
    CString m_sAstrPosition; // where the text beside the bars is
    CString m_sAstr;         // whether that text is shown
    CString m_sBg;           // background
    CString m_sCs;           // checksum
    CString m_sEFlag;
    CString m_sFasc; // full ASCII
    double m_dHeight = 0.0;
    double m_dWidth = 0.0;
    CString m_sFontName;
    CString m_sBarcodeName;
    int m_nOrientation = 0; // as for a pad
    CPointD m_ptPosition;
};

// One contour of a surface.
// Units:     points in the unit of the layer.
// Ownership: owned by its array, owns its elements; copies are deep, unlike those of CJOBXlayObjSurfaceOB.
class JOBX_API CODBlayObjSurfaceOB : public CRaisingNew
{
public:
    CODBlayObjSurfaceOB() = default;
    CODBlayObjSurfaceOB(const CODBlayObjSurfaceOB&) = default;
    CODBlayObjSurfaceOB& operator=(const CODBlayObjSurfaceOB&) = default;
    virtual ~CODBlayObjSurfaceOB();
    virtual CODBlayObjSurfaceOB* clone() const; // the caller owns the copy

    // Multiplies the points of every element by `factor`.
    void vRescale(double factor);

    CODBlayObjOXArray m_arrElements;
};

extern template class JOBX_API CExPtrArray<CODBlayObjSurfaceOB*, CODBlayObjSurfaceOB*>;

// The contours of one surface, in order; owns them.
class JOBX_API CODBlayObjSurfaceOBArray : public CRescalableArray<CODBlayObjSurfaceOB>
{
public:
    CODBlayObjSurfaceOBArray* clone() const override; // the caller owns the copy
};

// A filled area, islands with holes, type "S".
class JOBX_API CODBlayObjSurface : public CODBlayObj
{
public:
    CODBlayObjSurface();
    CODBlayObjSurface(const CODBlayObjSurface&) = default;
    CODBlayObjSurface& operator=(const CODBlayObjSurface&) = default;
    ~CODBlayObjSurface() override;
    CODBlayObjSurface* clone() const override;
    void vRescale(double factor) override;

    CODBlayObjSurfaceOBArray m_arrContours;
};

extern template class JOBX_API CExPtrArray<CODBlayObj*, CODBlayObj*>;

// The features of one layer, in order; owns them.
class JOBX_API CODBlayObjArray : public CRescalableArray<CODBlayObj>
{
public:
    CODBlayObjArray* clone() const override; // the caller owns the copy
};
