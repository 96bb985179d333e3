// Whether two records hold the same.
#pragma once

#include "foundation/CJOBXsourced.h"
#include "foundation/CJOBXunit.h"
#include "foundation/base/RecordFields.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CStringArray.h"

#include <type_traits>
#include <typeinfo>

// All that documents of complete reading have of the two, and what is below them: values, the order of lists, and for
// records that know it the line they come from. What only hosts set is left out.
template <class Record>
bool AreSame(const Record& a, const Record& b);

namespace same_records
{
template <class Array>
bool AreSameItems(const Array& a, const Array& b)
{
    if (a.GetSize() != b.GetSize())
        return false;
    for (decltype(a.GetSize()) i = 0; i < a.GetSize(); ++i)
        if (!(a.GetAt(i) == b.GetAt(i)))
            return false;
    return true;
}

template <class List>
bool AreSameLists(const List& a, const List& b)
{
    if (a.GetSize() != b.GetSize())
        return false;
    for (decltype(a.GetSize()) i = 0; i < a.GetSize(); ++i)
    {
        const auto* const recordA = a.GetAt(i);
        const auto* const recordB = b.GetAt(i);
        if (recordA != recordB && (recordA == nullptr || recordB == nullptr || !AreSame(*recordA, *recordB)))
            return false;
    }
    return true;
}

template <class Field, class Record>
bool AreSameClasses(const Record& a, const Record& b)
{
    bool areSame = typeid(a) == typeid(b);
    if (areSame)
        Field::kField.access.Find(a,
                                  [&](const auto& classed)
                                  {
                                      using Class = std::remove_cvref_t<decltype(classed)>;
                                      areSame = AreSame(classed, static_cast<const Class&>(b));
                                  });
    return areSame;
}

template <class Field, class Record>
bool AreSameTables(const Record& a, const Record& b)
{
    constexpr const auto& kTable = Field::kField.access;
    return AreSameItems(a.*kTable.numbers, b.*kTable.numbers) && AreSameItems(a.*kTable.texts, b.*kTable.texts) &&
           (kTable.seconds == nullptr || AreSameItems(a.*kTable.seconds, b.*kTable.seconds));
}

template <class Field, class Record>
bool AreSameFields(const Record& a, const Record& b)
{
    using Kind = jobx::FieldKind;
    constexpr Kind kKind = Field::kKind;
    if constexpr (kKind == Kind::Class)
        return AreSameClasses<Field>(a, b);
    else if constexpr (kKind == Kind::Table)
        return AreSameTables<Field>(a, b);
    else if constexpr (!jobx::IsInDocuments(Field::kField, true))
        return true;
    else if constexpr (kKind == Kind::Records)
        return AreSameLists(Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::Part)
        return AreSame(Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::OptionalPart)
    {
        const auto* const partA = Field::Get(a);
        const auto* const partB = Field::Get(b);
        return partA == partB || (partA != nullptr && partB != nullptr && AreSame(*partA, *partB));
    }
    else if constexpr (kKind == Kind::Texts || kKind == Kind::Parameters || kKind == Kind::Numbers)
        return AreSameItems(Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::Coordinate || kKind == Kind::Count)
        return Field::Get(a).GetX() == Field::Get(b).GetX() && Field::Get(a).GetY() == Field::Get(b).GetY();
    else
        return Field::Get(a) == Field::Get(b);
}
} // namespace same_records

template <class Record>
bool AreSame(const Record& a, const Record& b)
{
    if constexpr (std::is_base_of_v<CJOBXsourced, Record>)
        if (a.GetSourceLine() != b.GetSourceLine())
            return false;
    bool areSame = true;
    jobx::ForEachField<Record>([&](auto field)
                               { areSame = areSame && same_records::AreSameFields<decltype(field)>(a, b); });
    return areSame;
}
