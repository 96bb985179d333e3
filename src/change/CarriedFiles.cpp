#include "change/CarriedFiles.h"

#include "change/DeleteWhere.h"
#include "foundation/framework/AsciiText.h"
#include "job/CJOBX.h"
#include "job/CJOBXmisc.h"

#include <string>

namespace
{
PathParts PartsOf(std::string_view path)
{
    PathParts parts;
    for (std::size_t end = path.find('/'); end != std::string_view::npos; end = path.find('/'))
    {
        parts.push_back(path.substr(0, end));
        path.remove_prefix(end + 1);
    }
    parts.push_back(path);
    return parts;
}

bool IsBelowPart(const PathParts& parts, std::size_t part, std::string_view name)
{
    return parts.size() > part + 1 && AsciiEqualNoCase(parts[part], name);
}
} // namespace

bool IsInStep(const PathParts& parts, const CString& step)
{
    return IsBelowPart(parts, 0, "steps") && IsBelowPart(parts, kStepInPath, step.View());
}

bool IsInLayer(const PathParts& parts, const CString& layer)
{
    return IsBelowPart(parts, 0, "steps") && IsBelowPart(parts, 2, "layers") &&
           IsBelowPart(parts, kLayerInPath, layer.View());
}

void DropCarriedFiles(CJOBX& job, const std::function<bool(const PathParts&)>& isUnwanted)
{
    DeleteWhere(*job.m_pMisc->GetCarriedFiles(),
                [&](const CJOBXcarriedFile& file, int) { return isUnwanted(PartsOf(file.GetPath().View())); });
}

void RenameInCarriedFiles(CJOBX& job, std::size_t part, const CString& name,
                          const std::function<bool(const PathParts&)>& isWanted)
{
    for (CJOBXcarriedFile& file : job.m_pMisc->GetCarriedFiles()->Records())
    {
        PathParts parts = PartsOf(file.GetPath().View());
        if (!isWanted(parts))
            continue;
        parts[part] = name.View();
        std::string path(parts.front());
        for (std::size_t i = 1; i < parts.size(); ++i)
            path.append(1, '/').append(parts[i]);
        file.SetPath(CString(std::string_view(path)));
    }
}
