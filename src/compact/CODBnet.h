#pragma once

#include "compact/CODBnetPt.h"
#include "foundation/framework/CRaisingNew.h"

// A net of the compact model's netlist: its number, its name and its test points.
// Units:     lengths in the unit of the netlist.
// Ownership: owned by its array, owns its points; copies are deep.
class JOBX_API CODBnet : public CRaisingNew
{
public:
    CODBnet() = default;
    CODBnet(const CODBnet&) = default;
    CODBnet& operator=(const CODBnet&) = default;
    virtual ~CODBnet();
    virtual CODBnet* clone() const; // the caller owns the copy

    // Rescales every point.
    void vRescale(double factor);

    CODBnetPtArray m_arrPts;
    CString m_sName;
    int m_nNumber = -1;
};

extern template class JOBX_API CExPtrArray<CODBnet*, CODBnet*>;

// The nets of a netlist; owns them.
class JOBX_API CODBnetArray : public CRescalableArray<CODBnet>
{
public:
    CODBnetArray* clone() const override;

    // The first net of exactly that name, null if there is none.
    CODBnet* pGetODBnetWithName(const CString& name) const;

    CString m_sUnits = "INCH"; // or "MM" or "MIL"
};
