// How complete reading takes files of keys: "KEY=VALUE", and blocks from "NAME {" to "}".
#pragma once

#include "foundation/CJOBXkeyed.h"
#include "foundation/CLineScanner.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/corekit/CPointN.h"
#include "reading/CFileMessages.h"
#include "reading/CFileUnit.h"
#include "reading/CFirstNames.h"
#include "reading/CSourceFile.h"

#include <cstddef>
#include <string>
#include <string_view>

// The message kinds of one kind of file.
struct CKeyKinds
{
    const CJOBXmessageKind& notNumber;
    const CJOBXmessageKind& notKey;    // a line that is neither a key nor the begin or end of a block
    const CJOBXmessageKind& unknown;   // a key or a block
    const CJOBXmessageKind& twice;     // a key that the block had before
    const CJOBXmessageKind& notClosed; // a block
    const CJOBXmessageKind& notOpen;   // the end of a block
};

// The value of a key. What is not a number reads as the number that it begins with, or 0, as in classic reading.
class CKeyValue
{
public:
    CKeyValue(std::string_view key, std::string_view text, int line, CFileMessages& messages, const CKeyKinds& kinds)
        : m_key(key), m_text(text), m_line(line), m_messages(messages), m_kinds(kinds)
    {
    }

    std::string_view Text() const noexcept { return m_text; }
    int Integer() const;
    double Real() const;
    // A unique number; CJOBXidentified::kNoID if it is none.
    __int64 ID() const;

private:
    void SayNotNumber() const;

    std::string_view m_key;
    std::string_view m_text;
    int m_line;
    CFileMessages& m_messages;
    const CKeyKinds& m_kinds;
};

// A key, in upper case, and what stores its value. Null for a key that is known and kept among the further keys.
template <class Object>
struct CKey
{
    std::string_view name;
    void (*store)(Object& object, const CKeyValue& value);
};

// The lines of a file, one by one. Reports what is wrong with their form.
// Ownership: borrows everything.
class CKeyLines
{
public:
    // A units line goes to `unit`, if there is one.
    CKeyLines(CSourceFile& file, const CKeyKinds& kinds, CFileUnit* unit = nullptr)
        : m_text(file.Text()), m_messages(file.Messages()), m_kinds(kinds), m_unit(unit)
    {
    }

    // Reads all lines. Where a block begins, `open` makes its record, or answers false if it does not know the name: then
    // `around` keeps the keys of the block. `close` follows each block, even one that is not closed in the file. `store`
    // takes a key, of the open record or outside of blocks.
    template <class Open, class Close, class Store>
    void ReadBlocks(CJOBXkeyed& around, Open open, Close close, Store store)
    {
        bool isInUnknown = false;
        while (Next())
            if (m_form != Form::Key)
            {
                close();
                isInUnknown = m_form == Form::Begin && !open();
                if (isInUnknown)
                    SayUnknown("block");
            }
            else if (isInUnknown)
                KeepOfUnknownBlock(around);
            else
                store();
        close();
    }

    int Line() const noexcept { return m_text.LineNumber(); }

    // Whether the block that begins has this name, letters in any case.
    bool Begins(std::string_view upperName) const noexcept
    {
        return m_name.size() == upperName.size() && BeginsWith(m_name, upperName);
    }
    // Gives the key to the object: to the member in the table, else to its further keys.
    template <class Object, std::size_t Count>
    void Store(const CKey<Object> (&table)[Count], Object& object)
    {
        const CKeyValue value(m_name, m_value, Line(), m_messages, m_kinds);
        for (const CKey<Object>& key : table)
            if (Begins(key.name))
                return key.store != nullptr ? key.store(object, value) : Keep(object, m_name);
        SayUnknown("key");
        Keep(object, m_name);
    }

private:
    enum class Form
    {
        Key,
        Begin, // of a block; a block that is still open has ended
        End    // of the open block
    };

    // Moves to the next line; false at the end of the file.
    bool Next();
    // Kept as "BLOCK.KEY".
    void KeepOfUnknownBlock(CJOBXkeyed& around);
    void SayUnknown(const char* what) { m_messages.SayUnknown(m_kinds.unknown, Line(), what, m_name); }
    bool Begin(std::string_view line);
    bool End();
    void SayOpen();
    bool TakeKey(std::string_view line);
    void Keep(CJOBXkeyed& object, std::string_view name) const;

    CLineScanner& m_text;
    CFileMessages& m_messages;
    const CKeyKinds& m_kinds;
    CFileUnit* m_unit;
    Form m_form = Form::Key;
    std::string_view m_name; // of the key, or of the block that begins
    std::string_view m_value;
    std::string m_block; // the open one
    int m_blockLine = 0; // where it began; 0 if none is open
    CFirstNames m_blockKeys;
    CFirstNames m_fileKeys; // outside of blocks
};

namespace key_store
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

inline void Set(CString& member, const CKeyValue& value)
{
    member = value.Text();
}
inline void Set(int& member, const CKeyValue& value)
{
    member = value.Integer();
}
inline void Set(double& member, const CKeyValue& value)
{
    member = value.Real();
}
} // namespace key_store

// For a table of keys: stores the value in a member, or in a coordinate of a member that is a point.
template <auto member>
void StoreKey(key_store::Parent<member>& object, const CKeyValue& value)
{
    key_store::Set(object.*member, value);
}
template <auto point, auto coordinate>
void StoreKey(key_store::Parent<point>& object, const CKeyValue& value)
{
    key_store::Set(object.*point.*coordinate, value);
}
// As above, as the object's unique number.
template <class Object>
void StoreKeyAsID(Object& object, const CKeyValue& value)
{
    object.SetID(value.ID());
}
