#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "layer/CJOBXlayObjOX.h"

#include <cstdio>
#include <memory>

class CSharedProperties;

// One feature of a features file. What differs by kind is decided by the type text: "L" line, "P" pad, "A" arc, "T"
// text, "B" barcode, "S" surface; another text has no geometry of its own. A record whose class does not fit its type
// text keeps its geometry as it is. Units:     lengths in the unit of the file they came from, angles in degrees.
// Ownership: owned by its layer's array; not copyable.
// Threads:   different objects may be used at once; sharing one object needs the caller's lock.
class JOBX_API CJOBXlayObj
{
public:
    CJOBXlayObj();
    CJOBXlayObj(const CJOBXlayObj&) = delete;
    CJOBXlayObj& operator=(const CJOBXlayObj&) = delete;
    virtual ~CJOBXlayObj();
    // 1 when the feature's centre is exactly (x, y), no tolerance; only pads have one, all others answer 0.
    virtual int CheckObjAtCenterPoint(double& x, double& y);

    // The record letter.
    CString GetType() const { return m_sType; }
    void SetType(const CString& type) { m_sType = type; }
    // "P" positive (the default) or "N" negative, as read.
    CString GetPolarity() const { return m_sPolarity; }
    void SetPolarity(const CString& polarity) { m_sPolarity = polarity; }
    int GetDcode() const { return m_nDcode; }
    void SetDcode(int dcode) { m_nDcode = dcode; }
    // The number of the symbol in the layer's symbol table; -1 when none.
    int GetSymbolNumber() const { return m_nSymbol; }
    void SetSymbolNumber(int symbol) { m_nSymbol = symbol; }
    // The position of the feature among the feature lines of its file, from 0.
    int GetFeatureIndex() const { return m_nIndex; }
    void SetFeatureIndex(int index) { m_nIndex = index; }
    // Set by hosts, searched by CJOBXlayer::nGetLayObjIndexFromSurfaceIndex; -1 when none.
    int GetSurfaceIndex() const { return m_nSurfaceIndex; }
    void SetSurfaceIndex(int index) { m_nSurfaceIndex = index; }
    // Texts of the host's own; nothing in the library fills or writes them. Kept empty until first asked for.
    CStringArray& GetTexts();
    const CStringArray& GetTexts() const;
    // A value of the host's own, 0 at first; nothing in the library fills or writes it.
    __int64 GetUserValue() const;
    void SetUserValue(__int64 value);

    // The attributes. Records of one file whose attribute texts are equal share one list until one of them changes it.
    int nGetPropertyCount() const;
    // The property at `index`, borrowed and not to be changed; null for a bad index.
    const CJOBXProperty* pGetProperty(int index) const;
    // The list for changing, borrowed: from now on this feature's own. Never null.
    CJOBXPropertyArray* GetPropertyArray();
    // Takes over what `list` holds, shared with every other feature that was given it.
    void ShareProperties(CSharedProperties* list);

    // Multiply every length of the feature: points, a barcode's height and width, a text's size and width factor. A
    // pad's resize factor and all angles stay.
    void vRescale(double factor);
    void UnitConvert(const double& factor);

    // Writes the record with its attribute list; a surface with its contours. Attributes without a text number are left
    // out. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;
    // Writes the attribute list and the line end.
    void WriteODBFeatureAttributeData(std::FILE* file) const;

    // The value, in upper case, of the first property whose upper-cased name contains ".GEOMETRY" and whose value is
    // not empty; "" when there is none.
    CString GetViaPadStackName() const;

protected:
    // One plain place; the records keep many of them.
    struct Place
    {
        double x = 0.0;
        double y = 0.0;

        Place() = default;
        Place(const CPointD& point) : x(point.GetX()), y(point.GetY()) {}
        operator CPointD() const { return {x, y}; }
        void Scale(double factor)
        {
            x *= factor;
            y *= factor;
        }
    };

private:
    struct Extras;

    CSharedProperties* m_pProperties = nullptr; // counted; null when there are none
    int m_nDcode = 0;
    int m_nSymbol = -1;
    int m_nIndex = 0;
    int m_nSurfaceIndex = -1;
    CString m_sPolarity = "P";
    CString m_sType;
    std::unique_ptr<Extras> m_pExtras; // null until a host uses it
};

