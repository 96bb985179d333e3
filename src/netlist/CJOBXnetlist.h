#pragma once

#include "foundation/CJOBXunit.h"
#include "foundation/JobxExport.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "netlist/CJOBXnet.h"
#include "netlist/CJOBXnetPt.h"

// The CAD netlist of a step.
// Units:     lengths in the unit of the file it came from.
// Ownership: owned by its step; owns its nets and points; not copyable.
// Results:   a malformed number reads as 0 and is kept; exhausted memory raises CMemoryException, the nets and what was
//            read before the last run of points of one net stay.
class JOBX_API CJOBXnetlist : public CRaisingNew, public CJOBXmeasured
{
public:
    CJOBXnetlist();
    CJOBXnetlist(const CJOBXnetlist&) = delete;
    CJOBXnetlist& operator=(const CJOBXnetlist&) = delete;
    virtual ~CJOBXnetlist();

    // Reads the netlist file at `path` and appends its nets; 1, or 0 when it cannot be opened. Points go to the first
    // net of their number, those of an earlier read included; points of no net are dropped.
    int ParseODBOfMFC(CString path);
    // Makes the directory "netlists" of the step's directory `stepDir` afresh, with everything that was in it gone, and
    // writes "cadnet/netlist" into it.
    void WriteODBData(CString stepDir) const;
    // Converts the points of this object and those of every net.
    void UnitConvert(const double& factor);

    CJOBXnetPtArray m_arrPts; // points of no net; reading leaves it empty
    CJOBXnetArray m_arrNets;
};
