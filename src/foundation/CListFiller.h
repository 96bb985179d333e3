// How the readers fill the lists of their records.
#pragma once

#include "foundation/CRecordPool.h"
#include "foundation/base/CExPtrArray.h"

#include <algorithm>
#include <memory>
#include <vector>

// Collects records for one list after another and moves them to each list at once, so that the list's block is
// allocated once with exactly the right size.
// Ownership: owns the records until it moves them; borrows the list, which must live until then.
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

    // Moves the collected records to their list; the next ones are for `list`.
    void Begin(COwningPtrArray<T>& list)
    {
        Finish();
        m_list = &list;
    }
    bool IsFor(const COwningPtrArray<T>& list) const { return m_list == &list; }
    // Takes ownership of the record and returns it.
    T* Own(std::unique_ptr<T> record)
    {
        m_records.push_back(record.get());
        return record.release();
    }
    // Moves the collected records to their list.
    void Finish()
    {
        if (m_records.empty())
            return;
        const __int64 first = m_list->GetSize();
        record_pool::Extend(*m_list, static_cast<__int64>(m_records.size()));
        std::copy(m_records.begin(), m_records.end(), m_list->GetData() + first);
        m_records.clear();
    }

private:
    COwningPtrArray<T>* m_list = nullptr; // null only while there are no records
    std::vector<T*> m_records;
};