// A straight line drawn with a symbol.
class JOBX_API CJOBXlayObjLine : public CJOBXlayObj
{
public:
    CJOBXlayObjLine();
    ~CJOBXlayObjLine() override;

    CPointD GetEndPoint() const { return m_ptEnd; }
    void SetEndPoint(const CPointD& point) { m_ptEnd = point; }
    CPointD GetStartPoint() const { return m_ptStart; }
    void SetStartPoint(const CPointD& point) { m_ptStart = point; }
    CString GetPadName() const { return m_sPadName; }
    void SetPadName(const CString& name) { m_sPadName = name; }
    // Multiplies the lengths of this kind by `factor`, as vRescale does.
    void ScaleGeometry(double factor);

private:
    Place m_ptEnd;
    Place m_ptStart;
    CString m_sPadName;
};

// A symbol placed at a point.
class JOBX_API CJOBXlayObjPad : public CJOBXlayObj
{
public:
    CJOBXlayObjPad();
    ~CJOBXlayObjPad() override;
    int CheckObjAtCenterPoint(double& x, double& y) override;

    CString GetPadName() const { return m_sPadName; }
    void SetPadName(const CString& name) { m_sPadName = name; }
    // 0 to 7: quarter turns, from 4 on mirrored; 8 turned by the angle; 9 turned by the angle and mirrored.
    int GetOrientation() const { return m_nOrientation; }
    void SetOrientation(int orientation) { m_nOrientation = orientation; }
    double GetResizeFactor() const { return m_dResizeFactor; }
    void SetResizeFactor(double factor) { m_dResizeFactor = factor; }
    // 1 when the file gave the resized form, else 0.
    int GetResizeFlag() const { return m_nResizeFlag; }
    void SetResizeFlag(int flag) { m_nResizeFlag = flag; }
    double GetRotationAngle() const { return m_dAngle; }
    void SetRotationAngle(double angle) { m_dAngle = angle; }
    CPointD GetCenterPoint() const { return m_ptCenter; }
    void SetCenterPoint(const CPointD& point) { m_ptCenter = point; }
    // Multiplies the lengths of this kind by `factor`, as vRescale does.
    void ScaleGeometry(double factor);

private:
    CString m_sPadName;
    int m_nOrientation = 0;
    int m_nResizeFlag = 0;
    double m_dResizeFactor = 0.0;
    double m_dAngle = 0.0;
    Place m_ptCenter;
};

// An arc drawn with a symbol; equal start and end make a full circle.
class JOBX_API CJOBXlayObjArc : public CJOBXlayObj
{
public:
    CJOBXlayObjArc();
    ~CJOBXlayObjArc() override;

    // "Y" clockwise, "N" counter-clockwise, as read.
    CString GetClockwise() const { return m_sClockwise; }
    void SetClockwise(const CString& clockwise) { m_sClockwise = clockwise; }
    CPointD GetCenterPoint() const { return m_ptCenter; }
    void SetCenterPoint(const CPointD& point) { m_ptCenter = point; }
    CPointD GetEndPoint() const { return m_ptEnd; }
    void SetEndPoint(const CPointD& point) { m_ptEnd = point; }
    CPointD GetStartPoint() const { return m_ptStart; }
    void SetStartPoint(const CPointD& point) { m_ptStart = point; }
    CString GetPadName() const { return m_sPadName; }
    void SetPadName(const CString& name) { m_sPadName = name; }
    // Multiplies the lengths of this kind by `factor`, as vRescale does.
    void ScaleGeometry(double factor);

private:
    CString m_sClockwise;
    Place m_ptCenter;
    Place m_ptEnd;
    Place m_ptStart;
    CString m_sPadName;
};

// A text drawn in a stroke font.
class JOBX_API CJOBXlayObjText : public CJOBXlayObj
{
public:
    CJOBXlayObjText();
    ~CJOBXlayObjText() override;

