#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXidentified.h"
#include "foundation/CJOBXsourced.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "layer/CJOBXlayObjOX.h"

#include <cstdint>
#include <cstdio>
#include <memory>

// One feature of a features file. The type text decides how it is handled: "L" line, "P" pad, "A" arc, "T" text, "B"
// barcode, "S" surface. Any other text means no geometry. If the class of a record does not match its type text, its
// geometry does not change.
// Units:     lengths in the unit of their file, angles in degrees.
// Ownership: owned by its layer's array; not copyable.
class JOBX_API CJOBXlayObj : public CJOBXrecord, public CJOBXidentified, public CJOBXsourced
{
public:
    CJOBXlayObj() = default;
    CJOBXlayObj(const CJOBXlayObj&) = delete;
    CJOBXlayObj& operator=(const CJOBXlayObj&) = delete;
    virtual ~CJOBXlayObj();
    // 1 if the feature's centre is exactly (x, y). Only pads have a centre; all others return 0.
    virtual int CheckObjAtCenterPoint(double& x, double& y);

    // The record letter.
    CString GetType() const { return IsCharacter(m_cType) ? CString(m_cType) : LongType(); }
    void SetType(const CString& type);
    // "P" positive (the default) or "N" negative, as read.
    CString GetPolarity() const { return IsCharacter(m_cPolarity) ? CString(m_cPolarity) : LongPolarity(); }
    void SetPolarity(const CString& polarity);
    int GetDcode() const { return m_nDcode; }
    void SetDcode(int dcode) { m_nDcode = dcode; }
    // The number of the symbol in the layer's symbol table; -1 for none.
    int GetSymbolNumber() const { return m_nSymbol; }
    void SetSymbolNumber(int symbol) { m_nSymbol = symbol; }
    // The index of the feature among the feature lines of its file, from 0.
    int GetFeatureIndex() const { return m_nIndex; }
    void SetFeatureIndex(int index) { m_nIndex = index; }
    // Set by hosts, searched by CJOBXlayer::nGetLayObjIndexFromSurfaceIndex; -1 for none.
    int GetSurfaceIndex() const;
    void SetSurfaceIndex(int index);
    // Texts for the host. The library neither fills nor writes them. The list is made by the first call.
    CStringArray& GetTexts();
    const CStringArray& GetTexts() const;
    // A value for the host, initially 0. The library neither sets nor writes it.
    __int64 GetUserValue() const;
    void SetUserValue(__int64 value);

    // The attributes. Records of one file with equal attribute texts share one list until one of them changes it.
    int nGetPropertyCount() const;
    // The property at `index`, borrowed, not to be changed; null for a bad index.
    const CJOBXProperty* pGetProperty(int index) const;
    // The list for changes, borrowed, never null. The call unshares it.
    CJOBXPropertyArray* GetPropertyArray();

    // Multiply every length of the feature: points, the height and width of a barcode, the size and width factor of a
    // text. The resize factor of a pad and all angles do not change.
    void vRescale(double factor);
    void UnitConvert(const double& factor);

    // Writes the record with its attribute list, and the contours of a surface. Attributes without a text number are
    // omitted. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;
    // Writes the attribute list and the line end.
    void WriteODBFeatureAttributeData(std::FILE* file) const;

    // The first non-empty value, in upper case, of a property whose upper-cased name contains ".GEOMETRY"; "" if there
    // is none.
    CString GetViaPadStackName() const;

protected:
    // A point without virtual functions, to save memory.
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

    // The pad name of lines, pads and arcs.
    CString PadName() const;
    void KeepPadName(const CString& name);

    struct Extras;
    // Nearly all texts are one character, which is stored directly. These two values mark other texts.
    static constexpr char kEmptyText = '\0';
    static constexpr char kLongText = '\1'; // stored in the extras
    static constexpr bool IsCharacter(char text) noexcept { return text != kEmptyText && text != kLongText; }
    // The character to store for `text`. Stores a longer text in that member of the extras.
    char ShortOrKept(const CString& text, CString Extras::*kept);
    // The text of a character that marks another text.
    CString LongText(char text, CString Extras::*kept) const;

    // How the reader of a file begins a record. `properties` is null or a list that the record borrows; `isAmongPlain`:
    // the record is among those that own nothing.
    static void Begin(CJOBXlayObj& feature, char type, char polarity, const CJOBXPropertyArray* properties,
                      bool isAmongPlain) noexcept
    {
        feature.m_nLink = reinterpret_cast<std::uintptr_t>(properties);
        feature.m_cPolarity = polarity;
        feature.m_cType = type;
        feature.m_bIsAmongPlain = isAmongPlain;
    }

private:
    CString LongType() const;
    CString LongPolarity() const;

    Extras* FindExtras() const noexcept;
    const CJOBXPropertyArray* FindProperties() const noexcept;
    Extras& MakeExtras();

    // 0, or the address of the property list that the record borrows from its file, or, with the lowest bit set, the
    // address of the record's own extras.
    std::uintptr_t m_nLink = 0;
    int m_nSymbol = -1;
    int m_nIndex = 0;
    int m_nDcode = 0;
    char m_cPolarity = 'P';
    char m_cType = kEmptyText;
    bool m_bIsAmongPlain = false; // among records that own nothing
};

// A straight line drawn with a symbol.
class JOBX_API CJOBXlayObjLine : public CJOBXlayObj
{
public:
    CJOBXlayObjLine() = default;
    ~CJOBXlayObjLine() override;

