#pragma once

#include "compact/CODBdataNetObj.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"

// A subnet of the compact model: one connected piece of a net.
// Units:     the plane fill size in the unit of the EDA data; a unit change does not change subnets; this is intended.
// Ownership: owned by its array, owns its net objects; copies are deep.
class JOBX_API CODBSnt : public CRaisingNew
{
public:
    CODBSnt() = default;
    CODBSnt(const CODBSnt&) = default;
    CODBSnt& operator=(const CODBSnt&) = default;
    virtual ~CODBSnt();
    virtual CODBSnt* clone() const; // the caller owns the copy

    int m_nFlag = 0;       // for the host
    int m_nLineNumber = 0; // in the source file, counted from 1
    CODBdataNetObjArray m_arrNetObjs;
    double m_dFillSize = 0.0; // of a plane
    CString m_sCutoutType;    // of a plane
    CString m_sFillType;      // of a plane
    int m_nToeprintNumber = -1;
    int m_nComponentNumber = -1;
    CString m_sSide;      // of a pin: "T" or "B"
    CString m_sKind;      // "TOP" for a pin, "TRC", "VIA", "PLN"
    CPointD m_ptPosition; // for the host
    CString m_sText;      // for the host
};

extern template class JOBX_API CExPtrArray<CODBSnt*, CODBSnt*>;

// The subnets of a net; owns them.
class JOBX_API CODBSntArray : public CCopyableArray<CODBSnt>
{
public:
    CODBSntArray* clone() const override; // the caller owns the copy
};
