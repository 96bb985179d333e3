// The attribute and symbol tables of a file: parallel arrays of numbers and texts. The first entry of a number counts.
#pragma once

#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"

#include <map>

// The text of the first entry with that number, by a linear search; "" if there is none.
inline CString FirstTextOfNumber(const CArrayN& numbers, const CStringArray& texts, int number)
{
    for (INT_PTR i = 0; i < numbers.GetSize() && i < texts.GetSize(); ++i)
        if (numbers[i] == number)
            return texts[i];
    return {};
}

// For readers, which search often while the table grows: visits each entry once. An ordered map, because no file can
// make it slow as it could a hash table.
class CNumberIndex
{
public:
    // Borrows both; entries may only be added.
    CNumberIndex(const CArrayN& numbers, const CStringArray& texts) : m_numbers(numbers), m_texts(texts) {}

    CString Text(int number)
    {
        const auto found = Find(number);
        return found != m_first.end() && found->second < m_texts.GetSize() ? m_texts[found->second] : CString();
    }
    bool Has(int number) { return Find(number) != m_first.end(); }

private:
    std::map<int, INT_PTR>::const_iterator Find(int number)
    {
        for (; m_known < m_numbers.GetSize(); ++m_known)
            m_first.try_emplace(m_numbers[m_known], m_known);
        return m_first.find(number);
    }

    const CArrayN& m_numbers;
    const CStringArray& m_texts;
    INT_PTR m_known = 0;
    std::map<int, INT_PTR> m_first;
};
