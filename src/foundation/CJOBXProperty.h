#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/CPooledRecord.h"
#include "foundation/framework/CStringArray.h"

#include <cstdio>

class CECadClsLvl;

// What the value of an attribute is. Complete reading says it; classic reading leaves Unknown.
enum class JOBXattributeKind : unsigned char
{
    Unknown,
    Flag, // set by being there; it has no value
    Integer,
    Real,
    Text,
    Option // one of the texts of its definition
};

// An attribute or property of a feature, net, package or component: a name and a value, with the numbers under which
// both stand in their file's attribute tables.
// Ownership: a plain value; copies are deep.
class JOBX_API CJOBXProperty : public CPooledRecord
{
public:
    static constexpr int nVersion = 1; // the version that archives carry

    CJOBXProperty();
    CJOBXProperty(const CJOBXProperty& other); // every member
    virtual ~CJOBXProperty();
    // Stores version, name and value, or loads them; another version loads nothing. The numbers and further values are
    // not archived. A short archive raises the archive exception.
    virtual void Serialize(CArchive& archive);
    // A copy with every member; the caller owns it.
    virtual CJOBXProperty* clone() const;

    // Takes over name and value only, as an archive would carry them; the rest stays. Intended.
    CJOBXProperty& operator=(const CJOBXProperty& other);
    // 1 when name, value and both numbers are equal, else 0; the further values take no part.
    int operator==(const CJOBXProperty& other) const;
    int operator!=(const CJOBXProperty& other) const;

    // "name : value".
    CString GetReport_ForPickingProperty() const;
    // One line, indented by three blanks a level; a level of 0 or less is not indented. A null file writes nothing.
    void Write2AsciiFile(FILE* file, int level) const;
    // What the value is; the copy constructor takes it over, no comparison looks at it.
    JOBXattributeKind GetKind() const noexcept { return m_nKind; }
    void SetKind(JOBXattributeKind kind) noexcept { m_nKind = kind; }

    // Removes every double quote from this property's own name and value, then makes a record labelled "PROP" with the
    // name and the value as its items; the caller owns it.
    CECadClsLvl* pGetECadClsLvl();

    CString m_sName;
    int m_nNumber = -1; // of the name in the file's "@" table
    CString m_sValue;
    int m_nTextNumber = -1; // of the value in the file's "&" table

private:
    JOBXattributeKind m_nKind = JOBXattributeKind::Unknown; // here it takes no room

public:
    CStringArray m_arrFurtherValues; // value words after the first
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
    // Stores the list, or replaces it by the one loaded; an unknown version leaves it empty. A null entry is neither
    // counted nor stored, and stays in the list. The count in an archive is not believed: a short archive raises the
    // archive exception with the records loaded before it in the list.
    void Serialize(CArchive& archive) override;

    // 1 when the counts are equal and the elements are equal pairwise, else 0. A missing element equals only a missing
    // one.
    int operator==(const CJOBXPropertyArray& other) const;
    int operator!=(const CJOBXPropertyArray& other) const;
    // 1 when an element has the same name, value and numbers; 0 when none has or `property` is null.
    int ExistSameData(const CJOBXProperty* property) const;

    // The elements' reports, one a line ended by CR and LF, without the last line end.
    CString GetReport_ForPickingProperty() const;
    // An indented block of the elements; nothing when the list is empty or the file is null.
    void Write2AsciiFile(FILE* file, int level) const;
};
