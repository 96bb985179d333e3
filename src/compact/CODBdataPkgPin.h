#pragma once

#include "compact/CODBdataPkgObj.h"
#include "foundation/framework/CRaisingNew.h"

// A pin of a package of the compact model.
// Units:     lengths in the unit of the EDA data. A unit change does not change the hole size; this is intended.
// Ownership: owned by its array, owns its outlines; copies are deep.
class JOBX_API CODBdataPkgPin : public CRaisingNew
{
public:
    CODBdataPkgPin() = default;
    CODBdataPkgPin(const CODBdataPkgPin&) = default;
    CODBdataPkgPin& operator=(const CODBdataPkgPin&) = default;
    virtual ~CODBdataPkgPin();
    virtual CODBdataPkgPin* clone() const; // the caller owns the copy

    // Multiplies the outlines and the centre by `factor`.
    void vRescale(double factor);

    int m_nFlag = 0; // for the host
    CODBdataPkgObjArray m_arrOutlines;
    double m_dHoleSize = 0.0; // of the finished hole
    CPointD m_ptCenter;
    CString m_sType;                 // "T" through hole, "B" blind, "S" surface
    CString m_sElectricalType = "U"; // "E" electrical, "M" mechanical, "U" undefined
    CString m_sMountType;
    CString m_sName;
};

extern template class JOBX_API CExPtrArray<CODBdataPkgPin*, CODBdataPkgPin*>;

// The pins of a package; owns them.
class JOBX_API CODBdataPkgPinArray : public CRescalableArray<CODBdataPkgPin>
{
public:
    CODBdataPkgPinArray* clone() const override; // the caller owns the copy
};
