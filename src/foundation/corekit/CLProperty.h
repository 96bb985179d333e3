#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/CPooledRecord.h"
#include "foundation/framework/CString.h"

// A name and a value: the plain attribute of packages and components.
// Ownership: a plain value; copies are deep.
class JOBX_API CLProperty : public CPooledRecord
{
public:
    CLProperty() = default;
    // With that name and value.
    CLProperty(const CString& name, const CString& value) : m_sName(name), m_sValue(value) {}
    CLProperty(const CLProperty&) = default;
    CLProperty& operator=(const CLProperty&) = default;
    virtual ~CLProperty();
    virtual CLProperty* clone() const; // the caller owns the copy

    // Name and value equal, case-sensitive.
    bool operator==(const CLProperty& other) const { return m_sName == other.m_sName && m_sValue == other.m_sValue; }

    const CString& GetName() const { return m_sName; }
    void SetName(const CString& name) { m_sName = name; }
    const CString& GetValue() const { return m_sValue; }
    void SetValue(const CString& value) { m_sValue = value; }

    CString m_sName;
    CString m_sValue;
};

extern template class JOBX_API CExPtrArray<CLProperty*, CLProperty*>;

// A list of such attributes; owns them.
class JOBX_API CLPropertyArray : public COwningPtrArray<CLProperty>
{
public:
    CLPropertyArray() = default;
    CLPropertyArray(const CLPropertyArray& other); // new records; null entries are left out
    CLPropertyArray& operator=(const CLPropertyArray& other);
    ~CLPropertyArray() override;
    virtual CLPropertyArray* clone() const; // the caller owns the copy

    // Same size and records equal one by one; a missing record equals only a missing one.
    bool operator==(const CLPropertyArray& other) const;
};
