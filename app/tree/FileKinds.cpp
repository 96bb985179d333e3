#include "tree/FileKinds.h"

#include "model/Glob.h"

namespace
{
struct FileKind
{
    const char* pattern; // "*" matches "/", too
    const char* kind;
};

// Tried from the top, the first match wins.
constexpr FileKind kFileKinds[] = {
    {"*/.*.sum", "checksum"},
    {"matrix/matrix", "steps and layers"},
    {"misc/info", "job information"},
    {"misc/attrlist", "attributes of the job"},
    {"misc/sysattr*", "attribute definitions"},
    {"misc/userattr*", "attribute definitions"},
    {"misc/last_*", "history of the job"},
    {"misc/job_name", "name of the job"},
    {"misc/metadata.xml", "metadata"},
    {"fonts/*", "font"},
    {"symbols/*/features", "user symbol"},
    {"symbols/*/attrlist", "attributes of a symbol"},
    {"steps/*/layers/*/features", "features"},
    {"steps/*/layers/*/components", "components"},
    {"steps/*/layers/*/tools", "drill tools"},
    {"steps/*/layers/*/attrlist", "attributes of a layer"},
    {"steps/*/layers/*/profile", "outline of a layer"},
    {"steps/*/layers/*/notes", "notes"},
    {"steps/*/layers/*/dimensions", "dimensions"},
    {"steps/*/eda/data", "EDA data"},
    {"steps/*/eda/shortf", "intended shorts"},
    {"steps/*/netlists/*/netlist", "netlist"},
    {"steps/*/boms/*", "parts list"},
    {"steps/*/stephdr", "step header"},
    {"steps/*/profile", "outline of the step"},
    {"steps/*/attrlist", "attributes of a step"},
    {"steps/*/zones", "zones"},
    {"steps/*/impedance.xml", "impedance"},
    {"wheels/*", "aperture wheel"},
    {"input/*", "input of the job"},
    {"output/*", "output of the job"},
    {"user/*", "user's file"},
    {"forms/*", "form"},
    {"flows/*", "flow"},
    {"ext/*", "extension"},
};
} // namespace

std::string KindOfFile(std::string_view path)
{
    std::string_view plain = path;
    for (const std::string_view suffix : {".Z", ".z", ".gz"})
        if (plain.ends_with(suffix))
        {
            plain.remove_suffix(suffix.size());
            break;
        }
    for (const auto& [pattern, kind] : kFileKinds)
        if (MatchesGlob(pattern, plain, LetterCase::Ignored))
            return plain.size() == path.size() ? kind : std::string(kind) + ", compressed";
    return {};
}
