// Fields that records of many classes have. Complete reading fills them.
#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXidentified.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/CJOBXunit.h"
#include "foundation/RecordFields.h"

namespace jobx
{
// The attributes of a record's tail, which need not be there.
struct TailAttributes
{
    // A list to read; null for none.
    struct Found
    {
        const CJOBXPropertyArray* list;

        __int64 GetSize() const { return list == nullptr ? 0 : list->GetSize(); }
        const CJOBXProperty* GetAt(__int64 index) const { return list->GetAt(index); }
    };

    Found operator()(const CJOBXtailed& record) const { return {record.pGetTailAttributes()}; }
    CJOBXPropertyArray& operator()(CJOBXtailed& record) const { return *record.pMakeTailAttributes(); }
};

// The unique number; Base is CJOBXtailed or CJOBXidentified.
template <class Base>
constexpr auto IDOf()
{
    return UniqueNumber("id", "Unique in the job, null for none", &Base::GetID, &Base::SetID)
        .Shown("id")
        .OfCompleteReading();
}

// The attributes of a record derived from CJOBXtailed.
constexpr auto TailAttributesOf()
{
    return Records("attributes", "Behind the record, after the first semicolon", TailAttributes{})
        .Shown()
        .OfCompleteReading();
}

// The unit of a record derived from CJOBXmeasured.
constexpr auto UnitOf()
{
    return Unit("unit", "Of all lengths in it: mm or inch", &CJOBXmeasured::GetUnit, &CJOBXmeasured::SetUnit)
        .Shown("unit")
        .OfCompleteReading();
}
} // namespace jobx
