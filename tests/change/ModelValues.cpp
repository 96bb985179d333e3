#include "change/ModelValues.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace
{
class CValueWalk
{
public:
    explicit CValueWalk(bool withPlaces = true) : m_withPlaces(withPlaces) {}

    template <class Record>
    void Add(const Record& record, const std::string& place)
    {
        jobx::ForEachField<Record>(
            [&](auto field)
            {
                using Field = decltype(field);
                if (m_withPlaces)
                    AddField<Field>(record, place + (place.empty() ? "" : ".") + std::string(Field::kField.key), place);
                else
                    AddField<Field>(record, place, place);
            });
    }

    ModelValues values;

private:
    template <class Field, class Record>
    void AddField(const Record& record, const std::string& name, const std::string& place)
    {
        using Kind = jobx::FieldKind;
        constexpr Kind kKind = Field::kKind;
        if constexpr (kKind == Kind::Class)
            Field::kField.access.Find(record, [&](const auto& classed) { Add(classed, place); });
        else if constexpr (kKind == Kind::Part)
            Add(Field::Get(record), name);
        else if constexpr (kKind == Kind::OptionalPart)
        {
            AddText(name, kKind, Field::Get(record) == nullptr ? "none" : "there");
            if (Field::Get(record) != nullptr)
                Add(*Field::Get(record), name);
        }
        else if constexpr (kKind == Kind::Records)
            AddList(Field::Get(record), name);
        else if constexpr (kKind != Kind::Table)
            AddValue(name, kKind, Field::Get(record));
    }
    template <class List>
    void AddList(const List& list, const std::string& name)
    {
        AddText(name, jobx::FieldKind::Records, std::to_string(list.GetSize()));
        for (decltype(list.GetSize()) i = 0; i < list.GetSize(); ++i)
            if (const auto* const record = list.GetAt(i))
                Add(*record, Place(name, i));
    }
    std::string Place(const std::string& list, long long index) const
    {
        return m_withPlaces ? list + "[" + std::to_string(index) + "]" : std::string();
    }
    std::string Place(const std::string& point, const char* coordinate) const
    {
        return m_withPlaces ? point + coordinate : std::string();
    }
    void AddText(const std::string& name, jobx::FieldKind kind, std::string text)
    {
        values.push_back({name, kind, std::move(text)});
    }

    void AddValue(const std::string& name, jobx::FieldKind kind, const CString& text)
    {
        AddText(name, kind, std::string(text.View()));
    }
    void AddValue(const std::string& name, jobx::FieldKind kind, double number)
    {
        values.push_back({name, kind, "", number});
    }
    template <class Whole>
    requires std::is_integral_v<Whole>
    void AddValue(const std::string& name, jobx::FieldKind kind, Whole number)
    {
        AddText(name, kind, std::to_string(number));
    }
    template <class Enum>
    requires std::is_enum_v<Enum>
    void AddValue(const std::string& name, jobx::FieldKind kind, Enum value)
    {
        AddText(name, kind, std::to_string(static_cast<int>(value)));
    }
    void AddValue(const std::string& name, jobx::FieldKind kind, const CPointD& point)
    {
        AddValue(Place(name, ".x"), kind, point.x);
        AddValue(Place(name, ".y"), kind, point.y);
    }
    void AddValue(const std::string& name, jobx::FieldKind kind, const CPointN& point)
    {
        AddValue(Place(name, ".x"), kind, point.x);
        AddValue(Place(name, ".y"), kind, point.y);
    }
    void AddValue(const std::string& name, jobx::FieldKind kind, const CStringArray& texts)
    {
        AddText(name, kind, std::to_string(texts.GetSize()));
        for (INT_PTR i = 0; i < texts.GetSize(); ++i)
            AddValue(Place(name, i), kind, texts[i]);
    }
    void AddValue(const std::string& name, jobx::FieldKind kind, const CArrayN& numbers)
    {
        AddText(name, kind, std::to_string(numbers.GetSize()));
        for (INT_PTR i = 0; i < numbers.GetSize(); ++i)
            AddValue(Place(name, i), kind, numbers[i]);
    }

    bool m_withPlaces;
};

// Whether both texts are numbers that differ by no more than that. Attributes lose the zeros at the end of their values.
bool AreNear(const std::string& one, const std::string& other, double tolerance)
{
    char* endOfOne = nullptr;
    char* endOfOther = nullptr;
    const double a = std::strtod(one.c_str(), &endOfOne);
    const double b = std::strtod(other.c_str(), &endOfOther);
    return tolerance > 0.0 && !one.empty() && !other.empty() && *endOfOne == '\0' && *endOfOther == '\0' &&
           std::abs(a - b) <= tolerance;
}

bool IsSame(const ModelValue& one, const ModelValue& other, double tolerance)
{
    return one.place == other.place && std::abs(one.number - other.number) <= tolerance &&
           (one.text == other.text || AreNear(one.text, other.text, tolerance));
}

template <class Record>
ModelValues ValuesOfRecord(const Record& record, bool withPlaces = true)
{
    CValueWalk walk(withPlaces);
    walk.Add(record, "");
    return std::move(walk.values);
}
} // namespace

ModelValues ValuesOf(const CJOBX& job)
{
    return ValuesOfRecord(job);
}

ModelValues ValuesWithoutPlaces(const CJOBX& job)
{
    return ValuesOfRecord(job, false);
}

ModelValues ValuesOf(const CJOBXlayer& layer)
{
    return ValuesOfRecord(layer);
}

ModelValues ValuesOf(const CJOBXstepObj& step)
{
    return ValuesOfRecord(step);
}

void ExpectSameValues(const ModelValues& actual, const ModelValues& expected, double tolerance)
{
    EXPECT_EQ(actual.size(), expected.size());
    int failures = 0;
    for (std::size_t i = 0; i < std::min(actual.size(), expected.size()) && failures < 10; ++i)
    {
        const bool isSame = IsSame(actual[i], expected[i], tolerance);
        if (!isSame)
            ADD_FAILURE() << actual[i].place << ": \"" << actual[i].text << "\" " << actual[i].number << " instead of "
                          << expected[i].place << ": \"" << expected[i].text << "\" " << expected[i].number;
        failures += isSame ? 0 : 1;
    }
}

std::unique_ptr<CJOBX> ReadCompletely(const std::string& path)
{
    auto job = std::make_unique<CJOBX>();
    CJOBXreading reading;
    reading.way = JOBXway::Complete;
    job->SetReading(reading);
    EXPECT_EQ(job->ParseODBOfMFC(path.c_str()), 1) << path;
    return job;
}
