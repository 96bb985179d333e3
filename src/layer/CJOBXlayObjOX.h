#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CString.h"

// One element of a surface contour: where the contour begins ("OB"), a straight segment to a point ("OS"), an arc to a
// point ("OC"), or the end ("OE").
// Units:     points in the unit of the file they came from.
// Ownership: a plain value; copies are deep.
// Threads:   different objects may be used at once; sharing one object needs the caller's lock.
class JOBX_API CJOBXlayObjOX
{
public:
    CJOBXlayObjOX();
    CJOBXlayObjOX(const CJOBXlayObjOX& other);
    CJOBXlayObjOX& operator=(const CJOBXlayObjOX& other);
    virtual ~CJOBXlayObjOX();
    // A copy with every member; the caller owns it.
    virtual CJOBXlayObjOX* clone() const;

    // Every member takes part, the line number too: equal elements read from different lines are unequal. Intended.
    bool operator==(const CJOBXlayObjOX& other) const;

    // The features file's line that the element came from, counted from 1; 0 when none.
    int GetLineNumber() const { return m_nLineNumber; }
    void SetLineNumber(int lineNumber) { m_nLineNumber = lineNumber; }
    // "Y" or "N", for an arc.
    CString GetClockwise() const { return m_sClockwise; }
    void SetClockwise(const CString& clockwise) { m_sClockwise = clockwise; }
    // "I" for an island, "H" for a hole, for a begin.
    CString GetPolygonType() const { return m_sPolygonType; }
    void SetPolygonType(const CString& polygonType) { m_sPolygonType = polygonType; }
    // The centre of an arc.
    CPointD GetCenterPoint() const { return {m_dCenterX, m_dCenterY}; }
    void SetCenterPoint(const CPointD& center);
    // The begin, or the end of a segment or an arc.
    CPointD GetPoint() const { return {m_dX, m_dY}; }
    void SetPoint(const CPointD& point);
    // "OB", "OS", "OC" or "OE".
    CString GetKind() const { return m_sKind; }
    void SetKind(const CString& kind) { m_sKind = kind; }

    // Multiply both points.
    void UnitConvert(const double& factor);
    void vRescale(double factor);

private:
    int m_nLineNumber = 0;
    CString m_sClockwise;
    CString m_sPolygonType;
    CString m_sKind;
    double m_dCenterX = 0.0;
    double m_dCenterY = 0.0;
    double m_dX = 0.0;
    double m_dY = 0.0;
};

extern template class JOBX_API CExPtrArray<CJOBXlayObjOX*, CJOBXlayObjOX*>;

// The elements of one contour, in order; owns them, copies are deep.
class JOBX_API CJOBXlayObjOXArray : public COwningPtrArray<CJOBXlayObjOX>
{
public:
    CJOBXlayObjOXArray();
    CJOBXlayObjOXArray(const CJOBXlayObjOXArray& other);
    CJOBXlayObjOXArray& operator=(const CJOBXlayObjOXArray& other);
    ~CJOBXlayObjOXArray() override;
    // A copy with copies of all elements; the caller owns it.
    virtual CJOBXlayObjOXArray* clone() const;

    // Compares at the argument's positions; no size takes part, so an empty argument equals anything. Intended.
    bool operator==(const CJOBXlayObjOXArray& other) const;

    // Multiply the points of every element.
    void UnitConvert(const double& factor);
    void vRescale(double factor);
};
