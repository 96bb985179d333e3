#include "reading/AttributeTypesReader.h"

#include "foundation/corekit/CKUtility.h"

#include <set>
#include <string>

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
    {"INTEGER", JOBXattributeKind::Integer}, {"FLOAT", JOBXattributeKind::Real},
};

// False for a line that does not begin a definition.
bool IsBegin(std::string_view line, JOBXattributeKind& kind)
{
    const std::string_view word = TrimmedRight(line.substr(0, line.find('{')));
    if (word.size() == line.size())
        return false;
    kind = JOBXattributeKind::Unknown;
    for (const TypeName& name : kTypeNames)
        if (AsciiEqualNoCase(word, name.begins))
            kind = name.kind;
    return true;
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
void ReadTypes(CTextScanner& text, CAttributeTypes& types)
{
    CAttributeTypes::Type type;
    std::string name;
    while (text.NextLine())
    {
        const std::string_view line = text.Line();
        JOBXattributeKind kind{};
        if (IsBegin(line, kind))
        {
            type = {kind, {}};
            name.clear();
        }
        else if (BeginsWith(line, "NAME="))
            name = KeyValue(line);
        else if (BeginsWith(line, "OPTIONS="))
            type.options = SplitOptions(KeyValue(line));
        else if (line.front() == '}' && !name.empty())
            types.Add(name, std::exchange(type, {}));
    }
}
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
            ReadTypes(file.Text(), types);
    };
    read("userattr");
    for (const std::string& name : names)
        read(name.c_str());
}
