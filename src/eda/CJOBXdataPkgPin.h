#pragma once

#include "eda/CJOBXdataPkgObj.h"

// A pin of a package.
// Units:     lengths in the unit of the file. A unit change leaves the finished hole size alone, which is intended.
// Ownership: owned by its array, owns its outlines; copies are deep.
class JOBX_API CJOBXdataPkgPin : public CPooledRecord
{
public:
    CJOBXdataPkgPin() = default;
    CJOBXdataPkgPin(const CJOBXdataPkgPin&) = default;
    CJOBXdataPkgPin& operator=(const CJOBXdataPkgPin&) = default;
    virtual ~CJOBXdataPkgPin();
    virtual CJOBXdataPkgPin* clone() const; // the caller owns the copy

    // Every member equal, numbers exactly; the outlines at the positions of `other`'s.
    bool operator==(const CJOBXdataPkgPin& other) const;

    // Multiplies the outlines and the centre by `factor`.
    void UnitConvert(const double& factor);
    // The pin's line and its outlines. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;

    int m_nFlag = 0; // nothing here sets it; for the host
    CJOBXdataPkgObjArray m_arrOutlines;
    double m_dHoleSize = 0.0; // of the finished hole
    CPointD m_ptCenter;
    CString m_sType;                 // "T" through hole, "B" blind, "S" surface, or whatever stood there
    CString m_sElectricalType = "U"; // "E" electrical, "M" mechanical, "U" undefined, or whatever stood there
    CString m_sMountType;            // with any words that followed it
    CString m_sName;
};

extern template class JOBX_API CExPtrArray<CJOBXdataPkgPin*, CJOBXdataPkgPin*>;

// The pins of a package in file order; owns them.
class JOBX_API CJOBXdataPkgPinArray : public COwningPtrArray<CJOBXdataPkgPin>
{
public:
    CJOBXdataPkgPinArray() = default;
    CJOBXdataPkgPinArray(const CJOBXdataPkgPinArray& other); // new pins; nulls are left out
    CJOBXdataPkgPinArray& operator=(const CJOBXdataPkgPinArray& other);
    ~CJOBXdataPkgPinArray() override;
    virtual CJOBXdataPkgPinArray* clone() const; // the caller owns the copy

    // Compares at the positions of `other`; an empty `other` equals anything, which is intended.
    bool operator==(const CJOBXdataPkgPinArray& other) const;

    // The centre of the first pin with exactly that name; (-1111, -1111) when there is none.
    CPointD GetPkgPinLocation(const CString& name) const;
    // Every pin's UnitConvert.
    void UnitConvert(const double& factor);
    // The lines of every pin. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;
};
