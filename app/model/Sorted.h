#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

// The records of a list of pointers without nulls, sorted by `key`; a stable sort.
template <class Record, class List, class Key>
std::vector<const Record*> SortedRecords(const List& list, Key key)
{
    std::vector<const Record*> records;
    for (std::int64_t i = 0; i < list.GetSize(); ++i)
        if (const Record* const record = list.GetAt(i))
            records.push_back(record);
    std::stable_sort(records.begin(), records.end(),
                     [&](const Record* a, const Record* b) { return key(*a) < key(*b); });
    return records;
}
