#include "JobSchema.h"

#include "JOBXCLSDLL_fields.h"
#include "model/FieldWords.h"
#include "json/RecordJson.h"
#include "json/SchemaVersion.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <set>
#include <span>
#include <string_view>
#include <vector>

namespace
{
using Kind = jobx::FieldKind;

// Its name in $defs for a record that has one class.
template <class Record>
constexpr std::string_view kDefinition = jobx::Fields<Record>::kName.key;

class SchemaWriter
{
public:
    explicit SchemaWriter(JOBXway way) : m_isComplete(way == JOBXway::Complete) { m_writer.SetIndent(' ', 2); }

    std::string Text() const { return std::string(m_buffer.GetString(), m_buffer.GetSize()) + "\n"; }

    void Document()
    {
        Object(
            [this]
            {
                Member("$schema", "https://json-schema.org/draft/2020-12/schema");
                Member("title", m_isComplete ? "What jobx json prints" : "What jobx json --legacy prints");
                Member("description",
                       "Everything that was read of one job. Texts are carried as they are when they are UTF-8, else "
                       "byte by byte as U+0000 to U+00FF; with --latin1 always byte by byte.");
                Member("type", "object");
                ObjectMember("properties",
                             [this]
                             {
                                 Result();
                                 if (m_isComplete)
                                     SchemaVersion();
                                 Properties<CJOBX>({});
                             });
                EndOfProperties<CJOBX>(m_isComplete ? std::vector<std::string_view>{"result", "schemaVersion"}
                                                    : std::vector<std::string_view>{"result"});
                ObjectMember("$defs",
                             [this]
                             {
                                 Values();
                                 DefineFields<CJOBX>();
                             });
            });
    }

private:
    template <class Fill>
    void Object(Fill fill)
    {
        m_writer.StartObject();
        fill();
        m_writer.EndObject();
    }
    void Key(std::string_view key) { m_writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size())); }
    void String(std::string_view text) { m_writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size())); }
    void Member(std::string_view key, std::string_view text)
    {
        Key(key);
        String(text);
    }
    template <class Fill>
    void ObjectMember(std::string_view key, Fill fill)
    {
        Key(key);
        Object(fill);
    }
    void Reference(std::string_view definition) { Member("$ref", "#/$defs/" + std::string(definition)); }

    void Result()
    {
        ObjectMember("result",
                     [this]
                     {
                         Key("enum");
                         m_writer.StartArray();
                         m_writer.Int(0);
                         m_writer.Int(1);
                         m_writer.EndArray();
                         Member("description", "1 when the job was read, 0 when the directory holds no job");
                     });
    }

    void SchemaVersion()
    {
        ObjectMember("schemaVersion",
                     [this]
                     {
                         Key("const");
                         m_writer.Int(kSchemaVersion);
                         Member("description", "Higher when a member gets another meaning or is removed");
                     });
    }
    bool Has(const jobx::FieldFacts& field) const { return jobx::IsInDocuments(field, m_isComplete); }

    void Values()
    {
        ObjectMember("number",
                     [this]
                     {
                         Member("description", "A number; infinities and nan as texts");
                         Key("oneOf");
                         m_writer.StartArray();
                         Object([this] { Member("type", "number"); });
                         Object(
                             [this]
                             {
                                 Key("enum");
                                 Strings({"inf", "-inf", "nan", "-nan"});
                             });
                         m_writer.EndArray();
                     });
        Pair("point", "x and y in the unit of the file", [this] { Reference("number"); });
        Pair("count", "Columns and rows", [this] { Member("type", "integer"); });
    }
    void Strings(const std::vector<std::string_view>& texts)
    {
        m_writer.StartArray();
        for (const std::string_view text : texts)
            String(text);
        m_writer.EndArray();
    }
    template <class Fill>
    void Pair(std::string_view name, std::string_view about, Fill ofEach)
    {
        ObjectMember(name,
                     [&]
                     {
                         Member("description", about);
                         Member("type", "array");
                         ObjectMember("items", ofEach);
                         Key("minItems");
                         m_writer.Int(2);
                         Key("maxItems");
                         m_writer.Int(2);
                     });
    }

    // Definitions of the records inside one, and then of itself.
    template <class Record>
    void Define()
    {
        if (!m_defined.insert(kDefinition<Record>).second)
            return;
        DefineFields<Record>();
        if constexpr (HasClasses<Record>())
            DefineClasses<Record>();
        else if constexpr (!requires { jobx::Fields<Record>::kIsItsList; })
            ObjectMember(kDefinition<Record>, [this] { RecordSchema<Record, Record>({}); });
    }
    template <class Record>
    void DefineFields()
    {
        jobx::ForEachField<Record>(
            [this](auto field)
            {
                using Field = decltype(field);
                if (!Has(Field::kField))
                    return;
                if constexpr (Field::kKind == Kind::Part)
                    Define<std::remove_cvref_t<decltype(Field::Get(std::declval<const Record&>()))>>();
                else if constexpr (Field::kKind == Kind::OptionalPart)
                    Define<jobx::RecordAt<decltype(Field::Get(std::declval<const Record&>()))>>();
                else if constexpr (Field::kKind == Kind::Records)
                    Define<jobx::RecordOfList<decltype(Field::Get(std::declval<const Record&>()))>>();
                else if constexpr (Field::kKind == Kind::Class)
                    Field::kField.access.ForEach(
                        [this](auto* none) { this->template DefineFields<std::remove_pointer_t<decltype(none)>>(); });
            });
    }
    template <class Record>
    static constexpr bool HasClasses()
    {
        return std::apply(
            [](const auto&... fields)
            { return ((fields.documents == jobx::FieldDocuments::All && fields.kKind == Kind::Class) || ...); },
            jobx::Fields<Record>::kList);
    }
    template <class Record, class Use>
    static void ForEachClass(Use use)
    {
        jobx::ForEachField<Record>(
            [&](auto field)
            {
                if constexpr (decltype(field)::kKind == Kind::Class)
                    decltype(field)::kField.access.ForEach([&]<class Class>(Class*)
                                                           { use.template operator()<Class>(); });
            });
    }
    template <class Record>
    void DefineClasses()
    {
        ForEachClass<Record>(
            [this]<class Class>() {
                ObjectMember(kDefinition<Class>,
                             [this] { RecordSchema<Class, Record, Class>(jobx::Fields<Class>::kClassText); });
            });
        ObjectMember(kDefinition<Record>,
                     [this]
                     {
                         Member("description", jobx::Fields<Record>::kName.about);
                         Key("oneOf");
                         m_writer.StartArray();
                         ForEachClass<Record>([this]<class Class>()
                                              { Object([this] { Reference(kDefinition<Class>); }); });
                         m_writer.EndArray();
                     });
    }

    // An object with the fields of all these.
    template <class Named, class... Records>
    void RecordSchema(std::string_view classText)
    {
        Member("type", "object");
        Member("description", jobx::Fields<Named>::kName.about);
        ObjectMember("properties", [&] { (Properties<Records>(classText), ...); });
        EndOfProperties<Records...>({});
    }
    template <class Record>
    void AddRequired(std::vector<std::string_view>& required) const
    {
        jobx::ForEachField<Record>(
            [&](auto field)
            {
                using Field = decltype(field);
                if (Has(Field::kField) && Field::kKind != Kind::Class &&
                    !(m_isComplete && CanBeLeftOut<Record>(Field::kField.key)))
                    required.push_back(Field::kField.key);
            });
    }
    template <class... Records>
    void EndOfProperties(std::vector<std::string_view> required)
    {
        (AddRequired<Records>(required), ...);
        Key("required");
        Strings(required);
        Key("additionalProperties");
        m_writer.Bool(false);
    }
    template <class Record>
    void Properties(std::string_view classText)
    {
        jobx::ForEachField<Record>(
            [&](auto field)
            {
                using Field = decltype(field);
                if constexpr (Field::kKind != Kind::Class && Field::kField.documents != jobx::FieldDocuments::None)
                    if (Has(Field::kField))
                        ObjectMember(Field::kField.key,
                                     [&]
                                     {
                                         if (Field::kField.isClassText && !classText.empty())
                                             Member("const", classText);
                                         else
                                             FieldSchema<Record, Field>();
                                     });
            });
    }
    template <class Record, class Field>
    void FieldSchema()
    {
        using Value = std::remove_cvref_t<decltype(Field::Get(std::declval<const Record&>()))>;
        if constexpr (Field::kKind == Kind::Records)
            ListSchema<jobx::RecordOfList<Value>>();
        else if constexpr (Field::kKind == Kind::Part)
            Reference(kDefinition<Value>);
        else if constexpr (Field::kKind == Kind::OptionalPart)
            OptionalSchema<jobx::RecordAt<Value>>();
        else if (Field::kField.isAttributeValue && m_isComplete)
            Types({"string", "boolean"});
        else
            ValueSchema(Field::kKind);
        if (m_isComplete && CanBeLeftOut<Record>(Field::kField.key))
            Member("description", std::string(Field::kField.about) + "; in layers of steps not with --no-features");
        else if (!Field::kField.about.empty())
            Member("description", Field::kField.about);
    }
    template <class Record>
    void ListSchema()
    {
        Member("type", "array");
        ObjectMember("items",
                     [this]
                     {
                         if constexpr (requires { jobx::Fields<Record>::kIsItsList; })
                             ItsListSchema<Record>();
                         else
                             Reference(kDefinition<Record>);
                     });
    }
    template <class Record>
    void OptionalSchema()
    {
        Key("oneOf");
        m_writer.StartArray();
        Object([this] { Reference(kDefinition<Record>); });
        Object([this] { Member("type", "null"); });
        m_writer.EndArray();
    }
    template <class Record>
    void ItsListSchema()
    {
        jobx::ForEachField<Record>([this](auto field) { this->template FieldSchema<Record, decltype(field)>(); });
    }
    void Types(const std::vector<std::string_view>& types)
    {
        Key("type");
        Strings(types);
    }
    void OneOf(std::span<const std::string_view> words)
    {
        Key("enum");
        Strings({words.begin(), words.end()});
    }
    void ValueSchema(Kind kind)
    {
        switch (kind)
        {
        case Kind::UniqueNumber:
            return Types({"integer", "null"});
        case Kind::Unit:
            return OneOf(kUnitWords);
        case Kind::AttributeKind:
            return OneOf(kKindWords);
        case Kind::Integer:
        case Kind::Index:
        case Kind::LineNumber:
            return Member("type", "integer");
        case Kind::Real:
        case Kind::Angle:
        case Kind::Length:
            return Reference("number");
        case Kind::Coordinate:
            return Reference("point");
        case Kind::Count:
            return Reference("count");
        case Kind::Texts:
        case Kind::Parameters:
            return ArrayOf("string");
        case Kind::Numbers:
            return ArrayOf("integer");
        default:
            return Member("type", "string");
        }
    }
    void ArrayOf(std::string_view type)
    {
        Member("type", "array");
        ObjectMember("items", [&] { Member("type", type); });
    }

    const bool m_isComplete;
    rapidjson::StringBuffer m_buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> m_writer{m_buffer};
    std::set<std::string_view> m_defined;
};
} // namespace

std::string JobSchema(JOBXway way)
{
    SchemaWriter schema(way);
    schema.Document();
    return schema.Text();
}
