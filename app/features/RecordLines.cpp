#include "features/RecordLines.h"

#include "reading/Files.h"

#include <fstream>

namespace
{
constexpr std::string_view kRecordLetters = "LPATBSlpatbs";
constexpr char kCompressed = '\x1f'; // begins the files of compress(1) and gzip

bool IsRecord(std::string_view line)
{
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    return !line.empty() && kRecordLetters.find(line.front()) != std::string_view::npos &&
           (line.size() == 1 || std::string_view(" \t;=\r").find(line[1]) != std::string_view::npos);
}
} // namespace

RecordLines FindRecordLines(const std::string& jobPath, const CString& step, const CString& layer)
{
    const CString job(jobPath.c_str());
    const auto pathOf = [&](const char* name)
    {
        CString below = Files().CKPathCombine(Files().CKPathCombine("steps", step), "layers");
        below = Files().CKPathCombine(Files().CKPathCombine(below, layer), name);
        return Files().FindPath(job, below);
    };
    RecordLines found;
    for (const char* const name : {"features", "features.Z", "features.gz"})
    {
        const CString path = pathOf(name);
        if (!Files().IsFile(path))
            continue;
        found.file = path.View().substr(job.View().size());
        found.file.erase(0, found.file.find_first_not_of('/'));
        std::ifstream text(path.GetString(), std::ios::binary);
        if (text.peek() == kCompressed)
            return found;
        int number = 0;
        for (std::string line; std::getline(text, line);)
        {
            ++number;
            if (IsRecord(line))
                found.lines.push_back(number);
        }
        return found;
    }
    return found;
}
