#pragma once

#include "compact/CCopyablePtr.h"
#include "compact/CODBSpecialSymbol.h"
#include "compact/CODBcomponents.h"
#include "compact/CODBdata.h"
#include "compact/CODBlayer.h"
#include "compact/CODBmatrix.h"
#include "compact/CODBnetlist.h"
#include "compact/CODBstephdr.h"
#include "compact/CODBsysAttrData.h"
#include "foundation/framework/CRaisingNew.h"

// The compact model of a job, filled by the host and lighter than CJOBX. It converts the parts of a job to one unit and
// knows which CAD tool the job came from.
// Units:     each part's own, named by its units text: "INCH", "MM" or "MIL"; any other text means inch.
// Ownership: owns everything below it; copies are deep.
// Results:   lookups are case-sensitive and return the first match, null if there is none. Exhausted memory raises
//            CMemoryException; a failed assignment may leave some members assigned.
class JOBX_API CODB : public CRaisingNew
{
public:
    CODB();
    CODB(const CODB& other);
    CODB& operator=(const CODB& other);
    virtual ~CODB();
    virtual CODB* clone() const; // the caller owns the copy

    // Each returns 1 or 0: the source is unknown; the source is "Expedition PCB" or contains "Xpedition"; the source is
    // "ZUKEN CR-8000 Design Force" or contains "CR-8000". Case-sensitive.
    int IsSourceFromNoInformation() const;
    int IsSourceFromExpeditionPCB() const;
    int IsSourceFromCR8000DESIGNFORCE() const;

    // 0 for "MM", 2 for "MIL", 1 for any other text; case-sensitive.
    static int nChgSUnit2Int(const CString& unit);
    // The factor that converts that unit to inch: 1/25.4 for "MM", 0.001 for "MIL", 1 for any other text;
    // case-sensitive.
    static double GetRescaleFactor(const CString& unit);

    // Converts the layers, the single layer, the components and the EDA data to inch. The argument is ignored; this is
    // intended. Each part stores the factor of its units text and is rescaled by it. User symbols only store the
    // factor. Headers and the netlist do not change. Neither do the units texts, so a second call rescales again.
    void vChangeUnit(int unit);

    // The first layer of exactly that name. The single layer is not searched.
    CODBlayer* pGetODBlayerFromName(const CString& name) const;

    CString m_sSource; // the CAD tool that produced the job, set by the host; empty when unknown
    CODBSpecialSymbolArray m_arrSpecialSymbols;
    CODBlayerArray m_arrLayers;
    CCopyablePtr<CODBlayer> m_pSingleLayer;     // one layer beside the others; absent unless the host sets it
    CCopyablePtr<CODBcomponents> m_pComponents; // created by the constructor; the host may reset it
    CCopyablePtr<CODBdata> m_pData;             // likewise
    CODBnetlist m_netlist;
    CODBmatrix m_matrix;
    CODBstephdrArray m_arrStephdrs;
    CODBsysAttrDataArray m_arrSysAttrs;
};
