// Copies of records by their lists of fields, for records that cannot be copied otherwise.
#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"

#include <memory>
#include <type_traits>

namespace jobx
{
template <class Record>
void CopyFields(const Record& from, Record& to);

// A copy that comes from no line of a file and has no unique number.
template <class Record>
std::unique_ptr<Record> NewCopyOf(const Record& from)
{
    std::unique_ptr<Record> to;
    if constexpr (requires { from.clone(); })
        to.reset(from.clone());
    else
    {
        to = std::make_unique<Record>();
        CopyFields(from, *to);
    }
    if constexpr (requires { to->SetLineNumber(0); })
        to->SetLineNumber(0);
    if constexpr (requires { to->m_nLineNumber = 0; })
        to->m_nLineNumber = 0;
    if constexpr (requires { to->SetID(0); })
        to->SetID(-1);
    return to;
}

// Appends to lists; makes one that need not be there only for a record in it. A value that is equal is not set: some
// members take memory from then on.
template <class Field, class Record>
void CopyField(const Record& from, Record& to)
{
    constexpr FieldKind kKind = Field::kKind;
    if constexpr (kKind == FieldKind::Class)
        Field::kField.access.Find(from,
                                  [&](const auto& classed)
                                  {
                                      using Class = std::remove_cvref_t<decltype(classed)>;
                                      CopyFields(classed, static_cast<Class&>(to));
                                  });
    else if constexpr (kKind == FieldKind::Records)
    {
        const auto& list = Field::Get(from);
        if constexpr (requires { Field::Ref(to).GetData(); })
            ForEachRecord(list, [&](const auto& record) { Field::Ref(to).Own(NewCopyOf(record)); });
    }
    else if constexpr (kKind == FieldKind::Texts || kKind == FieldKind::Parameters)
    {
        if (Field::Get(from).GetSize() > 0)
            Field::Set(to, Field::Get(from));
    }
    else if constexpr (kKind != FieldKind::Table && kKind != FieldKind::LineNumber &&
                       kKind != FieldKind::UniqueNumber && kKind != FieldKind::OptionalPart && kKind != FieldKind::Part)
    {
        if (!(Field::Get(to) == Field::Get(from)))
            Field::Set(to, Field::Get(from));
    }
}

// Every member but the line in the file and the unique number in the job, which are a record's own. `to` has the class
// of `from`.
template <class Record>
void CopyFields(const Record& from, Record& to)
{
    ForEachField<Record>([&](auto field) { CopyField<decltype(field)>(from, to); });
}
} // namespace jobx
