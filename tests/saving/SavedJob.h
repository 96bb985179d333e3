// Reads a job completely, changes and saves it, and compares what is on the disk.
#pragma once

#include "job/CJOBX.h"
#include "job/CJOBXsteps.h"
#include "reading/RecordedMessages.h"
#include "support/TempDir.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

inline CString ToPath(const std::string& path)
{
    return CString(std::string_view(path));
}

inline std::unique_ptr<CJOBX> ReadCompleteJob(const std::string& directory, bool keepsText = false)
{
    auto job = std::make_unique<CJOBX>();
    CJOBXreading reading;
    reading.way = JOBXway::Complete;
    reading.bKeepText = keepsText;
    job->SetReading(reading);
    job->ParseODBOfMFC(ToPath(directory));
    return job;
}

// What is below a directory: the bytes of files; "/" for folders and others.
inline std::map<std::string, std::string> TreeOf(const std::string& directory)
{
    namespace fs = std::filesystem;
    std::map<std::string, std::string> tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory))
        tree[fs::relative(entry.path(), directory).generic_string()] =
            entry.is_regular_file() ? FileBytes(entry.path().string()) : "/";
    return tree;
}

// The lines that differ between two texts, without those that are equal at both ends: "-" what went, "+" what came.
inline std::vector<std::string> ChangedLines(const std::string& before, const std::string& now)
{
    const auto linesOf = [](const std::string& text)
    {
        std::vector<std::string> lines;
        for (std::size_t at = 0; at < text.size();)
        {
            const std::size_t end = std::min(text.find('\n', at), text.size());
            lines.push_back(text.substr(at, end - at));
            at = end + 1;
        }
        return lines;
    };
    const std::vector<std::string> a = linesOf(before);
    const std::vector<std::string> b = linesOf(now);
    // The longest common subsequence; the texts are short.
    std::vector<std::vector<int>> common(a.size() + 1, std::vector<int>(b.size() + 1, 0));
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            common[i][j] = a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    std::vector<std::string> changed;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size())
        if (i < a.size() && j < b.size() && a[i] == b[j])
        {
            ++i;
            ++j;
        }
        else if (i < a.size() && (j == b.size() || common[i + 1][j] >= common[i][j + 1]))
            changed.push_back("-" + a[i++]);
        else
            changed.push_back("+" + b[j++]);
    return changed;
}

// The lines that differ between two trees, each behind the name of its file; a file that only one has is one line.
inline std::vector<std::string> ChangesOf(const std::string& before, const std::string& now)
{
    const std::map<std::string, std::string> a = TreeOf(before);
    const std::map<std::string, std::string> b = TreeOf(now);
    std::vector<std::string> changes;
    for (const auto& [name, bytes] : a)
        if (!b.contains(name))
            changes.push_back("-" + name);
        else if (bytes != b.at(name))
            for (const std::string& line : ChangedLines(bytes, b.at(name)))
                changes.push_back(name + " " + line);
    for (const auto& [name, bytes] : b)
        if (!a.contains(name))
            changes.push_back("+" + name);
    return changes;
}
