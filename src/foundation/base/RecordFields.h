// How the fields of a record are described, once, for all that walks over them: comparison, JSON and its schema,
// copying into the compact model, unit change, tests, bindings.
//
// Fields<Record> beside each record class lists its fields, one a line:
//
//     Text("partName", "Part", &CJOBXcmp::m_sPartName).Shown("part name", 7),
//      |     |           |       |                        |          |
//      kind  key         about   member, or two           name for   place among what
//                                members: get and set     people     people are shown
//
// The order of the list is the order of the keys in documents. A field without Shown takes no part in comparisons.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

class CArrayN;
class CStringArray;

namespace jobx
{
enum class FieldKind
{
    Text,          // CString
    Integer,       // int or __int64
    Index,         // an integer that refers to an entry of a table, see FieldTable
    LineNumber,    // an integer: the record's line in its file
    Real,          // a double without a unit
    Angle,         // a double in degrees
    Length,        // a double in the unit of the file
    Coordinate,    // CPointD in the unit of the file
    Count,         // CPointN: columns and rows
    Texts,         // CStringArray
    Parameters,    // texts, some of which may be lengths
    Numbers,       // CArrayN
    Part,          // one record inside this one
    OptionalPart,  // a pointer to one record, null for none
    Records,       // a list of records
    Class,         // not a member: the additional fields of the classes that the record may have
    Table,         // not a member: parallel lists of this record that form one numbered table
    UniqueNumber,  // __int64: the number of the record in the whole job, -1 for none
    Unit,          // JOBXunit: of the lengths of the record and of those in it
    AttributeKind, // JOBXattributeKind
};

// The table that an index refers to.
enum class FieldTable
{
    None,
    AttributeNames, // of the file, by number
    AttributeTexts, // of the file, by number
    Symbols,        // of the layer, by number
    LayerNames,     // of the EDA data, by index
    Features,       // of that layer, by index
    Nets,           // of the EDA data, by index
    Subnets,        // of that net, by index
    Packages,       // of the EDA data, by index
    Pins,           // of the component's package, by index
    Components,     // of that side, by index
    Toeprints,      // of that component, by index
};

// The documents that have a field.
enum class FieldDocuments
{
    All,
    OfClassicReading,
    OfCompleteReading,
    None,
};

// The names of a record type: in documents (key), for people (shown), and in paths (word).
struct RecordName
{
    std::string_view key;
    std::string_view about;
    std::string_view shown;
    std::string_view word;
};

// The description of a class, specialised beside each: kName, and kList, a tuple of fields.
template <class Record>
struct Fields;

// The properties of a field besides its kind.
struct FieldFacts
{
    static constexpr int kNoPlace = std::numeric_limits<int>::max();

    std::string_view key;
    std::string_view about;
    std::string_view shown;                         // name for people
    std::string_view shownY;                        // of the second of two coordinates
    int place = kNoPlace;                           // among the fields shown
    bool isShown = false;                           // differences in it are reported
    FieldDocuments documents = FieldDocuments::All; // where its key appears
    bool isLeftByUnitChange = false;                // a length that UnitConvert and vRescale do not change
    bool isName = false;                            // identifies a record in its list
    bool isNameInAnyCase = false;                   // also, ignoring the case of ASCII letters
    bool isMark = false;                            // shown beside the position of a record without a name
    bool isClassText = false;                       // its text determines the record's class
    bool isAttributeValue = false; // of an attribute; documents of complete reading have true for a flag
    bool isSorted = false;         // documents sort the list by the names of its records
    FieldTable table = FieldTable::None;
};

template <FieldKind kKindOfField, class AccessOfField>
struct Field : FieldFacts
{
    static constexpr FieldKind kKind = kKindOfField;
    AccessOfField access;

    // Shown to people under that name, at that place; fields without a place come last.
    constexpr Field Shown(std::string_view name, int at = kNoPlace) const
    {
        Field field = *this;
        field.isShown = true;
        field.shown = name;
        field.place = at;
        return field;
    }
    // For the two coordinates of a point.
    constexpr Field Shown(std::string_view nameX, std::string_view nameY, int at = kNoPlace) const
    {
        Field field = Shown(nameX, at);
        field.shownY = nameY;
        return field;
    }
    // For fields without a name: lists and additional fields.
    constexpr Field Shown(int at = kNoPlace) const { return Shown({}, at); }

