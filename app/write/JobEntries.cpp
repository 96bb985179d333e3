#include "write/JobEntries.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

bool IsOwnDirectory(const CString& name)
{
    static constexpr const char* kNames[] = {"fonts", "matrix", "misc",     "steps", "symbols",  "input",
                                             "ext",   "output", "stackups", "user",  "whltemps", "wheels"};
    return std::any_of(std::begin(kNames), std::end(kNames),
                       [&](const char* own) { return name.CompareNoCase(own) == 0; });
}

std::vector<CString> ComponentsOf(const CString& name)
{
    std::vector<CString> components;
    for (const fs::path& part : fs::path(std::string(name.View())))
        if (!part.empty() && part != "." && part != part.root_path())
            components.emplace_back(part.string().c_str());
    return components;
}

bool IsNamedByPath(const CJOBXSpecialSymbol& symbol)
{
    return ComponentsOf(symbol.m_sName).size() > 1;
}
