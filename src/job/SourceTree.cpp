#include "job/SourceTree.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/LinkBoundary.h"
#include "foundation/corekit/SystemEntries.h"

#include <algorithm>

namespace
{
struct Entry
{
    std::string name;
    EntryType type;
    bool isLink;
};

class CTreeListing
{
public:
    CTreeListing(const CString& directory, CSourceTree& tree) : m_directory(directory), m_tree(tree) {}

    int List(const std::string& folder)
    {
        const CString path = PathOf(folder);
        std::vector<Entry> entries;
        const int error = ListEntries(std::string(path.View()),
                                      [&entries](const ListedEntry& entry) {
                                          entries.push_back({entry.name, entry.type, entry.isLink});
                                      });
        m_failed = folder;
        if (error != 0)
            return error;
        std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.name < b.name; });
        for (const Entry& entry : entries)
            if (const int reason = Take(folder, entry); reason != 0)
                return reason;
        return 0;
    }
    const std::string& Failed() const noexcept { return m_failed; }

private:
    CString PathOf(const std::string& below) const
    {
        return below.empty() ? m_directory
                             : CKUtility::GetInstance()->CKPathCombine(m_directory, CString(std::string_view(below)));
    }

    int Take(const std::string& folder, const Entry& entry)
    {
        const std::string below = Joined(folder, entry.name);
        if (entry.type == EntryType::File)
            m_tree.files.push_back(below);
        else if (entry.type == EntryType::Directory && (!entry.isLink || IsSound(below)))
        {
            m_tree.folders.push_back(below);
            return List(below);
        }
        else
            m_tree.others.push_back(below);
        return 0;
    }

    // Whether a link to a folder stays inside the boundary and leads into none of the folders that it is in.
    bool IsSound(const std::string& below) const
    {
        std::string real;
        std::string above;
        const CString path = PathOf(below);
        if (LeadsOut(path) || ResolveLinks(path, real) != 0)
            return false;
        for (std::string folder = FolderOf(below);; folder = FolderOf(folder))
        {
            if (ResolveLinks(PathOf(folder), above) != 0 || above == real || above.starts_with(real + '/'))
                return false;
            if (folder.empty())
                return true;
        }
    }

    CString m_directory;
    CSourceTree& m_tree;
    std::string m_failed;
};
} // namespace

int CSourceTree::List(const CString& directory, std::string& failed)
{
    CTreeListing listing(directory, *this);
    const int error = listing.List({});
    failed = listing.Failed();
    return error;
}

std::string LastPartOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

std::string FolderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string Joined(const std::string& folder, const std::string& name)
{
    return folder.empty() ? name : folder + '/' + name;
}

std::string ToText(const CString& text)
{
    return std::string(text.View());
}