    constexpr Field InMemoryOnly() const { return With(&FieldFacts::documents, FieldDocuments::None); }
    constexpr Field OfClassicReading() const { return With(&FieldFacts::documents, FieldDocuments::OfClassicReading); }
    constexpr Field OfCompleteReading() const
    {
        return With(&FieldFacts::documents, FieldDocuments::OfCompleteReading);
    }
    constexpr Field AsAttributeValue() const { return With(&FieldFacts::isAttributeValue, true); }
    constexpr Field LeftByUnitChange() const { return With(&FieldFacts::isLeftByUnitChange, true); }
    constexpr Field AsName() const { return With(&FieldFacts::isName, true); }
    constexpr Field AsNameInAnyCase() const { return AsName().With(&FieldFacts::isNameInAnyCase, true); }
    constexpr Field AsMark() const { return With(&FieldFacts::isMark, true); }
    constexpr Field AsClassText() const { return With(&FieldFacts::isClassText, true); }
    constexpr Field Sorted() const { return With(&FieldFacts::isSorted, true); }

    template <class Value>
    constexpr Field With(Value FieldFacts::*fact, Value value) const
    {
        Field field = *this;
        field.*fact = value;
        return field;
    }
};

// A public member.
template <class Class, class Value>
struct MemberAccess
{
    Value Class::*member;

    constexpr const Value& Get(const Class& record) const { return record.*member; }
    constexpr Value& Ref(Class& record) const { return record.*member; }
    template <class NewValue>
    constexpr void Set(Class& record, NewValue&& value) const
    {
        record.*member = std::forward<NewValue>(value);
    }
};

// A member with a getter and a setter.
template <class GetClass, class Value, class SetClass, class Parameter>
struct FunctionAccess
{
    Value (GetClass::*get)() const;
    void (SetClass::*set)(Parameter);

    Value Get(const GetClass& record) const { return (record.*get)(); }
    template <class Record, class NewValue>
    void Set(Record& record, const NewValue& value) const
    {
        (record.*set)(value);
    }
};

// A value that a function finds in the record.
template <class Find>
struct FoundAccess
{
    Find find;

    template <class Record>
    constexpr decltype(auto) Get(const Record& record) const
    {
        return find(record);
    }
    template <class Record>
    constexpr auto Ref(Record& record) const -> decltype(find(record))
    {
        return find(record);
    }
    template <class Record, class NewValue>
    constexpr void Set(Record& record, NewValue&& value) const
    {
        find(record) = std::forward<NewValue>(value);
    }
};

template <class Class, class Value>
constexpr auto AccessTo(Value Class::*member)
{
    return MemberAccess<Class, Value>{member};
}
template <class GetClass, class Value, class SetClass, class Parameter>
constexpr auto AccessTo(Value (GetClass::*get)() const, void (SetClass::*set)(Parameter))
{
    return FunctionAccess<GetClass, Value, SetClass, Parameter>{get, set};
}
template <class Find>
requires std::is_class_v<Find>
constexpr auto AccessTo(Find find)
{
    if constexpr (requires { &Find::Get; })
        return find; // a special way
    else
        return FoundAccess<Find>{find};
}

template <FieldKind kKind, class... Where>
constexpr auto MakeField(std::string_view key, std::string_view about, Where... where)
{
    const auto access = AccessTo(where...);
    Field<kKind, std::remove_const_t<decltype(access)>> field{{}, access};
    field.key = key;
    field.about = about;
    return field;
}

template <class... Where>
constexpr auto Text(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Text>(key, about, where...);
}
template <class... Where>
constexpr auto Integer(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Integer>(key, about, where...);
}
template <class... Where>
constexpr auto Index(FieldTable table, std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Index>(key, about, where...).With(&FieldFacts::table, table);
}
template <class... Where>
constexpr auto LineNumber(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::LineNumber>(key, about, where...);
}
template <class... Where>
constexpr auto Real(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Real>(key, about, where...);
}
template <class... Where>
constexpr auto Angle(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Angle>(key, about, where...);
}
template <class... Where>
constexpr auto Length(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Length>(key, about, where...);
}
template <class... Where>
constexpr auto Coordinate(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Coordinate>(key, about, where...);
}
template <class... Where>
constexpr auto Count(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Count>(key, about, where...);
}
template <class... Where>
constexpr auto Texts(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Texts>(key, about, where...);
}
template <class... Where>
constexpr auto Parameters(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Parameters>(key, about, where...);
}
template <class... Where>
constexpr auto Numbers(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Numbers>(key, about, where...);
}
template <class... Where>
constexpr auto Part(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Part>(key, about, where...);
}
template <class... Where>
constexpr auto OptionalPart(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::OptionalPart>(key, about, where...);
}
template <class... Where>
constexpr auto Records(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Records>(key, about, where...);
}

template <class... Where>
constexpr auto UniqueNumber(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::UniqueNumber>(key, about, where...);
}
template <class... Where>
constexpr auto Unit(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::Unit>(key, about, where...);
}
template <class... Where>
constexpr auto AttributeKind(std::string_view key, std::string_view about, Where... where)
{
    return MakeField<FieldKind::AttributeKind>(key, about, where...);
}

// Whether documents of that reading have the field.
constexpr bool IsInDocuments(const FieldFacts& facts, bool ofCompleteReading)
{
    return facts.documents == FieldDocuments::All ||
           facts.documents ==
               (ofCompleteReading ? FieldDocuments::OfCompleteReading : FieldDocuments::OfClassicReading);
}

// The classes that a record may have besides the described one, the common ones first.
template <class... Classes>
struct ClassAccess
{
    // Calls `use` with the record cast to its class, if that is one of them.
    template <class Record, class Use>
    static void Find(Record& record, Use use)
    {
        static_cast<void>((TryAs<Classes>(record, use) || ...));
    }
    // Calls `use` with a null pointer of each class.
    template <class Use>
    static constexpr void ForEach(Use use)
    {
        (use(static_cast<Classes*>(nullptr)), ...);
    }

private:
    template <class Class, class Record, class Use>
    static bool TryAs(Record& record, Use& use)
    {
        using Wanted = std::conditional_t<std::is_const_v<Record>, const Class, Class>;
        auto* const found = dynamic_cast<Wanted*>(&record);
        if (found != nullptr)
            use(*found);
        return found != nullptr;
    }
};
template <class... Classes>
constexpr auto FieldsOfClass()
{
    return Field<FieldKind::Class, ClassAccess<Classes...>>{};
}

// Numbers, texts and, for some tables, a second text per entry.
template <class Class>
struct TableAccess
{
    CArrayN Class::*numbers;
    CStringArray Class::*texts;
    CStringArray Class::*seconds;
};
template <class Class>
constexpr auto Table(CArrayN Class::*numbers, CStringArray Class::*texts, CStringArray Class::*seconds = nullptr)
{
    return Field<FieldKind::Table, TableAccess<Class>>{{}, {numbers, texts, seconds}}.InMemoryOnly();
}

// The field at a position of a list; everything is known at compile time.
template <class Record, std::size_t kIndex>
struct FieldAt
{
    static constexpr const auto& kField = std::get<kIndex>(Fields<Record>::kList);
    static constexpr FieldKind kKind = std::remove_cvref_t<decltype(kField)>::kKind;

