#pragma once

#include "foundation/JobxExport.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"

#include <memory>
#include <string_view>

// A list of words that is a CStringArray for whoever uses it as one. Until then, or when the reader has just made it,
// it is one text with the words side by side: records with such lists come in great numbers, and few are looked into.
// Ownership: a plain value; copies are deep.
// Results:   as CStringArray; exhausted memory raises CMemoryException.
// Threads:   different lists may be used at once; sharing one needs the caller's lock, also for looking into it.
class JOBX_API CWordList
{
public:
    CWordList() noexcept;
    CWordList(const CWordList& other);
    CWordList& operator=(const CWordList& other);
    // Takes copies of these words.
    CWordList& operator=(const CStringArray& words);
    ~CWordList();

    // The words as an array, which is this list's from now on.
    operator CStringArray&() { return Array(); }
    operator const CStringArray&() const { return Array(); }
    CString& operator[](INT_PTR index) { return Array()[index]; }
    const CString& operator[](INT_PTR index) const { return Array()[index]; }
    INT_PTR Add(const CString& word) { return Array().Add(word); }
    void RemoveAll();

    // How many words there are; none of these makes the array.
    INT_PTR GetSize() const;
    INT_PTR GetCount() const { return GetSize(); }
    BOOL IsEmpty() const { return GetSize() == 0 ? TRUE : FALSE; }
    // The word at `index`; a bad index raises CInvalidArgException.
    CString GetAt(INT_PTR index) const;

    // Same size and words equal one by one, case-sensitive.
    bool operator==(const CWordList& other) const;

    // Takes over words that are none of them empty and have exactly one blank between them.
    void SetJoined(const CString& words);
    // Calls `visit` with each word in order, as a view, until it answers false. False when it did.
    template <class Visit>
    bool ForEach(Visit visit) const
    {
        if (m_pArray != nullptr)
        {
            for (INT_PTR i = 0; i < m_pArray->GetSize(); ++i)
                if (!visit(m_pArray->GetAt(i).View()))
                    return false;
            return true;
        }
        for (std::string_view rest = m_sJoined.View(); !rest.empty();)
        {
            const std::string_view word = rest.substr(0, rest.find(' '));
            if (!visit(word))
                return false;
            rest.remove_prefix(word.size() < rest.size() ? word.size() + 1 : rest.size());
        }
        return true;
    }

private:
    CStringArray& Array() const;

    mutable CString m_sJoined;                      // empty once there is an array
    mutable std::unique_ptr<CStringArray> m_pArray; // null until asked for
};
