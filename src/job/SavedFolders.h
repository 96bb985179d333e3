// Where the folders of a job go when it is saved.
#pragma once

#include "foundation/framework/CString.h"
#include "job/SourceTree.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class CJOBX;
class CJOBXlayer;
class CJOBXstepObj;

// The parts of a list by the folders that they came from; of several from one folder the first.
template <class Part>
class CPartsByFolder
{
public:
    template <class List>
    explicit CPartsByFolder(const List& list)
    {
        for (__int64 i = 0; i < list.GetSize(); ++i)
            if (const Part* const part = list.GetAt(i); part != nullptr && !part->GetSourceFolder().IsEmpty())
                m_parts.try_emplace(part->GetSourceFolder().View(), part);
    }
    // Null if there is none, or if `part` is null.
    const Part* Find(const Part* part) const
    {
        const auto found = part == nullptr ? m_parts.end() : m_parts.find(part->GetSourceFolder().View());
        return found != m_parts.end() ? found->second : nullptr;
    }

private:
    std::unordered_map<std::string_view, const Part*> m_parts;
};

// The layers of user symbols as a list of parts.
struct CSymbolLayers
{
    const CJOBX& job;

    __int64 GetSize() const;
    const CJOBXlayer* GetAt(__int64 index) const;
};

// The folder of each step, layer, user symbol and netlist is called what the part is called now. Folders that no part
// came from stay in the folder that they are in.
class CSavedFolders
{
public:
    // Called with the path of a folder that cannot be made, because its name is none or is taken.
    using OnBadName = std::function<void(const std::string& folder)>;

    CSavedFolders(const CSourceTree& tree, const CJOBX& before, const CJOBX& now, OnBadName onBadName);

    // Where a folder of the source goes; "" if it is left out, and for the job itself.
    const std::string& PlaceOf(const std::string& sourceFolder);
    bool IsLeftOut(const std::string& sourceFolder) { return !sourceFolder.empty() && PlaceOf(sourceFolder).empty(); }
    // Where the folder of a part goes, which came from `sourceFolder` or, if that is "", is new. `parent` is where the
    // folder goes that it is in.
    std::string PlaceOfPart(const CString& sourceFolder, const CString& name, const std::string& parent);
    // The folder in a folder of the source with that name in any letter case, as the source spells it; `usualName` if
    // there is none.
    std::string NameIn(const std::string& sourceFolder, const char* usualName) const;
    // All folders that are made, outer ones before those in them.
    const std::set<std::string>& All() const noexcept { return m_all; }
    // One more folder.
    void Add(const std::string& folder);

private:
    template <class Part, class List, class NameOf>
    void MapParts(const List& before, const List& now, const std::string& parent, NameOf nameOf);
    void MapStep(const CJOBXstepObj* before, const CJOBXstepObj& now);
    void LeaveOut(const CString& sourceFolder);

    const OnBadName m_onBadName;
    std::map<std::string, std::vector<std::string>> m_names; // of the folders in each folder of the source
    std::map<std::string, std::string> m_places;             // by folder of the source
    std::map<std::string, std::string> m_owners;             // places of parts, and which folder they came from
    std::set<std::string> m_all;
};
