// The schemas in docs/ against the lists of fields that they are made from.
#include "JOBXCLSDLL_fields.h"
#include "JobSchema.h"
#include "RunProgram.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <type_traits>
#include <vector>

namespace
{
void ExpectSchema(const std::string& name, JOBXway way)
{
    const std::string path = std::string(JOBX_DOCS_DIR "/") + name;
    const std::string schema = JobSchema(way);
    if (std::getenv("JOBX_WRITE_GOLDEN") != nullptr)
        std::ofstream(path, std::ios::binary) << schema;
    EXPECT_EQ(schema, FileBytes(path)) << "JOBX_WRITE_GOLDEN=1 app_tests --gtest_filter=Schema.* rewrites it";
}

template <class Record>
bool HasInDocuments(jobx::FieldKind kind, std::string_view key)
{
    bool isThere = false;
    jobx::ForEachField<Record>(
        [&](auto field)
        {
            using Field = decltype(field);
            isThere = isThere || (Field::kKind == kind && Field::kField.key == key && Field::kField.isShown &&
                                  jobx::IsInDocuments(Field::kField, true));
        });
    return isThere;
}

// What the document shows of each class below the job, by the members that complete reading adds to its bases.
class AddedMembers
{
public:
    template <class Record>
    void Walk()
    {
        const std::string name(jobx::Fields<Record>::kName.key);
        if (!m_walked.insert(name).second)
            return;
        using Kind = jobx::FieldKind;
        Note<Record, CJOBXmeasured>(name, Kind::Unit, "unit");
        Note<Record, CJOBXidentified>(name, Kind::UniqueNumber, "id");
        Note<Record, CJOBXtailed>(name, Kind::UniqueNumber, "id");
        Note<Record, CJOBXtailed>(name, Kind::Records, "attributes");
        Note<Record, CJOBXkeyed>(name, Kind::Records, "furtherKeys");
        Note<Record, CJOBXattributed>(name, Kind::OptionalPart, "attributeList");
        WalkInside<Record>();
    }

    std::vector<std::string> lacking;
    std::size_t shown = 0;

private:
    template <class Record, class Base>
    void Note(const std::string& name, jobx::FieldKind kind, const char* key)
    {
        if constexpr (std::is_base_of_v<Base, Record>)
        {
            if (HasInDocuments<Record>(kind, key))
                ++shown;
            else
                lacking.push_back(name + " lacks " + key);
        }
    }
    template <class Record>
    void WalkInside()
    {
        jobx::ForEachField<Record>(
            [&](auto field)
            {
                using Field = decltype(field);
                if constexpr (Field::kKind == jobx::FieldKind::Part)
                    Walk<std::remove_cvref_t<decltype(Field::Get(std::declval<const Record&>()))>>();
                else if constexpr (Field::kKind == jobx::FieldKind::OptionalPart)
                    Walk<jobx::RecordAt<decltype(Field::Get(std::declval<const Record&>()))>>();
                else if constexpr (Field::kKind == jobx::FieldKind::Records)
                    Walk<jobx::RecordOfList<decltype(Field::Get(std::declval<const Record&>()))>>();
            });
    }

    std::set<std::string> m_walked;
};

// Walks through a schema from its root and notes each object with a length that no object around it has the unit of.
class LengthsInSchema
{
public:
    explicit LengthsInSchema(const std::string& text) { m_schema.Parse(text.c_str()); }

    void Walk() { WalkObject(m_schema, "job", false); }

    std::set<std::string> withoutUnit;
    std::set<std::string> withUnit;

private:
    void WalkObject(const rapidjson::Value& object, const std::string& name, bool isMeasured)
    {
        const rapidjson::Value& properties = object["properties"];
        if (properties.HasMember("unit"))
        {
            withUnit.insert(name);
            isMeasured = true;
        }
        for (const auto& property : properties.GetObject())
            WalkValue(property.value, name, isMeasured);
    }
    void WalkValue(const rapidjson::Value& value, const std::string& name, bool isMeasured)
    {
        if (value.HasMember("items"))
            WalkValue(value["items"], name, isMeasured);
        if (value.HasMember("oneOf"))
            for (const rapidjson::Value& choice : value["oneOf"].GetArray())
                WalkValue(choice, name, isMeasured);
        if (!value.HasMember("$ref"))
            return;
        const std::string definition = std::string(value["$ref"].GetString()).substr(std::string("#/$defs/").size());
        if (definition == "point" || definition == "number")
        {
            if (!isMeasured)
                withoutUnit.insert(name);
        }
        else if (definition != "count" && m_walked.insert({definition, isMeasured}).second)
        {
            const rapidjson::Value& target = m_schema["$defs"][definition.c_str()];
            if (target.HasMember("properties"))
                WalkObject(target, definition, isMeasured);
            else
                WalkValue(target, definition, isMeasured);
        }
    }

    rapidjson::Document m_schema;
    std::set<std::pair<std::string, bool>> m_walked;
};
} // namespace

TEST(Schema, OfJobsIsWhatTheListsOfFieldsSay)
{
    ExpectSchema("job.schema.json", JOBXway::Complete);
}

TEST(Schema, OfJobsReadAsBeforeIsWhatTheListsOfFieldsSay)
{
    ExpectSchema("job.legacy.schema.json", JOBXway::Classic);
}

TEST(Schema, EveryRecordShowsWhatCompleteReadingAddsToIt)
{
    AddedMembers members;
    members.Walk<CJOBX>();
    EXPECT_THAT(members.lacking, testing::IsEmpty());
    EXPECT_GT(members.shown, 40U);
}

TEST(Schema, EveryLengthIsInAnObjectThatHasItsUnit)
{
    LengthsInSchema complete(JobSchema(JOBXway::Complete));
    complete.Walk();
    EXPECT_THAT(complete.withoutUnit, testing::IsEmpty());
    EXPECT_THAT(complete.withUnit, testing::ElementsAre("attributeList", "components", "eda", "font", "header", "layer",
                                                        "misc", "netlist", "tools"));
    LengthsInSchema legacy(JobSchema(JOBXway::Classic));
    legacy.Walk();
    EXPECT_THAT(legacy.withoutUnit, testing::Contains("header"));
}
