#include "reading/AttributeTypesReader.h"

#include "foundation/corekit/CKUtility.h"
#include "reading/DefinitionMessageKinds.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>

namespace
{
// A definition begins with its type and an opening brace; a closing brace ends its keys.
struct TypeName
{
    std::string_view begins;
    JOBXattributeKind kind;
};
constexpr TypeName kTypeNames[] = {
    {"BOOLEAN", JOBXattributeKind::Flag},    {"TEXT", JOBXattributeKind::Text},  {"OPTION", JOBXattributeKind::Option},
    {"INTEGER", JOBXattributeKind::Integer}, {"FLOAT", JOBXattributeKind::Real}, {"REAL", JOBXattributeKind::Real},
};

// The type that a line "TYPE {" names; "" for another line.
std::string_view TypeIn(std::string_view line)
{
    const std::size_t brace = line.find('{');
    return brace == std::string_view::npos ? std::string_view() : TrimmedRight(line.substr(0, brace));
}

std::vector<std::string> SplitOptions(std::string_view list)
{
    std::vector<std::string> options;
    for (std::size_t semicolon = 0; semicolon != std::string_view::npos;)
    {
        semicolon = list.find(';');
        options.emplace_back(Trimmed(list.substr(0, semicolon)));
        list = semicolon == std::string_view::npos ? std::string_view() : list.substr(semicolon + 1);
    }
    return options;
}

// Ignores the keys of a definition that values do not need.
class CTypesReading
{
public:
    CTypesReading(CSourceFile& file, CAttributeTypes& types)
        : m_text(file.Text()), m_messages(file.Messages()), m_types(types)
    {
    }

    void Read()
    {
        while (m_text.NextLine())
            ReadLine(m_text.Line());
        SayOpen();
    }

private:
    void ReadLine(std::string_view line)
    {
        const std::string_view key = TrimmedRight(line.substr(0, line.find('=')));
        if (const std::string_view type = TypeIn(line); !type.empty())
            Begin(type);
        else if (line.front() == '}')
            End();
        else if (key.size() < line.size() && AsciiEqualNoCase(key, "NAME"))
            m_name = KeyValue(line);
        else if (key.size() < line.size() && AsciiEqualNoCase(key, "OPTIONS"))
            m_type.options = SplitOptions(KeyValue(line));
        else if (key.size() < line.size() && AsciiEqualNoCase(key, "UNITS"))
            m_type.units = KeyValue(line);
    }

    void Begin(std::string_view type)
    {
        SayOpen();
        m_line = m_text.LineNumber();
        m_name.clear();
        const auto* const found =
            std::find_if(std::begin(kTypeNames), std::end(kTypeNames),
                         [&](const TypeName& name) { return AsciiEqualNoCase(type, name.begins); });
        const bool isKnown = found != std::end(kTypeNames);
        m_type = {isKnown ? found->kind : JOBXattributeKind::Unknown, {}};
        if (!isKnown)
            m_messages.SayUnknown(definition_message::kUnknown, m_line, "type", type);
    }
    void End()
    {
        if (m_line != 0 && m_name.empty())
            m_messages.Say(definition_message::kNoName, m_line, "The definition that begins here has no name.");
        if (!m_name.empty())
            m_types.Add(m_name, std::exchange(m_type, {}));
        m_line = 0;
    }
    void SayOpen()
    {
        if (m_line != 0)
            m_messages.Say(definition_message::kNotClosed, m_line, "The definition that begins here is not closed.");
    }

    CLineScanner& m_text;
    CFileMessages& m_messages;
    CAttributeTypes& m_types;
    CAttributeTypes::Type m_type;
    std::string m_name;
    int m_line = 0; // where the open definition begins; 0 if none is open
};
} // namespace

void ReadAttributeTypes(const CReadingContext& context, const CSourceFolder& misc, CAttributeTypes& types)
{
    CKUtility& files = *CKUtility::GetInstance();
    if (!files.IsDir(misc.Path()))
        return;
    CStringArray paths;
    files.GetAllFileListIn(misc.Path(), paths, "sysattr*", 0);
    std::set<std::string> names; // without the endings of compressed files: each is opened once
    for (INT_PTR i = 0; i < paths.GetSize(); ++i)
    {
        std::string_view name = paths[i].View();
        name.remove_prefix(name.size() -
                           static_cast<std::size_t>(files.GetSegmntFromFilePath(paths[i], 2).GetLength()));
        for (const std::string_view ending : {".Z", ".gz"})
            if (name.size() > ending.size() && AsciiEqualNoCase(name.substr(name.size() - ending.size()), ending))
                name.remove_suffix(ending.size());
        names.emplace(name);
    }
    const auto read = [&](const char* name)
    {
        CSourceFile file(context, misc, name, Presence::Optional);
        if (file.WasRead())
            CTypesReading(file, types).Read();
    };
    read("userattr");
    for (const std::string& name : names)
        read(name.c_str());
}
