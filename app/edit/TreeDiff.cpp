#include "edit/TreeDiff.h"

#include "edit/LineDiff.h"
#include "output/ExitError.h"
#include "output/Terminal.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>

namespace fs = std::filesystem;

namespace
{
std::set<std::string> FilesBelow(const fs::path& directory)
{
    std::set<std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory))
        if (entry.is_regular_file())
            files.insert(entry.path().lexically_relative(directory).generic_string());
    return files;
}

std::string BytesOfFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw ExitError(ExitCode::UnreadableInput, fmt::format("{} cannot be read", Quoted(path.string())));
    return bytes;
}

bool IsSameFile(const fs::path& a, const fs::path& b)
{
    return fs::file_size(a) == fs::file_size(b) && BytesOfFile(a) == BytesOfFile(b);
}

// As diff decides it.
bool IsBinary(const std::string& bytes)
{
    return bytes.find('\0') != std::string::npos;
}

class CTreeDiff
{
public:
    CTreeDiff(const fs::path& before, const fs::path& after, Output& out)
        : m_before(before),
          m_after(after),
          m_out(out),
          m_isForPeople(IsTerminal(stdout)),
          m_filesBefore(FilesBelow(before)),
          m_filesAfter(FilesBelow(after))
    {
    }

    bool Print()
    {
        FindRenamed();
        std::set<std::string> all = m_filesBefore;
        all.insert(m_filesAfter.begin(), m_filesAfter.end());
        for (const std::string& file : all)
            PrintFile(file);
        return m_isDifferent;
    }

private:
    // Takes files that are elsewhere out of both lists.
    void FindRenamed()
    {
        std::multimap<std::uintmax_t, std::string> added; // by size
        for (const std::string& file : m_filesAfter)
            if (!m_filesBefore.contains(file))
                added.emplace(fs::file_size(m_after / file), file);
        for (auto file = m_filesBefore.begin(); file != m_filesBefore.end();)
            file =
                !m_filesAfter.contains(*file) && IsRenamed(*file, added) ? m_filesBefore.erase(file) : std::next(file);
    }
    bool IsRenamed(const std::string& file, std::multimap<std::uintmax_t, std::string>& added)
    {
        const auto [first, last] = added.equal_range(fs::file_size(m_before / file));
        for (auto each = first; each != last; ++each)
        {
            if (BytesOfFile(m_before / file) != BytesOfFile(m_after / each->second))
                continue;
            PrintText(fmt::format("rename from {}\nrename to {}\n", file, each->second));
            m_filesAfter.erase(each->second);
            added.erase(each);
            return true;
        }
        return false;
    }

    void PrintFile(const std::string& file)
    {
        const bool wasThere = m_filesBefore.contains(file);
        const bool isThere = m_filesAfter.contains(file);
        if (wasThere && isThere && IsSameFile(m_before / file, m_after / file))
            return;
        const std::string before = wasThere ? BytesOfFile(m_before / file) : std::string();
        const std::string after = isThere ? BytesOfFile(m_after / file) : std::string();
        const std::string nameBefore = wasThere ? "a/" + file : "/dev/null";
        const std::string nameAfter = isThere ? "b/" + file : "/dev/null";
        if (IsBinary(before) || IsBinary(after))
            return PrintText(fmt::format("Binary files {} and {} differ\n", nameBefore, nameAfter));
        PrintText(fmt::format("--- {}\n+++ {}\n", nameBefore, nameAfter) + UnifiedHunks(before, after));
    }
    // Lines of files could control a terminal; a file or program gets their bytes.
    void PrintText(const std::string& text)
    {
        m_isDifferent = true;
        if (!m_isForPeople)
            return m_out.Write(text);
        for (std::size_t begin = 0; begin < text.size();)
        {
            const std::size_t end = std::min(text.find('\n', begin), text.size());
            m_out.Write(Printable(std::string_view(text).substr(begin, end - begin)));
            m_out.Put('\n');
            begin = end + 1;
        }
    }

    const fs::path& m_before;
    const fs::path& m_after;
    Output& m_out;
    bool m_isForPeople;
    std::set<std::string> m_filesBefore;
    std::set<std::string> m_filesAfter;
    bool m_isDifferent = false;
};
} // namespace

bool PrintTreeDiff(const fs::path& before, const fs::path& after, Output& out)
{
    return CTreeDiff(before, after, out).Print();
}
