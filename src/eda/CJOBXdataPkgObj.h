#pragma once

#include "foundation/CJOBXtailed.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"

#include <cstdio>

// One outline record of a package or pin. The reader makes plain records, of this class itself, which keep keyword and
// parameters as text. The subclasses have geometry. A unit change converts plain records to subclasses where possible
// (see CJOBXdataPkgObjArray::vMakeGeometry).
// Units:     lengths of the subclasses in the unit of the file; parameter texts are never converted.
// Ownership: owned by its array; copies are deep. Copy with clone: assignment would slice a subclass.
class JOBX_API CJOBXdataPkgObj : public CJOBXrecord, public CJOBXtailed
{
public:
    CJOBXdataPkgObj() = default;
    CJOBXdataPkgObj(const CJOBXdataPkgObj&) = default;
    CJOBXdataPkgObj& operator=(const CJOBXdataPkgObj&) = default;
    virtual ~CJOBXdataPkgObj();
    virtual CJOBXdataPkgObj* clone() const; // a copy of the same class; the caller owns it

    // Whether line number, keyword and parameters are equal, case-sensitive. Comparing the line number is intended: the
    // same outline on two lines is two outlines. Geometry is not compared.
    bool operator==(const CJOBXdataPkgObj& other) const;

    // Multiplies the geometry by `factor`. Does nothing for a plain record, or if the keyword does not match the class.
    void UnitConvert(const double& factor);
    // Writes the subclass's form, or keyword and parameters of a plain record. Does nothing for a null file, or if the
    // keyword does not match the subclass.
    void WriteODBData(std::FILE* file) const;

    int m_nLineNumber = 0;        // in the source file, counted from 1
    CStringArray m_arrParameters; // as in the file
    CString m_sKeyword;           // "CR", "SQ", "RC", "CT", "OB", "OS", "OC", "OE", "CE", or any other text of the file
};

extern template class JOBX_API CExPtrArray<CJOBXdataPkgObj*, CJOBXdataPkgObj*>;

// The outline records of a package or pin in file order; owns them.
class JOBX_API CJOBXdataPkgObjArray : public COwningPtrArray<CJOBXdataPkgObj>
{
public:
    CJOBXdataPkgObjArray() = default;
    CJOBXdataPkgObjArray(const CJOBXdataPkgObjArray& other); // new records of the same classes; nulls are skipped
    CJOBXdataPkgObjArray& operator=(const CJOBXdataPkgObjArray& other);
    ~CJOBXdataPkgObjArray() override;
    virtual CJOBXdataPkgObjArray* clone() const; // the caller owns the copy

    // Compares at the positions of `other`, so an empty `other` equals anything; this is intended.
    bool operator==(const CJOBXdataPkgObjArray& other) const;

    // Converts plain records to the subclass with their geometry: "CR", "SQ" and "RC" whose parameters are exactly the
    // numbers of that shape, and a sequence from "CT" to "CE" of well-formed contour records into one contour. Line
    // number and parameters are kept, records that do not parse stay plain, null entries are removed. Exhausted memory
    // raises CMemoryException and leaves the list partly converted.
    void vMakeGeometry();
    // Calls vMakeGeometry, then UnitConvert of every record.
    void UnitConvert(const double& factor);
    // Writes every record. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;
};

// A round outline, keyword "CR".
class JOBX_API CJOBXdataPkgObjCircle : public CJOBXdataPkgObj
{
public:
    CJOBXdataPkgObjCircle();
    CJOBXdataPkgObjCircle(const CJOBXdataPkgObjCircle&) = default;
    CJOBXdataPkgObjCircle& operator=(const CJOBXdataPkgObjCircle&) = default;
    ~CJOBXdataPkgObjCircle() override;
    CJOBXdataPkgObjCircle* clone() const override;

    // Multiplies centre and radius by `factor`.
    void UnitConvert(const double& factor);
    // Set or return one of the lengths.
    void SetCenterPoint(double x, double y) { m_ptCenter.SetData(x, y); }
    void SetCenterPt(const CPointD& center) { m_ptCenter = center; }
    void SetRadius(double radius) { m_dRadius = radius; }
    CPointD GetCenterPt() const { return m_ptCenter; }
    double GetRadius() const { return m_dRadius; }

    CPointD m_ptCenter;
    double m_dRadius = 0.0;
};

// A square outline, keyword "SQ".
class JOBX_API CJOBXdataPkgObjSquare : public CJOBXdataPkgObj
{
public:
    CJOBXdataPkgObjSquare();
    CJOBXdataPkgObjSquare(const CJOBXdataPkgObjSquare&) = default;
    CJOBXdataPkgObjSquare& operator=(const CJOBXdataPkgObjSquare&) = default;
    ~CJOBXdataPkgObjSquare() override;
    CJOBXdataPkgObjSquare* clone() const override;

    // Multiplies centre and half side by `factor`.
    void UnitConvert(const double& factor);

    CPointD m_ptCenter;
    double m_dHalfSide = 0.0;
};

// A rectangular outline, keyword "RC".
class JOBX_API CJOBXdataPkgObjRectangle : public CJOBXdataPkgObj
{
public:
    CJOBXdataPkgObjRectangle();
    CJOBXdataPkgObjRectangle(const CJOBXdataPkgObjRectangle&) = default;
    CJOBXdataPkgObjRectangle& operator=(const CJOBXdataPkgObjRectangle&) = default;
    ~CJOBXdataPkgObjRectangle() override;
    CJOBXdataPkgObjRectangle* clone() const override;

    // Multiplies corner, width and height by `factor`.
    void UnitConvert(const double& factor);
    // Set or return one of the lengths.
    void SetLowerLeftPoint(double x, double y) { m_ptLowerLeft.SetData(x, y); }
    void SetLowerLeftPt(const CPointD& corner) { m_ptLowerLeft = corner; }
    void SetWidth(double width) { m_dWidth = width; }
    void SetHeight(double height) { m_dHeight = height; }
    CPointD GetLowerLeftPt() const { return m_ptLowerLeft; }
    double GetWidth() const { return m_dWidth; }
    double GetHeight() const { return m_dHeight; }

    double m_dWidth = 0.0;
    double m_dHeight = 0.0;
    CPointD m_ptLowerLeft;
};
