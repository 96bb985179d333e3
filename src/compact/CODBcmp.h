#pragma once

#include "compact/CODBcmpToe.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/corekit/CLProperty.h"
#include "foundation/framework/CRaisingNew.h"

// One placed component of the compact model: its package, place, names, properties, attributes and toeprints.
// Units:     lengths in the unit of the components part; the rotation in degrees.
// Ownership: owned by its array, owns its toeprints, properties and attributes; copies are deep.
class JOBX_API CODBcmp : public CRaisingNew
{
public:
    CODBcmp() = default;
    CODBcmp(const CODBcmp&) = default;
    CODBcmp& operator=(const CODBcmp&) = default;
    virtual ~CODBcmp();
    virtual CODBcmp* clone() const; // the caller owns the copy

    // Multiplies its location and those of its toeprints by `factor`.
    void vRescale(double factor);

    int m_nNumber = -1;
    int m_nSide = -1; // 0 for a bottom component
    CODBcmpToeArray m_arrToes;
    CString m_sPartName;
    CString m_sName;   // the reference designator
    int m_nMirror = 0; // 1 if mirrored
    double m_dRotation = 0.0;
    CPointD m_ptLocation;
    int m_nPkgRef = -1; // index into the EDA data's packages
    CLPropertyArray m_arrProperties;
    CJOBXPropertyArray m_arrAttributes;
};

extern template class JOBX_API CExPtrArray<CODBcmp*, CODBcmp*>;

// The components of a job; owns them.
class JOBX_API CODBcmpArray : public CRescalableArray<CODBcmp>
{
public:
    CODBcmpArray* clone() const override; // the caller owns the copy
};
