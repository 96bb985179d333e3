#pragma once

#include "eda/CJOBXdataNetObj.h"
#include "foundation/corekit/CPointD.h"

// A subnet: one connected piece of a net, such as a pin's copper, a trace, a via or a plane.
// Units:     the plane fill size in the unit of the file; a unit change leaves it alone, which is intended.
// Ownership: owned by its array, owns its net objects; not copyable, pGetSameODBSnt makes a copy.
class JOBX_API CJOBXSnt : public CPooledRecord
{
public:
    CJOBXSnt() = default;
    CJOBXSnt(const CJOBXSnt&) = delete;
    CJOBXSnt& operator=(const CJOBXSnt&) = delete;
    virtual ~CJOBXSnt();

    // A copy with every text, number and point, and the net objects as pGetSameODBdataNetObj copies them. The caller
    // owns it.
    CJOBXSnt* pGetSameODBSnt() const;
    // The subnet's line and those of its net objects. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;

    int m_nFlag = 0;       // nothing here sets it; for the host
    int m_nLineNumber = 0; // in the file it came from, counted from 1
    CJOBXdataNetObjArray m_arrNetObjs;
    double m_dFillSize = 0.0; // of a plane
    CString m_sCutoutType;    // of a plane
    CString m_sFillType;      // of a plane
    int m_nToeprintNumber = -1;
    int m_nComponentNumber = -1;
    CString m_sSide;      // of a pin: "T" or "B"
    CString m_sKind;      // "TOP" for a pin, "TRC", "VIA", "PLN", or whatever stood there
    CPointD m_ptPosition; // nothing here sets it; for the host
    CString m_sText;      // nothing here sets it; for the host
};

extern template class JOBX_API CExPtrArray<CJOBXSnt*, CJOBXSnt*>;

// The subnets of a net in file order; owns them.
// Results: lookups compare exactly, letter case included; the first match wins.
class JOBX_API CJOBXSntArray : public COwningPtrArray<CJOBXSnt>
{
public:
    CJOBXSntArray() = default;
    ~CJOBXSntArray() override;

    // The first subnet with these four; null when there is none.
    CJOBXSnt* pGetODBSntWithProperty(const CString& kind, const CString& side, int component, int toeprint) const;
    // 1 when a subnet before the position `index` has kind, side, component and toeprint of `snt`; else 0, also for an
    // index below 1 and for null.
    int bCheckSameTopBeforeIndex(int index, const CJOBXSnt* snt) const;
    // The lines of every subnet. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;
};
