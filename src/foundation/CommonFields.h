// Fields that records of many classes have. Complete reading fills them.
#pragma once

#include "foundation/CJOBXPropertyFields.h"
#include "foundation/CJOBXattributeList.h"
#include "foundation/CJOBXidentified.h"
#include "foundation/CJOBXkeyed.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/CJOBXunit.h"
#include "foundation/base/RecordFields.h"

#include <vector>

// A key that has no member of its own, and its value, of an object derived from CJOBXkeyed.
class CFurtherKey
{
public:
    CString m_sName;  // the key, behind "BLOCK." if it is in an unknown block
    CString m_sValue; // as in the file
};

// The fields of CFurtherKey.
template <>
struct jobx::Fields<CFurtherKey>
{
    static constexpr RecordName kName{"furtherKey", "A key without a member of its own", "key", "key"};
    static constexpr auto kList = std::tuple{
        Text("name", "The key, behind BLOCK. if it is in an unknown block", &CFurtherKey::m_sName)
            .Shown("name")
            .AsNameInAnyCase(),
        Text("value", "As in the file", &CFurtherKey::m_sValue).Shown("value"),
    };
};

namespace jobx
{
// The keys of an object that have no member of their own, to read.
struct FurtherKeys
{
    struct Found
    {
        std::vector<CFurtherKey> keys;

        __int64 GetSize() const { return static_cast<__int64>(keys.size()); }
        const CFurtherKey* GetAt(__int64 index) const { return &keys[static_cast<std::size_t>(index)]; }
    };

    Found operator()(const CJOBXkeyed& object) const
    {
        Found found;
        if (const CJOBXPropertyArray* const list = object.pGetFurtherKeys())
            for (const CJOBXProperty& key : list->Records())
                found.keys.push_back({key.m_sName, key.m_sValue});
        return found;
    }
};

struct AttributeListPointer
{
    const CJOBXattributeList* operator()(const CJOBXattributed& owner) const { return owner.pGetAttributeList(); }
};

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

// The keys without a member of their own, of an object derived from CJOBXkeyed.
constexpr auto FurtherKeysOf()
{
    return Records("furtherKeys", "Keys without a member of their own, in the order of the file", FurtherKeys{})
        .Shown()
        .OfCompleteReading();
}

// The attribute list of an object derived from CJOBXattributed.
constexpr auto AttributeListOf()
{
    return OptionalPart("attributeList", "The file attrlist of its folder, null for none", AttributeListPointer{})
        .Shown("attribute list")
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

// The fields of CJOBXattributeList.
template <>
struct jobx::Fields<CJOBXattributeList>
{
    static constexpr RecordName kName{"attributeList", "The attributes of a job, step, layer or user symbol as a whole",
                                      "attribute list", "attribute list"};
    static constexpr auto kList = std::tuple{
        Records(
            "attributes", "In the order of the file", [](auto& list) -> auto& { return *list.GetAttributes(); })
            .Shown(),
        UnitOf().Shown("unit of the attribute list"),
    };
};
