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

// The compact model of a job: lighter than the one that CJOBX reads, and filled by the host. It brings the parts of a
// job to one unit and tells which CAD tool the job came from.
// Units:     each part's own, named by its units text: "INCH", "MM" or "MIL"; every other text counts as inch.
// Ownership: owns everything below it; copies are deep.
// Results:   lookups compare exactly, letter case included, the first match wins, null when there is none. Exhausted
//            memory raises CMemoryException; an assignment that fails leaves some members assigned.
class JOBX_API CODB : public CRaisingNew
{
public:
    CODB();
    CODB(const CODB& other);
    CODB& operator=(const CODB& other);
    virtual ~CODB();
    virtual CODB* clone() const; // the caller owns the copy

    // Each 1 or 0: no source is known; the source is "Expedition PCB" or contains "Xpedition"; the source is
    // "ZUKEN CR-8000 Design Force" or contains "CR-8000". Letter case counts.
    int IsSourceFromNoInformation() const;
    int IsSourceFromExpeditionPCB() const;
    int IsSourceFromCR8000DESIGNFORCE() const;

    // 0 for "MM", 2 for "MIL", 1 for every other text; letter case counts.
    static int nChgSUnit2Int(const CString& unit);
    // What turns a length of that unit into inch: 1/25.4 for "MM", 0.001 for "MIL", 1 for every other text; letter case
    // counts.
    static double GetRescaleFactor(const CString& unit);

    // Brings the layers, the single layer, the components and the EDA data to inch, whatever the argument says;
    // intended. Every part gets the factor of its units text and is rescaled by it; user symbols only get the factor.
    // Headers and the netlist stay. The units texts stay too, so a second call rescales again.
    void vChangeUnit(int unit);

    // The first layer of exactly that name; the single layer is not searched.
    CODBlayer* pGetODBlayerFromName(const CString& name) const;

    CString m_sSource; // the CAD tool that produced the job, set by the host; empty when unknown
    CODBSpecialSymbolArray m_arrSpecialSymbols;
    CODBlayerArray m_arrLayers;
    CCopyablePtr<CODBlayer> m_pSingleLayer;     // one layer beside the others; absent unless the host sets it
    CCopyablePtr<CODBcomponents> m_pComponents; // there from the beginning; the host may take it away
    CCopyablePtr<CODBdata> m_pData;             // likewise
    CODBnetlist m_netlist;
    CODBmatrix m_matrix;
    CODBstephdrArray m_arrStephdrs;
    CODBsysAttrDataArray m_arrSysAttrs;
};
