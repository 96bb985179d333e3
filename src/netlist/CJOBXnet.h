#pragma once

#include "foundation/CJOBXsourced.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"
#include "netlist/CJOBXnetPt.h"

// A net of the netlist: its number, its name and its test points.
// Units:     lengths in the unit of its file.
// Ownership: owned by its array; owns its points; not copyable.
class JOBX_API CJOBXnet : public CJOBXrecord, public CJOBXtailed, public CJOBXsourced
{
public:
    CJOBXnet();
    CJOBXnet(const CJOBXnet&) = delete;
    CJOBXnet& operator=(const CJOBXnet&) = delete;
    virtual ~CJOBXnet();

    // Converts every point.
    void UnitConvert(const double& factor);

    CJOBXnetPtArray m_arrPts;
    CString m_sName;
    int m_nNumber = -1;
};

extern template class JOBX_API CExPtrArray<CJOBXnet*, CJOBXnet*>;

// The nets of a netlist, in the order of their file; owns them.
class JOBX_API CJOBXnetArray : public COwningPtrArray<CJOBXnet>
{
public:
    CJOBXnetArray();
    ~CJOBXnetArray() override;

    // Writes the file "netlist" in the directory `dir`; does nothing if it cannot be opened.
    void WriteODBData(CString dir) const;
    // Converts every point of every net; the units text does not change.
    void UnitConvert(const double& factor);

    CString m_sUnits = "INCH"; // or "MM"; reading does not set it
};
