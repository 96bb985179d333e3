#pragma once

#include "compact/CODBlayObj.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CRaisingNew.h"

// One layer of the compact model: its features and the tables of its features file. Each table is a pair of parallel
// arrays, numbers and texts.
// Units:     lengths in the unit named by the units text; a unit change multiplies them but keeps the text.
// Ownership: owned by its array, owns its features; copies are deep.
class JOBX_API CODBlayer : public CRaisingNew
{
public:
    CODBlayer() = default;
    CODBlayer(const CODBlayer&) = default;
    CODBlayer& operator=(const CODBlayer&) = default;
    virtual ~CODBlayer();
    virtual CODBlayer* clone() const; // the caller owns the copy

    // Multiplies the lengths of every feature by m_dRescaleFactor.
    void vRescale();

    CString m_sName;
    double m_dRescaleFactor = 1.0; // last computed
    CString m_sUnits = "INCH";     // or "MM" or "MIL"
    CODBlayObjArray m_arrFeatures;
    CStringArray m_arrAttributeTexts;
    CArrayN m_arrAttributeTextNumbers;
    CStringArray m_arrAttributeNames;
    CArrayN m_arrAttributeNameNumbers;
    CStringArray m_arrSymbolNames;
    CArrayN m_arrSymbolNumbers;
    CStringArray m_arrSymbolSecondFields;
    double m_dCopperWeightOrDielectric = 0.0; // not a length
    __int64 m_nFirstLineNo = 0;               // for the host, as are the two below
    __int64 m_nLastLineNo = 0;
    __int64 m_nFeatureLineNo = 0;
};

extern template class JOBX_API CExPtrArray<CODBlayer*, CODBlayer*>;

// The layers of a job; owns them.
class JOBX_API CODBlayerArray : public CCopyableArray<CODBlayer>
{
public:
    CODBlayerArray* clone() const override; // the caller owns the copy
};
