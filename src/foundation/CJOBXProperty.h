#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/framework/CStringArray.h"

#include <cstdio>

class CECadClsLvl;

// The type of an attribute's value. Complete reading sets it; classic reading leaves Unknown.
enum class JOBXattributeKind : unsigned char
{
    Unknown,
    Flag, // set if present; it has no value
    Integer,
    Real,
    Text,
    Option // one of the texts of its definition
};

// An attribute or property of a feature, net, package or component: a name and a value, with their numbers in the
// attribute tables of the file.
// Ownership: a plain value; copies are deep.
class JOBX_API CJOBXProperty : public CJOBXrecord
{
public:
    static constexpr int nVersion = 1; // the version stored in archives

    CJOBXProperty();
    CJOBXProperty(const CJOBXProperty& other); // copies every member
    virtual ~CJOBXProperty();
    // Stores version, name and value, or loads them; loads nothing from any other version. Numbers and further values
    // are not archived. A short archive raises the archive exception.
    virtual void Serialize(CArchive& archive);
    // A copy with every member; the caller owns it.
    virtual CJOBXProperty* clone() const;

    // Copies only name and value, like an archive; the rest does not change. This is intended.
    CJOBXProperty& operator=(const CJOBXProperty& other);
    // 1 if name, value and both numbers are equal, else 0. Further values are not compared.
    int operator==(const CJOBXProperty& other) const;
    int operator!=(const CJOBXProperty& other) const;

    // "name : value".
    CString GetReport_ForPickingProperty() const;
    // Writes one line, indented by three blanks per level; not indented for a level of 0 or less. Does nothing for a
    // null file.
    void Write2AsciiFile(FILE* file, int level) const;
    // The type of the value. The copy constructor copies it, comparisons ignore it.
    JOBXattributeKind GetKind() const noexcept { return m_nKind; }
    void SetKind(JOBXattributeKind kind) noexcept { m_nKind = kind; }

    // Removes every double quote from its own name and value, then makes a record labelled "PROP" with name and value
    // as its items. The caller owns it.
    CECadClsLvl* pGetECadClsLvl();

    CString m_sName;
    int m_nNumber = -1; // of the name in the file's "@" table
    CString m_sValue;
    int m_nTextNumber = -1; // of the value in the file's "&" table

private:
    JOBXattributeKind m_nKind = JOBXattributeKind::Unknown; // takes no extra room here

public:
    CStringArray m_arrFurtherValues; // words of the value after the first
};

extern template class JOBX_API CExPtrArray<CJOBXProperty*, CJOBXProperty*>;

// The properties of one record; owns them.
class JOBX_API CJOBXPropertyArray : public COwningPtrArray<CJOBXProperty>
{
public:
    CJOBXPropertyArray();
    CJOBXPropertyArray(const CJOBXPropertyArray& other); // new records with every member
    CJOBXPropertyArray& operator=(const CJOBXPropertyArray& other);
    ~CJOBXPropertyArray() override;
    virtual CJOBXPropertyArray* clone() const; // the caller owns the copy
    // Stores the list, or replaces it by the loaded one; a list of an unknown version is loaded as empty. A null entry
    // is neither counted nor stored, and stays in the list. The count in an archive is not trusted: a short archive
    // raises the archive exception and keeps the records loaded before.
    void Serialize(CArchive& archive) override;

    // 1 if the counts and the elements at each index are equal, else 0. Null equals only null.
    int operator==(const CJOBXPropertyArray& other) const;
    int operator!=(const CJOBXPropertyArray& other) const;
    // 1 if an element has the same name, value and numbers; 0 if there is none or `property` is null.
    int ExistSameData(const CJOBXProperty* property) const;

    // The elements' reports, one per line, separated by CR and LF.
    CString GetReport_ForPickingProperty() const;
    // Writes an indented block of the elements. Does nothing if the list is empty or the file is null.
    void Write2AsciiFile(FILE* file, int level) const;
};
