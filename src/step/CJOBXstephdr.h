#pragma once

#include "foundation/CJOBXidentified.h"
#include "foundation/CJOBXkeyed.h"
#include "foundation/CJOBXunit.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"
#include "step/CJOBXstepRepeat.h"

// The header of a step: datum, origin, step-and-repeat table, and settings kept as text.
// Units:     lengths in the unit of its file.
// Ownership: owned by its step or array; owns its entries; not copyable.
// Results:   a malformed number reads as 0; exhausted memory raises CMemoryException and keeps what was read before.
// A header that was written and read back has no step-and-repeat entries, and the y of its origin equals x. The writer
// prints "STEP-REPEAT{", the reader expects "STEP-REPEAT {", and Y_ORIGIN is written from x. Hosts rely on both.
class JOBX_API CJOBXstephdr : public CRaisingNew, public CJOBXmeasured, public CJOBXkeyed, public CJOBXidentified
{
public:
    CJOBXstephdr();
    CJOBXstephdr(const CJOBXstephdr&) = delete;
    CJOBXstephdr& operator=(const CJOBXstephdr&) = delete;
    virtual ~CJOBXstephdr();

    // Reads the header file at `path` and appends its entries. Returns 1, or 0 if it cannot be opened.
    int ParseODBOfMFC(CString path);
    // Writes the file "stephdr" in the directory `stepDir`; does nothing if it cannot be opened. ONLINE_NET_BEEP_TONE
    // is written as the integer at the start of its text. The two AFFECTING_BOM texts are not written.
    void WriteODBData(CString stepDir) const;
    // Multiplies datum, origin, and positions and pitches of the entries by `factor`.
    void UnitConvert(const double& factor);

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
    CJOBXstepRepeatArray m_arrStepRepeats;
};

extern template class JOBX_API CExPtrArray<CJOBXstephdr*, CJOBXstephdr*>;

// A list of headers; owns them.
class JOBX_API CJOBXstephdrArray : public COwningPtrArray<CJOBXstephdr>
{
public:
    CJOBXstephdrArray();
    ~CJOBXstephdrArray() override;

    // Writes each header into the directory `stepDir`, in order; each one replaces the file of the one before.
    void WriteODBData(CString stepDir) const;
    // Converts every header.
    void UnitConvert(const double& factor);
};
