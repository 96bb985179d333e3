#pragma once

#include "compact/CCopyableArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"

// One test point of a net of the compact model.
// Units:     lengths in the unit of the netlist.
// Ownership: owned by its array; copies are deep.
class JOBX_API CODBnetPt : public CRaisingNew
{
public:
    CODBnetPt() = default;
    CODBnetPt(const CODBnetPt&) = default;
    CODBnetPt& operator=(const CODBnetPt&) = default;
    virtual ~CODBnetPt();
    virtual CODBnetPt* clone() const; // the caller owns the copy

    // Multiplies every length by `factor` except the staggered radius; this is intended.
    void vRescale(double factor);

    CString m_sSide;          // top, bottom, both or inner
    CString m_sStaggeredMark; // "staggered" for a staggered point
    double m_dStaggeredRadius = 0.0;
    CString m_sExposure;
    CString m_sEndPoint;
    double m_dHeight = 0.0; // of a point that is not round
    double m_dWidth = 0.0;  // of a point that is not round
    CPointD m_ptPosition;
    CPointD m_ptStaggeredPosition;
    double m_dRadius = 0.0; // 0 for a point that is not round, which has width and height
    CStringArray m_arrFlags;
};

extern template class JOBX_API CExPtrArray<CODBnetPt*, CODBnetPt*>;

// The points of one net; owns them.
class JOBX_API CODBnetPtArray : public CRescalableArray<CODBnetPt>
{
public:
    CODBnetPtArray* clone() const override;

    // The first point at `point`, null if there is none. Uses the virtual comparison of `point`, so a class derived
    // from CPointD may compare with a tolerance. CPointD compares exactly.
    CODBnetPt* pGetODBnetPtWithPt(const CPointD& point) const;
};
