#pragma once

#include "eda/CJOBXdataPkgPin.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXsourced.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/corekit/CLProperty.h"

// A package: a footprint shared by components, with outlines and pins.
// Units:     lengths in the unit of the file.
// Ownership: owned by its array, owns its outlines, pins, properties and attributes; copies are deep.
class JOBX_API CJOBXdataPkg : public CJOBXrecord, public CJOBXtailed, public CJOBXsourced
{
public:
    CJOBXdataPkg() = default;
    CJOBXdataPkg(const CJOBXdataPkg&) = default;
    CJOBXdataPkg& operator=(const CJOBXdataPkg&) = default;
    virtual CJOBXdataPkg* clone() const; // the caller owns the copy
    virtual ~CJOBXdataPkg();

    // Whether every member is equal, numbers exactly. Outlines and pins are compared at the positions of `other`'s,
    // properties and attributes one by one.
    bool operator==(const CJOBXdataPkg& other) const;
    bool operator!=(const CJOBXdataPkg& other) const;

    // Multiplies the outlines, the pins, the pitch and both corners of the bounding box by `factor`.
    void UnitConvert(const double& factor);
    // Writes the package's line with the properties that have an attribute number, the outlines, the attributes as
    // property lines, and the pins. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;

    int m_nNumber = -1; // from the "# PKG" line above it; -1 if there is none
    int m_nFlag = 0;    // for the host; never set here
    CJOBXdataPkgObjArray m_arrOutlines;
    CJOBXdataPkgPinArray m_arrPins;
    double m_dPitch = 0.0;
    CPointD m_ptUpperRight; // of the bounding box
    CPointD m_ptLowerLeft;
    CString m_sName;
    CJOBXPropertyArray m_arrProperties; // the reader puts the property lines after a pin here
    CLPropertyArray m_arrAttributes;    // written as property lines; the reader leaves it empty
};

extern template class JOBX_API CExPtrArray<CJOBXdataPkg*, CJOBXdataPkg*>;

// The packages of a step in file order; owns them.
class JOBX_API CJOBXdataPkgArray : public COwningPtrArray<CJOBXdataPkg>
{
public:
    CJOBXdataPkgArray() = default;
    ~CJOBXdataPkgArray() override;

    // Converts every package.
    void UnitConvert(const double& factor);
    // Writes a comment with its index and its lines for every package. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;
};
