// How the readers fill the lists of their records.
#pragma once

#include "foundation/CExPtrArray.h"

#include <algorithm>
#include <memory>
#include <vector>

// Collects the records that one list after the other is to get and hands each list its records at once, so that the
// list's block is made once and exactly as long as needed.
// Ownership: owns the records until they are handed over; borrows the list. The list must outlive the filling.
template <class T>
class CListFiller
{
public:
    CListFiller() = default;
    CListFiller(const CListFiller&) = delete;
    CListFiller& operator=(const CListFiller&) = delete;
    ~CListFiller()
    {
        for (T* const record : m_records)
            delete record;
    }

    // From now on records are for `list`; those collected so far go to theirs.
    void Begin(COwningPtrArray<T>& list)
    {
        Finish();
        m_list = &list;
    }
    bool IsFor(const COwningPtrArray<T>& list) const { return m_list == &list; }
    // Takes the record over and returns it.
    T* Own(std::unique_ptr<T> record)
    {
        m_records.push_back(record.get());
        return record.release();
    }
    // Hands over what was collected.
    void Finish()
    {
        if (m_records.empty())
            return;
        const __int64 first = m_list->GetSize();
        m_list->SetSize(first + static_cast<__int64>(m_records.size()));
        std::copy(m_records.begin(), m_records.end(), m_list->GetData() + first);
        m_records.clear();
    }

private:
    COwningPtrArray<T>* m_list = nullptr; // null only while nothing was collected
    std::vector<T*> m_records;
};