    static constexpr decltype(auto) Get(const Record& record) { return kField.access.Get(record); }
    static constexpr decltype(auto) Ref(Record& record) { return kField.access.Ref(record); }
    template <class Value>
    static constexpr void Set(Record& record, Value&& value)
    {
        kField.access.Set(record, std::forward<Value>(value));
    }
};

template <class Record>
constexpr std::size_t kFieldCount = std::tuple_size_v<std::remove_cvref_t<decltype(Fields<Record>::kList)>>;

// Calls `visit` with the FieldAt of each field.
template <class Record, class Visit>
void ForEachField(Visit visit)
{
    [&]<std::size_t... kIndexes>(std::index_sequence<kIndexes...>)
    {
        (visit(FieldAt<Record, kIndexes>{}), ...);
    }
    (std::make_index_sequence<kFieldCount<Record>>{});
}

template <class Record>
constexpr std::array<int, kFieldCount<Record>> PlacesOfFields()
{
    return std::apply([](const auto&... fields) { return std::array<int, kFieldCount<Record>>{fields.place...}; },
                      Fields<Record>::kList);
}

// The positions of the fields, those with a place first, in the order of their places.
template <class Record>
constexpr std::array<std::size_t, kFieldCount<Record>> ShownOrder()
{
    const auto places = PlacesOfFields<Record>();
    std::array<std::size_t, kFieldCount<Record>> order{};
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    for (std::size_t i = 1; i < order.size(); ++i)
        for (std::size_t k = i; k > 0 && places[order[k]] < places[order[k - 1]]; --k)
            std::swap(order[k], order[k - 1]);
    return order;
}

// For each field that is shown, in the order in which it is shown.
template <class Record, class Visit>
void ForEachShownField(Visit visit)
{
    static constexpr auto kOrder = ShownOrder<Record>();
    const auto visitShown = [&visit](auto field)
    {
        if constexpr (decltype(field)::kField.isShown)
            visit(field);
    };
    [&]<std::size_t... kIndexes>(std::index_sequence<kIndexes...>)
    {
        (visitShown(FieldAt<Record, kOrder[kIndexes]>{}), ...);
    }
    (std::make_index_sequence<kFieldCount<Record>>{});
}

// The class of the record that a field of kind OptionalPart points to.
template <class Pointer>
using RecordAt = std::remove_const_t<std::remove_pointer_t<std::remove_cvref_t<Pointer>>>;

// The class of the records of a list.
template <class List>
using RecordOfList = std::remove_const_t<std::remove_pointer_t<decltype(std::declval<const List&>().GetAt(0))>>;

// Calls `visit` with each record of a list of pointers; skips null entries.
template <class List, class Visit>
void ForEachRecord(List& list, Visit visit)
{
    for (decltype(list.GetSize()) i = 0; i < list.GetSize(); ++i)
        if (auto* const record = list.GetAt(i))
            visit(*record);
}
} // namespace jobx
