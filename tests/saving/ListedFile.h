// Reads a file of a job completely, lists its lines, and looks at all fields of what was read.
#pragma once

#include "foundation/base/RecordFields.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/corekit/CPointN.h"
#include "foundation/framework/CStringArray.h"
#include "reading/CSourceFile.h"
#include "reading/RecordedMessages.h"
#include "saving/CRecordLines.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

namespace listed_file
{
// Reads one file as the reader of that kind does in a job with these definitions. Keeps the messages.
class CFileReading
{
public:
    CAttributeTypes types{};
    std::vector<std::string> messages;

    template <class Object, class Read>
    std::unique_ptr<Object> FromText(const std::string& text, Read read)
    {
        const TempDir dir;
        dir.Write("file", text);
        auto object = std::make_unique<Object>();
        RecordedMessages sink;
        const CJOBXreading reading = sink.Reading();
        CReadingJob job{reading, CString(dir.Path("").c_str())};
        job.types = types;
        CMessageList list(reading);
        const CReadingContext context{job, list};
        CSourceFile file(context, CSourceFolder(CString(dir.Path("").c_str())), "file", Presence::Needed);
        read(context, file, *object);
        list.Deliver();
        messages = sink.lines;
        return object;
    }
};

using Lines = std::vector<std::string>;

inline Lines LinesOf(const CRecordLines& listed)
{
    Lines lines;
    for (const CRecordLines::Line& line : listed.Lines())
        lines.emplace_back(listed.TextOf(line));
    return lines;
}

// Each line that knows where it came from has that place in the list, as in a file that is listed just as it is.
inline void ExpectOwnLines(const CRecordLines& listed, const std::string& text)
{
    EXPECT_EQ(listed.WholeText(), text);
    int number = 0;
    int known = 0;
    for (const CRecordLines::Line& line : listed.Lines())
    {
        ++number;
        known += line.sourceLine > 0 ? 1 : 0;
        const int own = line.sourceLine == CRecordLines::kUnknownLine ? number : line.sourceLine;
        EXPECT_EQ(own, number) << listed.TextOf(line);
    }
    EXPECT_GT(known, 0);
}

inline std::string NumberText(double number)
{
    std::array<char, 40> text{};
    const double plain = number == 0.0 ? 0.0 : number; // -0 equals 0
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.17g", plain));
    return text.data();
}

template <class Record>
void AppendFields(const Record& record, std::string& text);

template <class Field, class Record>
void AppendField(const Record& record, std::string& text)
{
    using Kind = jobx::FieldKind;
    constexpr Kind kKind = Field::kKind;
    if constexpr (kKind == Kind::Class)
    {
        Field::kField.access.Find(record, [&](const auto& classed) { AppendFields(classed, text); });
    }
    else if constexpr (kKind == Kind::Records)
    {
        const auto& list = Field::Get(record);
        for (decltype(list.GetSize()) i = 0; i < list.GetSize(); ++i)
            AppendFields(*list.GetAt(i), text);
    }
    else if constexpr (kKind == Kind::Texts || kKind == Kind::Parameters)
    {
        for (INT_PTR i = 0; i < Field::Get(record).GetSize(); ++i)
            text += std::string(Field::Get(record).GetAt(i).View()) + ',';
    }
    else if constexpr (kKind == Kind::Numbers)
    {
        for (INT_PTR i = 0; i < Field::Get(record).GetSize(); ++i)
            text += std::to_string(Field::Get(record).GetAt(i)) + ',';
    }
    else if constexpr (kKind == Kind::Text)
        text += Field::Get(record).View();
    else if constexpr (kKind == Kind::Coordinate)
        text += NumberText(Field::Get(record).GetX()) + ',' + NumberText(Field::Get(record).GetY());
    else if constexpr (kKind == Kind::Count)
        text += std::to_string(Field::Get(record).x) + ',' + std::to_string(Field::Get(record).y);
    else if constexpr (kKind == Kind::Unit || kKind == Kind::AttributeKind)
        text += std::to_string(static_cast<int>(Field::Get(record)));
    else if constexpr (kKind != Kind::Table && kKind != Kind::OptionalPart && kKind != Kind::Part)
        text += NumberText(static_cast<double>(Field::Get(record)));
}

// Every field that complete reading fills, except the lines: two objects with equal texts hold the same.
template <class Record>
void AppendFields(const Record& record, std::string& text)
{
    text += std::string("{") + typeid(Record).name() + '\n';
    jobx::ForEachField<Record>(
        [&](auto field)
        {
            using Field = decltype(field);
            if constexpr (Field::kKind != jobx::FieldKind::LineNumber)
            {
                text += std::string(Field::kField.key) + '=';
                AppendField<Field>(record, text);
                text += '\n';
            }
        });
    text += "}\n";
}
template <class Record>
std::string TextOfFields(const Record& record)
{
    std::string text;
    AppendFields(record, text);
    return text;
}

// The first line in which the texts differ, for texts that are too long to show whole; "" for equal texts.
inline std::string FirstDifference(const std::string& a, const std::string& b)
{
    const auto [at, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (at == a.end() && other == b.end())
        return {};
    const auto lineOf = [](const std::string& text, std::string::const_iterator where)
    {
        const auto place = static_cast<std::size_t>(where - text.begin());
        const std::size_t begin = place == 0 ? 0 : text.rfind('\n', place - 1) + 1;
        return text.substr(begin, text.find('\n', place) - begin);
    };
    return '"' + lineOf(a, at) + "\" and \"" + lineOf(b, other) + '"';
}

// Changes each value of a record, and of those below it, to another one and back. `Changed` gets the name of the field
// while it is changed.
class CFieldWalk
{
public:
    using Changed = std::function<void(const std::string& field)>;

    explicit CFieldWalk(Changed changed) : m_changed(std::move(changed)) {}

    template <class Record>
    void Walk(Record& record)
    {
        jobx::ForEachField<Record>(
            [&](auto field)
            {
                using Field = decltype(field);
                const std::string name =
                    std::string(jobx::Fields<Record>::kName.key) + '.' + std::string(Field::kField.key);
                if constexpr (Field::kKind == jobx::FieldKind::Class)
                    Field::kField.access.Find(record, [&](auto& classed) { Walk(classed); });
                else if constexpr (Field::kKind == jobx::FieldKind::Records)
                    WalkList<Field>(record);
                else
                    Change<Field>(record, name);
            });
    }

private:
    template <class Field, class Record>
    void WalkList(Record& record)
    {
        if constexpr (requires { requires std::is_lvalue_reference_v<decltype(Field::Ref(record))>; })
            jobx::ForEachRecord(Field::Ref(record), [this](auto& below) { this->Walk(below); });
    }
    template <class Field, class Record>
    void Change(Record& record, const std::string& name)
    {
        using Kind = jobx::FieldKind;
        constexpr Kind kKind = Field::kKind;
        if constexpr (kKind == Kind::Text)
            Try<Field>(record, name, CString((std::string(Field::Get(record).View()) + 'x').c_str()));
        else if constexpr (kKind == Kind::Texts || kKind == Kind::Parameters)
        {
            for (INT_PTR i = 0; i < Field::Get(record).GetSize(); ++i)
            {
                CStringArray texts = Field::Get(record);
                texts[i] += "1";
                Try<Field>(record, name, texts);
            }
        }
        else if constexpr (kKind == Kind::Numbers)
        {
            for (INT_PTR i = 0; i < Field::Get(record).GetSize(); ++i)
            {
                CArrayN numbers = Field::Get(record);
                numbers[i] += 50;
                Try<Field>(record, name, numbers);
            }
        }
        else if constexpr (kKind == Kind::Coordinate)
        {
            const CPointD point = Field::Get(record);
            Try<Field>(record, name, CPointD(point.x + 0.5, point.y));
            Try<Field>(record, name, CPointD(point.x, point.y + 0.5));
        }
        else if constexpr (kKind == Kind::Count)
        {
            const CPointN count = Field::Get(record);
            Try<Field>(record, name, CPointN(count.x + 1, count.y));
            Try<Field>(record, name, CPointN(count.x, count.y + 1));
        }
        else if constexpr (kKind == Kind::Unit)
            Try<Field>(record, name, Field::Get(record) == JOBXunit::Inch ? JOBXunit::Millimetre : JOBXunit::Inch);
        else if constexpr (kKind == Kind::Real || kKind == Kind::Angle || kKind == Kind::Length)
            Try<Field>(record, name, Field::Get(record) + 0.5);
        else if constexpr (kKind == Kind::Integer || kKind == Kind::Index || kKind == Kind::UniqueNumber)
            Try<Field>(record, name, Field::Get(record) == 1 ? 0 : Field::Get(record) + 1);
        else
            static_assert(kKind == Kind::LineNumber || kKind == Kind::Table || kKind == Kind::OptionalPart ||
                          kKind == Kind::Part || kKind == Kind::AttributeKind);
    }
    template <class Field, class Record, class Value>
    void Try(Record& record, const std::string& name, const Value& value)
    {
        const std::remove_cvref_t<decltype(Field::Get(record))> old = Field::Get(record);
        Field::Set(record, value);
        m_changed(name);
        Field::Set(record, old);
    }

    Changed m_changed;
};

// The fields of which no change alters a listed line.
template <class Record, class List>
std::vector<std::string> UnlistedFields(Record& record, List list)
{
    const std::string before = list(record);
    std::vector<std::pair<std::string, bool>> fields;
    CFieldWalk walk(
        [&](const std::string& field)
        {
            const auto isIt = [&field](const auto& known) { return known.first == field; };
            auto found = std::find_if(fields.begin(), fields.end(), isIt);
            if (found == fields.end())
                found = fields.insert(fields.end(), {field, false});
            found->second = found->second || list(record) != before;
        });
    walk.Walk(record);
    EXPECT_EQ(list(record), before) << "the walk restores everything";
    std::vector<std::string> unlisted;
    for (const auto& [field, isListed] : fields)
        if (!isListed)
            unlisted.push_back(field);
    return unlisted;
}
} // namespace listed_file