    int GetVersion() const { return m_nVersion; }
    void SetVersion(int version) { m_nVersion = version; }
    CString GetText() const { return m_sText; }
    void SetText(const CString& text) { m_sText = text; }
    // The line width, in units of 12 mils.
    double GetWidthFactor() const { return m_dWidthFactor; }
    void SetWidthFactor(double factor) { m_dWidthFactor = factor; }
    // The size of a character cell.
    CPointD GetSize() const { return m_ptSize; }
    void SetSize(const CPointD& size) { m_ptSize = size; }
    // As for a pad.
    int GetOrientation() const { return m_nOrientation; }
    void SetOrientation(int orientation) { m_nOrientation = orientation; }
    CString GetFontName() const { return m_sFontName; }
    void SetFontName(const CString& name) { m_sFontName = name; }
    CPointD GetPosition() const { return m_ptPosition; }
    void SetPosition(const CPointD& point) { m_ptPosition = point; }
    double GetRotationAngle() const { return m_dAngle; }
    void SetRotationAngle(double angle) { m_dAngle = angle; }
    // Multiplies the lengths of this kind by `factor`, as vRescale does.
    void ScaleGeometry(double factor);

private:
    int m_nVersion = 1;
    int m_nOrientation = 0;
    CString m_sText;
    double m_dWidthFactor = 0.0;
    Place m_ptSize;
    CString m_sFontName = "standard";
    Place m_ptPosition;
    double m_dAngle = 0.0;
};

// A barcode. The texts are the file's fields as written.
class JOBX_API CJOBXlayObjBarcode : public CJOBXlayObj
{
public:
    CJOBXlayObjBarcode();
    ~CJOBXlayObjBarcode() override;
    // Multiplies the lengths of this kind by `factor`, as vRescale does.
    void ScaleGeometry(double factor);

    CString m_sText;
    CString m_sAstrPosition; // where the text shown beside the bars stands
    CString m_sAstr;         // whether it is shown
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
// Ownership: a copy shares the elements with its source, so that changing one changes both: intended. The elements live
// as
//            long as the last contour that shares them.
class JOBX_API CJOBXlayObjSurfaceOB
{
public:
    CJOBXlayObjSurfaceOB();
    CJOBXlayObjSurfaceOB(const CJOBXlayObjSurfaceOB& other);
    CJOBXlayObjSurfaceOB& operator=(const CJOBXlayObjSurfaceOB& other);
    virtual ~CJOBXlayObjSurfaceOB();

    // The elements, borrowed; never null.
    CJOBXlayObjOXArray* GetODBlayObjOXArray() const { return m_pElements.get(); }
    // Multiply the points of every element.
    void UnitConvert(const double& factor);
    void vRescale(double factor);

private:
    std::shared_ptr<CJOBXlayObjOXArray> m_pElements;
};

extern template class JOBX_API CExPtrArray<CJOBXlayObjSurfaceOB*, CJOBXlayObjSurfaceOB*>;

// The contours of one surface, in file order; owns them.
class JOBX_API CJOBXlayObjSurfaceOBArray : public COwningPtrArray<CJOBXlayObjSurfaceOB>
{
public:
    CJOBXlayObjSurfaceOBArray();
    ~CJOBXlayObjSurfaceOBArray() override;
    // Multiply the points of every contour.
    void UnitConvert(const double& factor);
    void vRescale(double factor);
};

// A filled area: islands with holes.
class JOBX_API CJOBXlayObjSurface : public CJOBXlayObj
{
public:
    CJOBXlayObjSurface();
    ~CJOBXlayObjSurface() override;

    // The contours, borrowed.
    CJOBXlayObjSurfaceOBArray* GetContours() { return &m_arrContours; }
    const CJOBXlayObjSurfaceOBArray* GetContours() const { return &m_arrContours; }
    // Multiplies the lengths of this kind by `factor`, as vRescale does.
    void ScaleGeometry(double factor);

private:
    CJOBXlayObjSurfaceOBArray m_arrContours;
};

extern template class JOBX_API CExPtrArray<CJOBXlayObj*, CJOBXlayObj*>;

// The features of one file, in file order (a surface stands where its body ends); owns them.
class JOBX_API CJOBXlayObjArray : public COwningPtrArray<CJOBXlayObj>
{
public:
    CJOBXlayObjArray();
    ~CJOBXlayObjArray() override;

    // The position of the first record whose CheckObjAtCenterPoint answers 1, always searched from 0 on: the third
    // argument is not used. Intended. -1 when there is none.
    int GetObjAtIndexCenterPoint(double x, double y, int start) const;
    // Multiply the lengths of every feature.
    void UnitConvert(const double& factor);
    void vRescale(double factor);
};
