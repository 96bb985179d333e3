#include "reading/CKeyLines.h"

#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXidentified.h"

#include <charconv>
#include <cmath>
#include <memory>
#include <system_error>

int CKeyValue::Integer() const
{
    const NumberRead<std::int32_t> read = ReadInteger(m_text.data(), m_text.data() + m_text.size());
    if (m_text.empty() || read.end != m_text.data() + m_text.size())
        SayNotNumber();
    return read.value;
}

double CKeyValue::Real() const
{
    const NumberRead<double> read = ReadReal(m_text.data(), m_text.data() + m_text.size());
    if (m_text.empty() || read.end != m_text.data() + m_text.size() || !std::isfinite(read.value))
        SayNotNumber();
    return read.value;
}

__int64 CKeyValue::ID() const
{
    __int64 id = 0;
    const char* const end = m_text.data() + m_text.size();
    const auto [at, error] = std::from_chars(m_text.data(), end, id);
    if (error == std::errc() && at == end && id >= 0 && id <= CJOBXidentified::kLargestID)
        return id;
    SayNotNumber();
    return CJOBXidentified::kNoID;
}

void CKeyValue::SayNotNumber() const
{
    m_messages.Say(m_kinds.notNumber, m_line, "The value ", Quoted{m_text}, " of the key ", Quoted{m_key},
                   " is not a number.");
}

bool CKeyLines::Next()
{
    while (m_text.NextLine())
    {
        const std::string_view line = m_text.Line();
        if (line.front() == '#' || (m_unit != nullptr && m_unit->Take(line, Line())))
            continue;
        const bool isBegin = line.back() == '{' && line.find('=') == std::string_view::npos;
        if (isBegin ? Begin(line) : line == "}" ? End() : TakeKey(line))
            return true;
    }
    SayOpen();
    return false;
}

bool CKeyLines::Begin(std::string_view line)
{
    SayOpen();
    m_form = Form::Begin;
    m_name = TrimmedRight(line.substr(0, line.size() - 1));
    m_block = m_name;
    m_blockLine = Line();
    m_blockKeys.Clear();
    return true;
}

bool CKeyLines::End()
{
    if (m_blockLine == 0)
        m_messages.Say(m_kinds.notOpen, Line(), "The brace closes no block.");
    m_form = Form::End;
    return std::exchange(m_blockLine, 0) != 0;
}

void CKeyLines::SayOpen()
{
    if (m_blockLine != 0)
        m_messages.Say(m_kinds.notClosed, m_blockLine, "The block ", Quoted{m_block}, " is not closed.");
    m_blockLine = 0;
}

bool CKeyLines::TakeKey(std::string_view line)
{
    const std::size_t equals = line.find('=');
    m_form = Form::Key;
    m_name = TrimmedRight(line.substr(0, equals));
    if (equals == std::string_view::npos || m_name.empty())
    {
        m_messages.Say(m_kinds.notKey, Line(), "The line ", Quoted{line}, " is not a key with a value.");
        return false;
    }
    m_value = Trimmed(line.substr(equals + 1));
    CFirstNames& keys = m_blockLine != 0 ? m_blockKeys : m_fileKeys;
    if (const int before = keys.LineBefore(m_name, Line()); before != 0)
        m_messages.Say(m_kinds.twice, Line(), "The key ", Quoted{m_name}, " was already given on line ", before, ".");
    return true;
}

void CKeyLines::Keep(CJOBXkeyed& object, std::string_view name) const
{
    auto key = std::make_unique<CJOBXProperty>();
    key->m_sName = name;
    key->m_sValue = m_value;
    object.pMakeFurtherKeys()->Own(std::move(key));
}

void CKeyLines::KeepOfUnknownBlock(CJOBXkeyed& around)
{
    Keep(around, m_block + "." + std::string(m_name));
}
