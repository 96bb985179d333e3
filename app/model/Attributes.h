#pragma once

#include "JOBXCLSDLL.h"

#include <optional>

// The first property or attribute of that name, ignoring letter case; borrowed, null if there is none.
template <class List>
auto FindNamed(const List& list, const char* name)
{
    for (auto& each : list.Records())
        if (each.m_sName.CompareNoCase(name) == 0)
            return &each;
    return decltype(list.GetAt(0))();
}

// The number that is the whole text, nothing if it is none.
std::optional<double> NumberInText(const CString& text);
