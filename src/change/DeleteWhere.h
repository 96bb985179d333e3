// Deletes records of a list and says where the others are now.
#pragma once

#include "foundation/base/CExPtrArray.h"

#include <vector>

// The new place of each entry of a list, by its old one; kGone for one that was deleted.
using NewPlaces = std::vector<int>;
inline constexpr int kGone = -1;

// Deletes the entries for which `isUnwanted(record, place)` answers true, and the null entries. Only making the result needs
// memory, and that comes first.
template <class T, class IsUnwanted>
NewPlaces DeleteWhere(COwningPtrArray<T>& list, IsUnwanted isUnwanted)
{
    NewPlaces places(static_cast<std::size_t>(list.GetSize()), kGone);
    int kept = 0;
    for (__int64 i = 0; i < list.GetSize(); ++i)
        if (const T* const record = list.GetAt(i); record != nullptr && !isUnwanted(*record, static_cast<int>(i)))
            places[static_cast<std::size_t>(i)] = kept++;
    for (std::size_t i = 0; i < places.size(); ++i)
    {
        T* const record = list.GetAt(static_cast<__int64>(i));
        if (places[i] == kGone)
            delete record;
        else
            list.SetAt(places[i], record);
    }
    list.RemoveAt(kept, list.GetSize() - kept);
    return places;
}

// The place that a reference leads to now. One that led nowhere before stays as it is.
inline int PlaceNow(const NewPlaces& places, int place)
{
    const auto index = static_cast<std::size_t>(place);
    return place < 0 || index >= places.size() ? place : places[index];
}
inline bool IsGone(const NewPlaces& places, int place)
{
    return place >= 0 && PlaceNow(places, place) == kGone;
}
