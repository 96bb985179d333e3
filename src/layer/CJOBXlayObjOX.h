#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CString.h"

// One element of a surface contour: its start ("OB"), a segment to a point ("OS"), an arc to a point ("OC"), or its end
// ("OE").
// Units:     points in the unit of their file.
// Ownership: a plain value; copies are deep.
class JOBX_API CJOBXlayObjOX : public CJOBXrecord
{
public:
    CJOBXlayObjOX() = default;
    CJOBXlayObjOX(const CJOBXlayObjOX& other);
    CJOBXlayObjOX& operator=(const CJOBXlayObjOX& other);
    virtual ~CJOBXlayObjOX();
    // A copy with every member; the caller owns it.
    virtual CJOBXlayObjOX* clone() const;

    // Compares every member, including the line number: equal elements from different lines are unequal. This is
    // intended.
    bool operator==(const CJOBXlayObjOX& other) const;

    // The line of the features file that the element came from, counted from 1; 0 for none.
    int GetLineNumber() const { return m_nLineNumber; }
    void SetLineNumber(int lineNumber) { m_nLineNumber = lineNumber; }
    // "Y" or "N"; of an arc.
    CString GetClockwise() const;
    void SetClockwise(const CString& clockwise);
    // "I" for an island, "H" for a hole; of a start.
    CString GetPolygonType() const;
    void SetPolygonType(const CString& polygonType);
    // The centre of an arc.
    CPointD GetCenterPoint() const { return {m_dCenterX, m_dCenterY}; }
    void SetCenterPoint(const CPointD& center);
    // The start, or the end of a segment or an arc.
    CPointD GetPoint() const { return {m_dX, m_dY}; }
    void SetPoint(const CPointD& point);
    // "OB", "OS", "OC" or "OE".
    CString GetKind() const;
    void SetKind(const CString& kind);

    // Multiply both points.
    void UnitConvert(const double& factor);
    void vRescale(double factor);

protected:
    // How the reader of a file begins an element, among records that own nothing: with the numbers of common texts.
    static void Begin(CJOBXlayObjOX& element, unsigned char kind, const CPointD& point, const CPointD& center = {},
                      unsigned char clockwise = 0) noexcept
    {
        element.m_bIsAmongPlain = true;
        element.m_nKind = kind;
        element.m_nClockwise = clockwise & 15U;
        element.m_dCenterX = center.GetX();
        element.m_dCenterY = center.GetY();
        element.m_dX = point.GetX();
        element.m_dY = point.GetY();
    }

private:
    struct Texts;

    Texts& MakeTexts();

    int m_nLineNumber = 0;
    bool m_bIsAmongPlain = false; // among records that own nothing
    // Numbers of common texts. The last number of each means that the text is in m_pTexts.
    unsigned char m_nKind = 0;
    unsigned char m_nClockwise : 4 = 0;
    unsigned char m_nPolygonType : 4 = 0;
    Texts* m_pTexts = nullptr; // owned; null while all texts are common ones
    double m_dCenterX = 0.0;
    double m_dCenterY = 0.0;
    double m_dX = 0.0;
    double m_dY = 0.0;
};

extern template class JOBX_API CExPtrArray<CJOBXlayObjOX*, CJOBXlayObjOX*>;

// The elements of one contour, in order; owns them; copies are deep.
class JOBX_API CJOBXlayObjOXArray : public COwningPtrArray<CJOBXlayObjOX>
{
public:
    CJOBXlayObjOXArray();
    CJOBXlayObjOXArray(const CJOBXlayObjOXArray& other);
    CJOBXlayObjOXArray& operator=(const CJOBXlayObjOXArray& other);
    ~CJOBXlayObjOXArray() override;
    // A copy with copies of all elements; the caller owns it.
    virtual CJOBXlayObjOXArray* clone() const;

    // Compares at the positions of `other` and ignores the size, so an empty `other` equals anything. This is intended.
    bool operator==(const CJOBXlayObjOXArray& other) const;

    // Multiply the points of every element.
    void UnitConvert(const double& factor);
    void vRescale(double factor);
};
