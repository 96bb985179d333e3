#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/CJOBXunit.h"
#include "foundation/JobxExport.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "step/CJOBXstepRepeat.h"

// The header of a step: datum, origin, step-and-repeat table, and settings that are carried as the texts they are.
// Units:     lengths in the unit of the file it came from.
// Ownership: owned by its step or array; owns its entries; not copyable.
// Results:   a malformed number reads as 0; exhausted memory raises CMemoryException, what was read before stays.
// Written and read back, a header has no step-and-repeat entries and its origin's y is its x: the writer prints
// "STEP-REPEAT{", the reader looks for "STEP-REPEAT {", and Y_ORIGIN is written from x. Hosts rely on both.
class JOBX_API CJOBXstephdr : public CRaisingNew, public CJOBXmeasured
{
public:
    CJOBXstephdr();
    CJOBXstephdr(const CJOBXstephdr&) = delete;
    CJOBXstephdr& operator=(const CJOBXstephdr&) = delete;
    virtual ~CJOBXstephdr();

    // Reads the header file at `path`; 1, or 0 when it cannot be opened. Entries are appended.
    int ParseODBOfMFC(CString path);
    // Writes the file "stephdr" in the directory `stepDir`; nothing, when it cannot be opened. The number written for
    // ONLINE_NET_BEEP_TONE is the integer that its text begins with; the two AFFECTING_BOM texts are not written.
    void WriteODBData(CString stepDir) const;
    // Multiplies datum, origin and the entries' positions and pitches by `factor`.
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

    // Writes each header into the directory `stepDir`, in order; a later one replaces an earlier one's file.
    void WriteODBData(CString stepDir) const;
    // Converts every header.
    void UnitConvert(const double& factor);
};
