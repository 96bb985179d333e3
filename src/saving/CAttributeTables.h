// The attribute tables of a file as saving writes them, and the attributes that refer to them.
#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/corekit/CArrayN.h"
#include "reading/CAttributeTypes.h"
#include "saving/CRecordLines.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// A table of a file, numbers with texts. The entries that are there keep their numbers, and new texts get the numbers
// behind them.
// Ownership: borrows the entries.
class CSavedTable
{
public:
    CSavedTable(const CArrayN& numbers, const CStringArray& texts);

    bool Has(int number) const { return m_byNumber.contains(number); }
    bool Is(int number, std::string_view text) const;
    // No new entry gets this number.
    void Avoid(int number) { m_avoided.insert(number); }
    // The text gets an entry if it has none.
    void Need(std::string_view text);
    // Gives the needed texts their numbers, in the order in which they were needed.
    void NumberNew();
    // The number of a text that is in the table; -1 if it is not.
    int NumberOf(std::string_view text) const;
    // The lines "@0 text" for the mark "@", those of new entries last.
    void ListLines(std::string_view mark, CRecordLines& lines) const;

private:
    int NextNumber(int from) const;

    const CArrayN& m_numbers;
    const CStringArray& m_texts;
    std::map<int, std::string_view> m_byNumber; // the first entry of a number counts
    std::map<std::string, int, std::less<>> m_byText;
    std::set<int> m_avoided;
    std::vector<std::string> m_needed;
};

// The tables "@" and "&" of a file. Collect all lists of attributes first; then list the tables; then print the lists.
// A name or value that is not in its table is new, whatever number the attribute has.
// Ownership: borrows everything.
class CAttributeTables
{
public:
    // `Owner` has the tables as parallel lists of numbers and texts; `types` are the definitions of the job.
    template <class Owner>
    CAttributeTables(const Owner& owner, const CAttributeTypes& types)
        : CAttributeTables(owner.m_arrAttributeNameNumbers, owner.m_arrAttributeNames, owner.m_arrAttributeTextNumbers,
                           owner.m_arrAttributeTexts, types)
    {
    }
    CAttributeTables(const CArrayN& nameNumbers, const CStringArray& names, const CArrayN& textNumbers,
                     const CStringArray& texts, const CAttributeTypes& types)
        : m_names(nameNumbers, names), m_texts(textNumbers, texts), m_types(types)
    {
    }

    // Notes what the attributes need. `List` has GetSize and GetAt; null entries are skipped.
    template <class List>
    void Collect(const List& attributes)
    {
        for (__int64 i = 0; i < attributes.GetSize(); ++i)
            if (const CJOBXProperty* const attribute = attributes.GetAt(i))
                Collect(*attribute);
    }
    // The lines of both tables.
    void ListLines(CRecordLines& lines);
    // The attributes as a tail has them: "0=1,2".
    template <class List>
    std::string TextOf(const List& attributes) const
    {
        std::string text;
        for (__int64 i = 0; i < attributes.GetSize(); ++i)
            if (const CJOBXProperty* const attribute = attributes.GetAt(i))
                Append(*attribute, text);
        return text;
    }

private:
    enum class Form
    {
        Flag,  // no value
        Plain, // the value as it is
        Text   // the number of an entry
    };

    void Collect(const CJOBXProperty& attribute);
    void Append(const CJOBXProperty& attribute, std::string& text) const;
    JOBXattributeKind KindOf(const CJOBXProperty& attribute) const;
    Form FormOf(const CJOBXProperty& attribute) const;
    Form FormOfUnknown(const CJOBXProperty& attribute) const;
    int NameNumber(const CJOBXProperty& attribute) const;
    void AppendOption(const CJOBXProperty& attribute, std::string& text) const;

    CSavedTable m_names;
    CSavedTable m_texts;
    const CAttributeTypes& m_types;
};

// Prints the tail of a record behind its last field: ";0=1,2;ID=5". Nothing if there are neither attributes nor a number.
void GlueTail(std::string_view attributes, __int64 id, CRecordLines& lines);