    CPointD GetEndPoint() const { return m_ptEnd; }
    void SetEndPoint(const CPointD& point) { m_ptEnd = point; }
    CPointD GetStartPoint() const { return m_ptStart; }
    void SetStartPoint(const CPointD& point) { m_ptStart = point; }
    // A name for hosts, initially "".
    CString GetPadName() const { return PadName(); }
    void SetPadName(const CString& name) { KeepPadName(name); }
    // Multiplies the lengths of this kind by `factor`, like vRescale.
    void ScaleGeometry(double factor);

private:
    Place m_ptEnd;
    Place m_ptStart;
};

// A symbol placed at a point.
class JOBX_API CJOBXlayObjPad : public CJOBXlayObj
{
public:
    CJOBXlayObjPad() = default;
    ~CJOBXlayObjPad() override;
    int CheckObjAtCenterPoint(double& x, double& y) override;

    // A name for hosts, initially "".
    CString GetPadName() const { return PadName(); }
    void SetPadName(const CString& name) { KeepPadName(name); }
    // 0 to 7: quarter turns, mirrored from 4 on; 8 rotated by the angle; 9 rotated by the angle and mirrored.
    int GetOrientation() const { return m_nOrientation; }
    void SetOrientation(int orientation) { m_nOrientation = orientation; }
    double GetResizeFactor() const { return m_dResizeFactor; }
    void SetResizeFactor(double factor) { m_dResizeFactor = factor; }
    // 1 if the file has the resized form, else 0.
    int GetResizeFlag() const { return m_nResizeFlag; }
    void SetResizeFlag(int flag) { m_nResizeFlag = flag; }
    double GetRotationAngle() const { return m_dAngle; }
    void SetRotationAngle(double angle) { m_dAngle = angle; }
    CPointD GetCenterPoint() const { return m_ptCenter; }
    void SetCenterPoint(const CPointD& point) { m_ptCenter = point; }
    // Multiplies the lengths of this kind by `factor`, like vRescale.
    void ScaleGeometry(double factor);

private:
    int m_nOrientation = 0;
    int m_nResizeFlag = 0;
    double m_dResizeFactor = 0.0;
    double m_dAngle = 0.0;
    Place m_ptCenter;
};

// An arc drawn with a symbol; a full circle if start and end are equal.
class JOBX_API CJOBXlayObjArc : public CJOBXlayObj
{
public:
    CJOBXlayObjArc() = default;
    ~CJOBXlayObjArc() override;

    // "Y" clockwise, "N" counter-clockwise, as read.
    CString GetClockwise() const { return IsCharacter(m_cClockwise) ? CString(m_cClockwise) : LongClockwise(); }
    void SetClockwise(const CString& clockwise);
    CPointD GetCenterPoint() const { return m_ptCenter; }
    void SetCenterPoint(const CPointD& point) { m_ptCenter = point; }
    CPointD GetEndPoint() const { return m_ptEnd; }
    void SetEndPoint(const CPointD& point) { m_ptEnd = point; }
    CPointD GetStartPoint() const { return m_ptStart; }
    void SetStartPoint(const CPointD& point) { m_ptStart = point; }
    // A name for hosts, initially "".
    CString GetPadName() const { return PadName(); }
    void SetPadName(const CString& name) { KeepPadName(name); }
    // Multiplies the lengths of this kind by `factor`, like vRescale.
    void ScaleGeometry(double factor);

private:
    CString LongClockwise() const;

    char m_cClockwise = kEmptyText;
    Place m_ptCenter;
    Place m_ptEnd;
    Place m_ptStart;
};

// Text in a stroke font.
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
    // Multiplies the lengths of this kind by `factor`, like vRescale.
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

// A barcode. The texts are fields as in the file.
class JOBX_API CJOBXlayObjBarcode : public CJOBXlayObj
{
public:
    CJOBXlayObjBarcode();
    ~CJOBXlayObjBarcode() override;
    // Multiplies the lengths of this kind by `factor`, like vRescale.
    void ScaleGeometry(double factor);

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

    // Of the orientations with an angle. Only complete reading looks for it.
    double GetRotationAngle() const { return m_dAngle; }
    void SetRotationAngle(double angle) { m_dAngle = angle; }

private:
    double m_dAngle = 0.0;
};

// One contour of a surface.
// Ownership: a copy shares the elements with its source, so changing one changes both; this is intended. The elements
//            live as long as the last contour that shares them.
class JOBX_API CJOBXlayObjSurfaceOB : public CRaisingNew
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
    // Multiplies the lengths of this kind by `factor`, like vRescale.
    void ScaleGeometry(double factor);

private:
    CJOBXlayObjSurfaceOBArray m_arrContours;
};

extern template class JOBX_API CExPtrArray<CJOBXlayObj*, CJOBXlayObj*>;

// The features of one file, in file order; owns them. The position of a surface is where its body ends.
class JOBX_API CJOBXlayObjArray : public COwningPtrArray<CJOBXlayObj>
{
public:
    CJOBXlayObjArray();
    ~CJOBXlayObjArray() override;

    // The index of the first record whose CheckObjAtCenterPoint returns 1, -1 if there is none. The search always
    // starts at 0 and ignores the third argument; this is intended.
    int GetObjAtIndexCenterPoint(double x, double y, int start) const;
    // Multiply the lengths of every feature.
    void UnitConvert(const double& factor);
    void vRescale(double factor);
};
