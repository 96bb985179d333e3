#pragma once

#include "eda/CJOBXdataPkgObj.h"
#include "foundation/CJOBXsourced.h"
#include "foundation/CJOBXtailed.h"

// A pin of a package.
// Units:     lengths in the unit of the file. A unit change does not change the hole size; this is intended.
// Ownership: owned by its array, owns its outlines; copies are deep.
// Complete reading appends the properties of a pin (PRP records) to its attributes; they have no number.
class JOBX_API CJOBXdataPkgPin : public CJOBXrecord, public CJOBXtailed, public CJOBXsourced
{
public:
    CJOBXdataPkgPin() = default;
    CJOBXdataPkgPin(const CJOBXdataPkgPin&) = default;
    CJOBXdataPkgPin& operator=(const CJOBXdataPkgPin&) = default;
    virtual ~CJOBXdataPkgPin();
    virtual CJOBXdataPkgPin* clone() const; // the caller owns the copy

    // Whether every member is equal, numbers exactly. Outlines are compared at the positions of `other`'s.
    bool operator==(const CJOBXdataPkgPin& other) const;

    // Multiplies the outlines and the centre by `factor`.
    void UnitConvert(const double& factor);
    // Writes the pin's line and its outlines. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;

    int m_nFlag = 0; // for the host; never set here
    CJOBXdataPkgObjArray m_arrOutlines;
    double m_dHoleSize = 0.0; // of the finished hole
    CPointD m_ptCenter;
    CString m_sType;                 // "T" through hole, "B" blind, "S" surface, or any other text of the file
    CString m_sElectricalType = "U"; // "E" electrical, "M" mechanical, "U" undefined, or any other text of the file
    CString m_sMountType;            // including any words after it
    CString m_sName;
};

extern template class JOBX_API CExPtrArray<CJOBXdataPkgPin*, CJOBXdataPkgPin*>;

// The pins of a package in file order; owns them.
class JOBX_API CJOBXdataPkgPinArray : public COwningPtrArray<CJOBXdataPkgPin>
{
public:
    CJOBXdataPkgPinArray() = default;
    CJOBXdataPkgPinArray(const CJOBXdataPkgPinArray& other); // new pins; nulls are skipped
    CJOBXdataPkgPinArray& operator=(const CJOBXdataPkgPinArray& other);
    ~CJOBXdataPkgPinArray() override;
    virtual CJOBXdataPkgPinArray* clone() const; // the caller owns the copy

    // Compares at the positions of `other`, so an empty `other` equals anything; this is intended.
    bool operator==(const CJOBXdataPkgPinArray& other) const;

    // The centre of the first pin of exactly that name; (-1111, -1111) if there is none.
    CPointD GetPkgPinLocation(const CString& name) const;
    // Converts every pin.
    void UnitConvert(const double& factor);
    // Writes the lines of every pin. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;
};
