#pragma once

#include "JOBXCLSDLL.h"
#include "output/Output.h"
#include "output/ProgressLine.h"

#include <rapidjson/writer.h>

#include <concepts>
#include <cstdint>
#include <string_view>

// How the bytes of a text become characters.
enum class TextBytes
{
    Utf8OrLatin1, // well-formed UTF-8 is kept, the bytes of any other text become U+0000 to U+00FF
    Latin1,       // the bytes of every text become U+0000 to U+00FF, so that they can be recovered
};

// Writes one JSON document as it goes; it keeps only the nesting depth.
// Numbers use the shortest form that round-trips; infinities and NaN are strings. Points are [x, y].
class JsonOutput
{
public:
    JsonOutput(Output& output, TextBytes textBytes) : m_output(output), m_writer(output), m_textBytes(textBytes) {}

    void Value(std::string_view text);
    void Value(const CString& text) { Value(text.View()); }
    void Value(int number) { m_writer.Int(number); }
    void Value(std::int64_t number) { m_writer.Int64(number); }
    void Value(double number);
    void Null() { m_writer.Null(); }
    void True() { m_writer.Bool(true); }
    // Not for pointers, which turn into truth values before they turn into texts.
    template <std::same_as<bool> Truth>
    void Value(Truth truth)
    {
        m_writer.Bool(truth);
    }
    void Value(const CPointD& point);
    void Value(const CPointN& point);
    void Value(const CStringArray& texts);
    void Value(const CArrayN& numbers);

    // An object or array whose members or elements `fill` writes.
    template <class Fill>
    void Object(Fill fill)
    {
        m_writer.StartObject();
        fill();
        m_writer.EndObject();
    }
    template <class Fill>
    void Array(Fill fill)
    {
        m_writer.StartArray();
        fill();
        m_writer.EndArray();
    }

    void Key(std::string_view key) { m_writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size())); }
    template <class T>
    void Member(std::string_view key, const T& value)
    {
        Key(key);
        Value(value);
    }
    template <class Fill>
    void ObjectMember(std::string_view key, Fill fill)
    {
        Key(key);
        Object(fill);
    }
    template <class Fill>
    void ArrayMember(std::string_view key, Fill fill)
    {
        Key(key);
        Array(fill);
    }
    // An array: calls `write` for every record of a list of pointers.
    template <class List, class Write>
    void Records(std::string_view key, const List& list, Write write)
    {
        Key(key);
        m_writer.StartArray();
        for (const auto& record : list.Records())
            write(record);
        m_writer.EndArray();
    }

    // From now on, counts the records of which a job has most; borrows the progress.
    void CountRecords(CountedProgress& progress) { m_progress = &progress; }
    void DidRecord()
    {
        if (m_progress != nullptr)
            m_progress->Did(1);
    }

    // Ends the document with a line end and flushes it.
    void Finish();

private:
    Output& m_output;
    rapidjson::Writer<Output> m_writer;
    TextBytes m_textBytes;
    CountedProgress* m_progress = nullptr;
};
