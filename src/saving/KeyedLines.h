// The lines of files of keys: "KEY=VALUE", and blocks from "NAME {" to "}".
#pragma once

#include "foundation/CJOBXkeyed.h"
#include "foundation/CJOBXunit.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CString.h"
#include "saving/CRecordLines.h"

#include <string_view>

// A key and what lists it with the value of an object.
template <class Object>
struct CSavedKey
{
    std::string_view name;
    void (*list)(const Object& object, std::string_view name, int depth, CRecordLines& lines);
};

namespace saved_key
{
template <class>
struct ParentOf;
template <class Parent, class Value>
struct ParentOf<Value Parent::*>
{
    using Type = Parent;
};
template <auto member>
using Parent = typename ParentOf<decltype(member)>::Type;

inline void List(const CString& value, std::string_view name, int depth, CRecordLines& lines)
{
    lines.KeyValue(depth, name, value.View());
}
inline void List(int value, std::string_view name, int depth, CRecordLines& lines)
{
    lines.KeyInteger(depth, name, value);
}
inline void List(double value, std::string_view name, int depth, CRecordLines& lines)
{
    lines.KeyReal(depth, name, value);
}
} // namespace saved_key

// For a table of keys: lists a member, or a coordinate of a member that is a point.
template <auto member>
void ListKey(const saved_key::Parent<member>& object, std::string_view name, int depth, CRecordLines& lines)
{
    saved_key::List(object.*member, name, depth, lines);
}
template <auto point, auto coordinate>
void ListKey(const saved_key::Parent<point>& object, std::string_view name, int depth, CRecordLines& lines)
{
    saved_key::List(object.*point.*coordinate, name, depth, lines);
}
// As above, the object's unique number if it has one.
template <class Object>
void ListKeyOfID(const Object& object, std::string_view name, int depth, CRecordLines& lines)
{
    if (object.GetID() != Object::kNoID)
        lines.KeyInteger(depth, name, object.GetID());
}

template <class Object, std::size_t Count>
void ListKeys(const CSavedKey<Object> (&table)[Count], const Object& object, int depth, CRecordLines& lines)
{
    for (const CSavedKey<Object>& key : table)
        key.list(object, key.name, depth, lines);
}

// The keys without a member of their own. `depth` is above 0 for keys in a block.
void ListFurtherKeys(const CJOBXkeyed& object, int depth, CRecordLines& lines);
// The same for keys outside of blocks, in a file with blocks: "BLOCK.KEY" is in a block of a name that is not known.
void ListFurtherKeysAndBlocks(const CJOBXkeyed& file, CRecordLines& lines);

// A whole block: its begin, its keys from the table, its further keys, its end.
template <class Object, std::size_t Count>
void ListBlock(std::string_view name, const CSavedKey<Object> (&table)[Count], const Object& object,
               CRecordLines& lines)
{
    lines.Begin(0, object.GetSourceLine());
    lines.Word(name).Word("{");
    ListKeys(table, object, 1, lines);
    ListFurtherKeys(object, 1, lines);
    lines.Begin(1, CRecordLines::kUnknownLine);
    lines.Word("}");
}

// "UNITS=MM". A file may also have "U MM" or "UNITS MM" for it.
void ListUnits(JOBXunit unit, CRecordLines& lines);
