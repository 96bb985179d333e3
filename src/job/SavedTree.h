// The folders and files of a job that is being saved.
#pragma once

#include "foundation/CWriteTasks.h"
#include "job/FileSaving.h"
#include "job/SavedFolders.h"
#include "job/SourceTree.h"
#include "saving/CMendedReferences.h"

#include <map>
#include <set>
#include <string>
#include <vector>

class CJOBX;
class CJOBXattributed;
class CJOBXcomponents;
class CJOBXlayer;
class CJOBXstepObj;

// Writes a job into an empty directory. Files whose part of the model did not change are copied, others are woven.
class CSavedTree
{
public:
    // `before` is the job as its source has it, `now` as it is to be saved. `source` has the files that were read, null
    // for a job that was made from nothing. Borrows all of them. What fails goes to the messages.
    CSavedTree(const CJOBX& before, const CJOBX& now, const CJobSource* source, const CFileSaving::Places& places,
               const CJOBXreading& reading, CMessageList& messages);
    CSavedTree(const CSavedTree&) = delete;
    CSavedTree& operator=(const CSavedTree&) = delete;

    // False if anything failed.
    bool Write();

private:
    // A file of a part of the model, or its folder.
    struct FilePlace
    {
        std::string from; // the folder in the source
        std::string to;   // the folder in what is saved
        const char* name = "";
        bool isNeeded = false; // it is written even if there is nothing in it
        bool isNew = false;    // it has no folder in the source
    };

    bool ListSource(const CString& source);
    void AddParts();
    void AddSymbols();
    void AddSteps();
    void AddStep(const CJOBXstepObj& before, const CJOBXstepObj& now);
    void AddLayers(const CJOBXstepObj& before, const CJOBXstepObj& now, const FilePlace& step);
    void AddNetlists(const CJOBXstepObj& before, const CJOBXstepObj& now, const FilePlace& step);
    void AddAttributes(const CJOBXattributed& before, const CJOBXattributed* now, FilePlace place);
    FilePlace InJob(const char* folder, const char* name) const;
    FilePlace PlaceOf(const CString& sourceFolder, const CString& name, const std::string& parent);
    FilePlace In(const FilePlace& folder, const char* name) const;
    template <class Part>
    void Add(const FilePlace& place, const Part& before, const Part* now);
    template <class Part>
    void Save(const std::string& source, const FilePlace& place, const Part& before, const Part& now);
    template <class Part, class List>
    void LeaveOutGone(const List& before, const List& now, const char* name);
    std::string FindSource(const FilePlace& place) const;
    void MakeFolders();
    void AddCopies();
    void CopySums();

    const CJOBX& m_before;
    const CJOBX& m_now;
    CMessageList& m_messages;
    CFileSaving m_files;
    CSourceTree m_tree;
    bool m_isListed;
    CSavedFolders m_folders;
    std::map<std::string, std::vector<std::string>> m_names; // of the files in each folder of the source
    std::set<std::string> m_done;                            // files of the source that have a task or are left out
    CMendedReferences m_references;
    CWriteTasks m_tasks;
};
