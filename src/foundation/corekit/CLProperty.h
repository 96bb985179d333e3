#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/framework/CString.h"

// A name and a value: the plain attribute of packages and components.
// Ownership: a plain value; copies are deep.
class JOBX_API CLProperty : public CJOBXrecord
{
public:
    CLProperty() = default;
    // An attribute of that name and value.
    CLProperty(const CString& name, const CString& value) : m_sName(name), m_sValue(value) {}
    CLProperty(const CLProperty&) = default;
    CLProperty& operator=(const CLProperty&) = default;
    virtual ~CLProperty();
    virtual CLProperty* clone() const; // the caller owns the copy

    // Equal name and value, case-sensitive.
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
    CLPropertyArray(const CLPropertyArray& other); // new records; null entries are skipped
    CLPropertyArray& operator=(const CLPropertyArray& other);
    ~CLPropertyArray() override;
    virtual CLPropertyArray* clone() const; // the caller owns the copy

    // The same size and equal records at each index; null equals only null.
    bool operator==(const CLPropertyArray& other) const;
};
