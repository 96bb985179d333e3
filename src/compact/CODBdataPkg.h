#pragma once

#include "compact/CODBdataPkgPin.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/corekit/CLProperty.h"
#include "foundation/framework/CRaisingNew.h"

// A package of the compact model: a footprint shared by components, with outlines and pins.
// Units:     lengths in the unit of the EDA data.
// Ownership: owned by its array, owns its outlines, pins, properties and attributes; copies are deep.
class JOBX_API CODBdataPkg : public CRaisingNew
{
public:
    CODBdataPkg() = default;
    CODBdataPkg(const CODBdataPkg&) = default;
    CODBdataPkg& operator=(const CODBdataPkg&) = default;
    virtual ~CODBdataPkg();
    virtual CODBdataPkg* clone() const; // the caller owns the copy

    // Multiplies the outlines, the pins, the pitch and both corners of the bounding box by `factor`.
    void vRescale(double factor);

    int m_nNumber = -1;
    int m_nFlag = 0; // for the host
    CODBdataPkgObjArray m_arrOutlines;
    CODBdataPkgPinArray m_arrPins;
    double m_dPitch = 0.0;
    CPointD m_ptUpperRight; // of the bounding box
    CPointD m_ptLowerLeft;
    CString m_sName;
    CJOBXPropertyArray m_arrProperties;
    CLPropertyArray m_arrAttributes;
};

extern template class JOBX_API CExPtrArray<CODBdataPkg*, CODBdataPkg*>;

// The packages of the EDA data; owns them.
class JOBX_API CODBdataPkgArray : public CRescalableArray<CODBdataPkg>
{
public:
    CODBdataPkgArray* clone() const override; // the caller owns the copy
};
