#pragma once

#include "compact/CODBstepRepeat.h"
#include "foundation/framework/CRaisingNew.h"

// The header of a step in the compact model: datum, origin, step-and-repeat table, and settings kept as text. It has no
// unit of its own. CODB::vChangeUnit does not change it; the host calls vRescale.
// Units:     lengths in the unit of its file.
// Ownership: owned by its array, owns its entries; copies are deep.
class JOBX_API CODBstephdr : public CRaisingNew
{
public:
    CODBstephdr() = default;
    CODBstephdr(const CODBstephdr&) = default;
    CODBstephdr& operator=(const CODBstephdr&) = default;
    virtual ~CODBstephdr();
    virtual CODBstephdr* clone() const; // the caller owns the copy

    // Multiplies datum, origin, and positions and pitches of the entries by `factor`.
    void vRescale(double factor);

    CPointD m_ptDatum;
    CPointD m_ptOrigin;
    CString m_sTopActive = "0";
    CString m_sBottomActive = "0";
    CString m_sRightActive = "0";
    CString m_sLeftActive = "0";
    CString m_sOnlineDrcName;
    CString m_sOnlineDrcMode = "DISABLED";
    CString m_sOnlineDrcStat = "GREEN";
    CString m_sOnlineDrcTime = "0";
    CString m_sOnlineDrcBeepVol = "0";
    CString m_sOnlineDrcBeepTone = "0";
    CString m_sOnlineNetMode = "DISABLED";
    CString m_sOnlineNetStat = "GREEN";
    CString m_sOnlineNetTime = "0";
    CString m_sOnlineNetBeepVol = "0";
    CString m_sOnlineNetBeepTone = "0";
    CString m_sAffectingBom;
    CString m_sAffectingBomChanged;
    CODBstepRepeatArray m_arrStepRepeats;
};

extern template class JOBX_API CExPtrArray<CODBstephdr*, CODBstephdr*>;

// A list of headers; owns them.
class JOBX_API CODBstephdrArray : public CRescalableArray<CODBstephdr>
{
public:
    CODBstephdrArray* clone() const override; // the caller owns the copy
};
