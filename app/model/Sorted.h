#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

// The records of a list of pointers without nulls, sorted by `key`; a stable sort.
template <class Record, class List, class Key>
std::vector<const Record*> SortedRecords(const List& list, Key key)
{
    std::vector<const Record*> records;
    for (const Record& record : list.Records())
        records.push_back(&record);
    std::stable_sort(records.begin(), records.end(),
                     [&](const Record* a, const Record* b) { return key(*a) < key(*b); });
    return records;
}
