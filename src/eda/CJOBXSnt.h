#pragma once

#include "eda/CJOBXdataNetObj.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/corekit/CPointD.h"

// A subnet: one connected piece of a net, such as a pin's copper, a trace, a via or a plane.
// Units:     the plane fill size in the unit of the file; a unit change does not change it; this is intended.
// Ownership: owned by its array, owns its net objects; not copyable, but pGetSameODBSnt makes a copy.
class JOBX_API CJOBXSnt : public CJOBXrecord, public CJOBXtailed
{
public:
    CJOBXSnt() = default;
    CJOBXSnt(const CJOBXSnt&) = delete;
    CJOBXSnt& operator=(const CJOBXSnt&) = delete;
    virtual ~CJOBXSnt();

    // A copy with every text, number and point; net objects are copied by pGetSameODBdataNetObj. The caller owns it.
    CJOBXSnt* pGetSameODBSnt() const;
    // Writes the subnet's line and those of its net objects. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;

    int m_nFlag = 0;       // for the host; never set here
    int m_nLineNumber = 0; // in the source file, counted from 1
    CJOBXdataNetObjArray m_arrNetObjs;
    double m_dFillSize = 0.0; // of a plane
    CString m_sCutoutType;    // of a plane
    CString m_sFillType;      // of a plane
    int m_nToeprintNumber = -1;
    int m_nComponentNumber = -1;
    CString m_sSide;      // of a pin: "T" or "B"
    CString m_sKind;      // "TOP" for a pin, "TRC", "VIA", "PLN", or any other text of the file
    CPointD m_ptPosition; // for the host; never set here
    CString m_sText;      // for the host; never set here
};

extern template class JOBX_API CExPtrArray<CJOBXSnt*, CJOBXSnt*>;

// The subnets of a net in file order; owns them.
// Results:   lookups are case-sensitive and return the first match.
class JOBX_API CJOBXSntArray : public COwningPtrArray<CJOBXSnt>
{
public:
    CJOBXSntArray() = default;
    ~CJOBXSntArray() override;

    // The first subnet with these four values, null if there is none.
    CJOBXSnt* pGetODBSntWithProperty(const CString& kind, const CString& side, int component, int toeprint) const;
    // 1 if a subnet before the index `index` has the kind, side, component and toeprint of `snt`; else 0, also for an
    // index below 1 and for null.
    int bCheckSameTopBeforeIndex(int index, const CJOBXSnt* snt) const;
    // Writes the lines of every subnet. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;
};
