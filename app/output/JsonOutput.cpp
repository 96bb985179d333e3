#include "output/JsonOutput.h"

#include "output/Text.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace
{
bool IsAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}
} // namespace

void JsonOutput::Value(std::string_view text)
{
    if (IsAscii(text) || (m_textBytes == TextBytes::Utf8OrLatin1 && IsUtf8(text)))
    {
        m_writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        return;
    }
    const std::string characters = BytesAsCharacters(text);
    m_writer.String(characters.data(), static_cast<rapidjson::SizeType>(characters.size()));
}

void JsonOutput::Value(double number)
{
    const NumberText text(number);
    if (std::isfinite(number))
        m_writer.RawValue(text.View().data(), text.View().size(), rapidjson::kNumberType);
    else
        m_writer.String(text.View().data(), static_cast<rapidjson::SizeType>(text.View().size()));
}

void JsonOutput::Value(const CPointD& point)
{
    m_writer.StartArray();
    Value(point.x);
    Value(point.y);
    m_writer.EndArray();
}

void JsonOutput::Value(const CPointN& point)
{
    m_writer.StartArray();
    Value(point.x);
    Value(point.y);
    m_writer.EndArray();
}

void JsonOutput::Value(const CStringArray& texts)
{
    m_writer.StartArray();
    for (INT_PTR i = 0; i < texts.GetSize(); ++i)
        Value(texts[i]);
    m_writer.EndArray();
}

void JsonOutput::Value(const CArrayN& numbers)
{
    m_writer.StartArray();
    for (INT_PTR i = 0; i < numbers.GetSize(); ++i)
        Value(numbers[i]);
    m_writer.EndArray();
}

void JsonOutput::Finish()
{
    m_output.Put('\n');
    m_output.Flush();
}
