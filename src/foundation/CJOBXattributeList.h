#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXunit.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/JobxExport.h"

#include <memory>

// The attributes of a job, step, layer or user symbol as a whole: the file "attrlist" in its folder. Only complete
// reading fills it. The kind of an attribute comes from its definition. The value of a flag is a text here, "yes" or
// "no", and that of an option its word.
// Units:     the file's; it applies to attributes that are lengths.
// Ownership: owns the attributes; not copyable.
class JOBX_API CJOBXattributeList : public CRaisingNew, public CJOBXmeasured
{
public:
    CJOBXattributeList();
    CJOBXattributeList(const CJOBXattributeList&) = delete;
    CJOBXattributeList& operator=(const CJOBXattributeList&) = delete;
    virtual ~CJOBXattributeList();

    // The attributes in the order of the file, borrowed.
    CJOBXPropertyArray* GetAttributes() { return &m_arrAttributes; }
    const CJOBXPropertyArray* GetAttributes() const { return &m_arrAttributes; }
    // The first attribute of that name, ignoring letter case; borrowed, null if there is none.
    const CJOBXProperty* pGetAttribute(const CString& name) const;

private:
    CJOBXPropertyArray m_arrAttributes;
};

// An object whose folder may hold a file "attrlist".
// Ownership: owns the list; not copyable.
// Memory:    one pointer.
class JOBX_API CJOBXattributed
{
public:
    CJOBXattributed(const CJOBXattributed&) = delete;
    CJOBXattributed& operator=(const CJOBXattributed&) = delete;

    // Borrowed; null if there was no such file, and after classic reading.
    const CJOBXattributeList* pGetAttributeList() const noexcept { return m_pAttributeList.get(); }
    // The list for changes, borrowed; made if there is none.
    CJOBXattributeList* pMakeAttributeList();
    // Deletes the list, if there is one.
    void RemoveAttributeList() noexcept;

protected:
    CJOBXattributed();
    ~CJOBXattributed();

private:
    std::unique_ptr<CJOBXattributeList> m_pAttributeList;
};
