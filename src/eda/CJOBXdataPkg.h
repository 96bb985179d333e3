#pragma once

#include "eda/CJOBXdataPkgPin.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/corekit/CLProperty.h"

// A package: the footprint that components share, with its outline and pins.
// Units:     lengths in the unit of the file.
// Ownership: owned by its array, owns its outlines, pins, properties and attributes; copies are deep.
class JOBX_API CJOBXdataPkg : public CPooledRecord
{
public:
    CJOBXdataPkg() = default;
    CJOBXdataPkg(const CJOBXdataPkg&) = default;
    CJOBXdataPkg& operator=(const CJOBXdataPkg&) = default;
    virtual CJOBXdataPkg* clone() const; // the caller owns the copy
    virtual ~CJOBXdataPkg();

    // Every member equal, numbers exactly; outlines and pins at the positions of `other`'s, properties and attributes
    // one by one.
    bool operator==(const CJOBXdataPkg& other) const;
    bool operator!=(const CJOBXdataPkg& other) const;

    // Multiplies the outlines, the pins, the pitch and both corners by `factor`.
    void UnitConvert(const double& factor);
    // The package's line with the properties that have an attribute number, the outlines, the attributes as property
    // lines and the pins. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;

    int m_nNumber = -1; // from the "# PKG" line before it; -1 for a package without one
    int m_nFlag = 0;    // nothing here sets it; for the host
    CJOBXdataPkgObjArray m_arrOutlines;
    CJOBXdataPkgPinArray m_arrPins;
    double m_dPitch = 0.0;
    CPointD m_ptUpperRight; // of the bounding box
    CPointD m_ptLowerLeft;
    CString m_sName;
    CJOBXPropertyArray m_arrProperties; // the reader stores here the property lines behind a pin
    CLPropertyArray m_arrAttributes;    // written as property lines; the reader fills none
};

extern template class JOBX_API CExPtrArray<CJOBXdataPkg*, CJOBXdataPkg*>;

// The packages of a step in file order; owns them.
class JOBX_API CJOBXdataPkgArray : public COwningPtrArray<CJOBXdataPkg>
{
public:
    CJOBXdataPkgArray() = default;
    ~CJOBXdataPkgArray() override;

    // Every package's UnitConvert.
    void UnitConvert(const double& factor);
    // For every package a comment with its position, then its lines. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;
};
