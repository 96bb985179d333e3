// The text after the first ";" of a record: ";attributes;ID=number". Either part may be missing or empty.
#pragma once

#include "foundation/CBlankEndedScanner.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/CLineScanner.h"
#include "foundation/NumberedTable.h"
#include "reading/CAttributeTypes.h"
#include "reading/CFileMessages.h"
#include "reading/CPlainRecord.h"

#include <string_view>

// A line split at its first ";", or the first one from a position on. All parts are trimmed views of the line.
struct CTailText
{
    std::string_view record;
    std::string_view whole;      // everything behind the first ";"
    std::string_view attributes; // "0=1,2"
    std::string_view id;         // the text after "ID="
    std::string_view rest;       // the last of any further parts; "" if there is none
    bool hasID = false;
};
CTailText CutTailAt(std::string_view line, std::size_t semicolon) noexcept;
inline CTailText CutTail(std::string_view line, std::size_t from = 0) noexcept
{
    const std::size_t semicolon = line.find(';', from);
    if (semicolon != std::string_view::npos)
        return CutTailAt(line, semicolon);
    CTailText tail;
    tail.record = TrimmedRight(line);
    return tail;
}

// The number of an "ID=" part; CJOBXtailed::kNoID, with a message, if it is not a number.
__int64 ReadTailID(const CTailText& tail, int line, CFileMessages& messages);

// Reads the attribute lists of one file.
class CAttributeReader
{
public:
    // Borrows all of them.
    CAttributeReader(CNumberIndex& names, CNumberIndex& texts, const CAttributeTypes& types, CFileMessages& messages)
        : m_names(names), m_texts(texts), m_types(types), m_messages(messages)
    {
    }

    // Appends the attributes of a list such as "0=1,2" with names, kinds and values. False if a message was reported.
    bool Append(std::string_view list, int line, CJOBXPropertyArray& properties);
    // Stores the contents of a tail in a new record.
    void Take(const CTailText& tail, int line, CJOBXtailed& record)
    {
        if (!tail.whole.empty())
            Store(ReadTailID(tail, line, m_messages), tail.attributes, line, record);
    }
    void Take(const CPlainTail& tail, int line, CJOBXtailed& record)
    {
        if (tail.id != CJOBXtailed::kNoID || !tail.attributes.empty())
            Store(tail.id, tail.attributes, line, record);
    }

private:
    void Store(__int64 id, std::string_view attributes, int line, CJOBXtailed& record);
    void SetValue(CJOBXProperty& property, std::string_view value, int line);
    void SetText(CJOBXProperty& property, std::string_view value, int line);
    void SetOption(CJOBXProperty& property, const CAttributeTypes::Type& type, std::string_view value, int line);
    JOBXattributeKind GuessKind(std::string_view value);
    template <class... Parts>
    void Say(const CJOBXmessageKind& kind, int line, const Parts&... parts)
    {
        m_isSound = false;
        m_messages.Say(kind, line, parts...);
    }

    bool m_isSound = true; // what was appended last
    CNumberIndex& m_names;
    CNumberIndex& m_texts;
    const CAttributeTypes& m_types;
    CFileMessages& m_messages;
};
