#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"

// The definition of one system attribute: its name and the option texts that it may take. Not copyable.
class JOBX_API CJOBXsysAttrData : public CRaisingNew
{
public:
    CJOBXsysAttrData();
    CJOBXsysAttrData(const CJOBXsysAttrData&) = delete;
    CJOBXsysAttrData& operator=(const CJOBXsysAttrData&) = delete;
    virtual ~CJOBXsysAttrData();

    // The option at `index`; "" when there are no options or the index lies past them, CInvalidArgException when it is
    // below 0.
    CString sGetOptionsFromIndexID(int index) const;

    CStringArray m_arrOptions; // in file order
    CString m_sName;
};

extern template class JOBX_API CExPtrArray<CJOBXsysAttrData*, CJOBXsysAttrData*>;

// The system-attribute definitions of a job in file order; owns them. Null entries are passed over.
class JOBX_API CJOBXsysAttrDataArray : public COwningPtrArray<CJOBXsysAttrData>
{
public:
    CJOBXsysAttrDataArray();
    ~CJOBXsysAttrDataArray() override;

    // Appends the definitions of this file: 1, or 0 when it cannot be read. A name or options line without a value
    // raises CInvalidArgException, exhausted memory CMemoryException; the definitions closed before stay.
    int ParseODBOfMFC(const CString& filePath);

    // The first definition of exactly that name, null when there is none. The array keeps it.
    CJOBXsysAttrData* pGetODBsysAttrDataFromName(const CString& name) const;
    // The option at `index` of the first definition of exactly that name, as sGetOptionsFromIndexID gives it. When no
    // definition has the name the last one answers: intended, hosts rely on it. "" for an empty array.
    CString sGetOptionsFromOptionNameAndIndexID(const CString& name, int index) const;
};
