#pragma once

#include "foundation/CJOBXfoldered.h"
#include "foundation/CJOBXunit.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"
#include "netlist/CJOBXnet.h"
#include "netlist/CJOBXnetPt.h"

// The CAD netlist of a step.
// Units:     lengths in the unit of its file.
// Ownership: owned by its step; owns its nets and points; not copyable.
// Results:   a malformed number reads as 0 and is kept; exhausted memory raises CMemoryException and keeps the nets and
//            all points read before the last run of points of one net.
class JOBX_API CJOBXnetlist : public CRaisingNew, public CJOBXmeasured, public CJOBXfoldered
{
public:
    CJOBXnetlist();
    CJOBXnetlist(const CJOBXnetlist&) = delete;
    CJOBXnetlist& operator=(const CJOBXnetlist&) = delete;
    virtual ~CJOBXnetlist();

    // Reads the netlist file at `path` and appends its nets. Returns 1, or 0 if it cannot be opened. A point goes to
    // the first net of its number, which may come from an earlier read. Points of unknown nets are dropped.
    int ParseODBOfMFC(CString path);
    // Makes the directory "netlists" in the step's directory `stepDir` and writes "cadnet/netlist" into it. An existing
    // directory is first deleted with everything in it.
    void WriteODBData(CString stepDir) const;
    // Converts m_arrPts and the points of every net.
    void UnitConvert(const double& factor);

    CJOBXnetPtArray m_arrPts; // points without a net; classic reading leaves it empty
    CJOBXnetArray m_arrNets;

    // The name of its folder, such as "cadnet" or "refnet". Filled by complete reading only.
    const CString& GetName() const { return m_sName; }
    void SetName(const CString& name) { m_sName = name; }
    // The values of the H line, as in the file: "y" or "n". Filled by complete reading only.
    const CString& GetOptimize() const { return m_sOptimize; }
    void SetOptimize(const CString& value) { m_sOptimize = value; }
    const CString& GetStaggered() const { return m_sStaggered; }
    void SetStaggered(const CString& value) { m_sStaggered = value; }

private:
    CString m_sName;
    CString m_sOptimize;
    CString m_sStaggered;
};

extern template class JOBX_API CExPtrArray<CJOBXnetlist*, CJOBXnetlist*>;

// Several netlists of a step; owns them.
class JOBX_API CJOBXnetlistArray : public COwningPtrArray<CJOBXnetlist>
{
public:
    CJOBXnetlistArray();
    ~CJOBXnetlistArray() override;
    // Converts every netlist.
    void UnitConvert(const double& factor);
};
