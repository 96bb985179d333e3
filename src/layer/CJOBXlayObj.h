#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "layer/CJOBXlayObjOX.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>

// One feature of a features file. What differs by kind is decided by the type text: "L" line, "P" pad, "A" arc, "T"
// text, "B" barcode, "S" surface; another text has no geometry of its own. A record whose class does not fit its type
// text keeps its geometry as it is.
// Units:     lengths in the unit of the file they came from, angles in degrees.
// Ownership: owned by its layer's array; not copyable.
class JOBX_API CJOBXlayObj
{
public:
    CJOBXlayObj() = default;
    CJOBXlayObj(const CJOBXlayObj&) = delete;
    CJOBXlayObj& operator=(const CJOBXlayObj&) = delete;
    virtual ~CJOBXlayObj();
    // Takes back the record's memory, wherever it lies.
    static void operator delete(CJOBXlayObj* record, std::destroying_delete_t) noexcept;
    // One that is made by itself lies where `new` puts everything.
    static void* operator new(std::size_t size) { return CRaisingNew::operator new(size); }
    static void* operator new(std::size_t size, const std::nothrow_t& tag) noexcept
    {
        return CRaisingNew::operator new(size, tag);
    }
    static void* operator new(std::size_t /*size*/, void* place) noexcept { return place; }
    static void operator delete(void* memory) noexcept { CRaisingNew::operator delete(memory); }
    static void operator delete(void* memory, const std::nothrow_t& tag) noexcept
    {
        CRaisingNew::operator delete(memory, tag);
    }
    static void operator delete(void* /*memory*/, void* /*place*/) noexcept {}
    // 1 when the feature's centre is exactly (x, y), no tolerance; only pads have one, all others answer 0.
    virtual int CheckObjAtCenterPoint(double& x, double& y);

    // The record letter.
    CString GetType() const { return IsCharacter(m_cType) ? CString(m_cType) : LongType(); }
    void SetType(const CString& type);
    // "P" positive (the default) or "N" negative, as read.
    CString GetPolarity() const { return IsCharacter(m_cPolarity) ? CString(m_cPolarity) : LongPolarity(); }
    void SetPolarity(const CString& polarity);
    int GetDcode() const { return m_nDcode; }
    void SetDcode(int dcode) { m_nDcode = dcode; }
    // The number of the symbol in the layer's symbol table; -1 when none.
    int GetSymbolNumber() const { return m_nSymbol; }
    void SetSymbolNumber(int symbol) { m_nSymbol = symbol; }
    // The position of the feature among the feature lines of its file, from 0.
    int GetFeatureIndex() const { return m_nIndex; }
    void SetFeatureIndex(int index) { m_nIndex = index; }
    // Set by hosts, searched by CJOBXlayer::nGetLayObjIndexFromSurfaceIndex; -1 when none.
    int GetSurfaceIndex() const;
    void SetSurfaceIndex(int index);
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

    // The pad name of lines, pads and arcs.
    CString PadName() const;
    void KeepPadName(const CString& name);

    struct Extras;
    // Texts are one character nearly always, which then stands for itself; these two stand for other texts.
    static constexpr char kEmptyText = '\0';
    static constexpr char kLongText = '\1'; // kept aside
    static constexpr bool IsCharacter(char text) noexcept { return text != kEmptyText && text != kLongText; }
    // The character for `text`; one that is longer is kept in that member of the extras.
    char ShortOrKept(const CString& text, CString Extras::*kept);
    // What the character stands for when it does not stand for itself.
    CString LongText(char text, CString Extras::*kept) const;

private:
    friend class CFeatureMaker;
    friend class CRecordStore;
    template <class T>
    friend void DeleteRecords(T* const* records, std::ptrdiff_t count) noexcept;
    template <class T>
    friend void DeleteRecord(T* record) noexcept;

    CString LongType() const;
    CString LongPolarity() const;

    Extras* FindExtras() const noexcept;
    const CJOBXPropertyArray* FindProperties() const noexcept;
    Extras& MakeExtras();
    void BorrowProperties(const CJOBXPropertyArray* list) noexcept;

    // 0, or the address of the list of properties that the record borrows from its file, or, with the lowest bit set,
    // the address of the record's own extras.
    std::uintptr_t m_nLink = 0;
    int m_nDcode = 0;
    int m_nSymbol = -1;
    int m_nIndex = 0;
    char m_cPolarity = 'P';
    char m_cType = kEmptyText;
    unsigned short m_nPlace = 0; // in the block of its file's records; 0 when made by itself
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
    // A name that hosts give, "" at first.
    CString GetPadName() const { return PadName(); }
    void SetPadName(const CString& name) { KeepPadName(name); }
    // Multiplies the lengths of this kind by `factor`, as vRescale does.
    void ScaleGeometry(double factor);

private:
    friend class CFeatureMaker;

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

    // A name that hosts give, "" at first.
    CString GetPadName() const { return PadName(); }
    void SetPadName(const CString& name) { KeepPadName(name); }
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
    friend class CFeatureMaker;

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
    // A name that hosts give, "" at first.
    CString GetPadName() const { return PadName(); }
    void SetPadName(const CString& name) { KeepPadName(name); }
    // Multiplies the lengths of this kind by `factor`, as vRescale does.
    void ScaleGeometry(double factor);

private:
    friend class CFeatureMaker;

    CString LongClockwise() const;

    char m_cClockwise = kEmptyText;
    Place m_ptCenter;
    Place m_ptEnd;
    Place m_ptStart;
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
//            as long as the last contour that shares them.
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
    // Multiplies the lengths of this kind by `factor`, as vRescale does.
    void ScaleGeometry(double factor);

private:
    CJOBXlayObjSurfaceOBArray m_arrContours;
};

JOBX_API void DeleteElements(CJOBXlayObj* const* elements, __int64 count);
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
