#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"

// The definition of one system attribute: its name and the texts of its options. Not copyable.
class JOBX_API CJOBXsysAttrData : public CRaisingNew
{
public:
    CJOBXsysAttrData();
    CJOBXsysAttrData(const CJOBXsysAttrData&) = delete;
    CJOBXsysAttrData& operator=(const CJOBXsysAttrData&) = delete;
    virtual ~CJOBXsysAttrData();

    // The option at `index`. "" if there are no options or the index is too large; a negative index raises
    // CInvalidArgException.
    CString sGetOptionsFromIndexID(int index) const;

    CStringArray m_arrOptions; // in file order
    CString m_sName;
};

extern template class JOBX_API CExPtrArray<CJOBXsysAttrData*, CJOBXsysAttrData*>;

// The system-attribute definitions of a job in file order; owns them. Null entries are skipped.
class JOBX_API CJOBXsysAttrDataArray : public COwningPtrArray<CJOBXsysAttrData>
{
public:
    CJOBXsysAttrDataArray();
    ~CJOBXsysAttrDataArray() override;

    // Appends the definitions of this file. Returns 1, or 0 if it cannot be read. A name or options line without a
    // value raises CInvalidArgException, exhausted memory CMemoryException; the definitions completed before are kept.
    int ParseODBOfMFC(const CString& filePath);

    // The first definition of exactly that name; borrowed, null if there is none.
    CJOBXsysAttrData* pGetODBsysAttrDataFromName(const CString& name) const;
    // The option at `index` of the first definition of exactly that name, as from sGetOptionsFromIndexID. If no
    // definition has the name, the last one is used: intended, hosts rely on it. "" for an empty array.
    CString sGetOptionsFromOptionNameAndIndexID(const CString& name, int index) const;
};
