#include "job/JobSaver.h"

#include "foundation/corekit/CDiagnosticCapture.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/RemoveTree.h"
#include "foundation/corekit/SystemEntries.h"
#include "job/CJOBX.h"
#include "job/SavedTree.h"
#include "reading/CJobSource.h"
#include "reading/SavingMessageKinds.h"

#include <cerrno>
#include <string>
#include <vector>

using namespace saving_message;

namespace
{
constexpr int kMostNames = 1000; // that are tried for an unfinished directory

// A new directory beside the place where a job is saved to. The destructor removes it unless it was moved there.
class CUnfinishedDirectory
{
public:
    explicit CUnfinishedDirectory(const CString& target) : m_target(target) {}
    CUnfinishedDirectory(const CUnfinishedDirectory&) = delete;
    CUnfinishedDirectory& operator=(const CUnfinishedDirectory&) = delete;
    ~CUnfinishedDirectory()
    {
        if (!m_path.IsEmpty())
            RemoveTree(m_path);
    }

    // These return 0 or the system's error number.
    int Make()
    {
        int error = EEXIST;
        for (int number = 1; number <= kMostNames && error == EEXIST; ++number)
        {
            const CString path = m_target + CString(".unfinished") + CString(std::string_view(std::to_string(number)));
            error = MakeNewDirectory(path);
            if (error == 0)
                m_path = path;
        }
        return error;
    }
    int MoveIntoPlace()
    {
        const int error = RenameEntry(m_path, m_target);
        if (error == 0)
            m_path = CString();
        return error;
    }
    const CString& Path() const noexcept { return m_path; }

private:
    CString m_target;
    CString m_path; // "" if there is none
};

bool IsNothingThere(const CString& path)
{
    EntryType type = EntryType::None;
    bool isEmpty = ExamineEntryItself(path, type) == 0;
    if (isEmpty && type == EntryType::Directory)
        isEmpty =
            ListEntries(std::string(path.View()), [&isEmpty](const ListedEntry&) { isEmpty = false; }) == 0 && isEmpty;
    else
        isEmpty = isEmpty && type == EntryType::None;
    return isEmpty;
}

class CJobSaving
{
public:
    CJobSaving(const CSavedJob& saved, const CString& target, const CJOBXreading& reading)
        : m_saved(saved), m_target(target), m_reading(reading), m_messages(reading)
    {
    }

    bool Save()
    {
        std::vector<CKDiagnostic> said; // reported by messages instead
        const CDiagnosticCapture capture(said);
        const bool isSaved = IsSavable() && SaveTexts();
        m_messages.Deliver();
        return isSaved;
    }

private:
    template <class... Parts>
    bool Fail(const std::string& file, const CJOBXmessageKind& kind, const Parts&... parts)
    {
        m_messages.Of(file).Say(kind, 0, parts...);
        return false;
    }

    bool IsSavable()
    {
        if (m_saved.source != nullptr && (m_saved.source->isMixed || !m_saved.source->hasParts))
            return Fail({}, kNotComplete, "The job was not read completely, or it was read together with another one.");
        return IsNothingThere(m_target) ||
               Fail({}, kInTheWay, "There is something at ", Quoted{m_target.View()}, " already.");
    }

    // Kept texts are a source that does not change.
    bool SaveTexts()
    {
        if (m_saved.source == nullptr || m_saved.source->texts.empty())
            return SaveFrom(m_saved.source != nullptr ? m_saved.source->directory : CString());
        CUnfinishedDirectory texts(m_target + CString(".source"));
        int error = texts.Make();
        for (const std::string& folder : m_saved.source->folders)
            error = error != 0 ? error : MakeNewDirectory(PathIn(texts, folder));
        for (const auto& [file, text] : m_saved.source->texts)
            error = error != 0 ? error : WriteNewFile(PathIn(texts, file), text);
        if (error != 0)
            return Fail({}, kNotWritten, "The files of the job cannot be laid out: ", SystemReason(error), ".");
        return SaveFrom(texts.Path());
    }
    static CString PathIn(const CUnfinishedDirectory& directory, const std::string& below)
    {
        return CKUtility::GetInstance()->CKPathCombine(directory.Path(), CString(std::string_view(below)));
    }

    bool SaveFrom(const CString& directory)
    {
        CJOBX before;
        if (m_saved.source != nullptr && !IsSameSource(m_saved.readAgain(directory, before)))
            return false;
        CUnfinishedDirectory unfinished(m_target);
        int error = unfinished.Make();
        if (error == 0)
        {
            CSavedTree tree(before, m_saved.job, m_saved.source, {directory, unfinished.Path()}, m_reading, m_messages);
            if (!tree.Write())
                return false;
            error = unfinished.MoveIntoPlace();
        }
        return error == 0 ||
               Fail({}, kNotWritten, Quoted{m_target.View()}, " cannot be made: ", SystemReason(error), ".");
    }

    // Whether the files are those from which the job was read.
    bool IsSameSource(const CJobSource& again)
    {
        const auto& files = m_saved.source->taken.Hashes();
        const auto& filesAgain = again.taken.Hashes();
        bool isSame = Compare(files, filesAgain, "The file is no longer there.") &&
                      Compare(filesAgain, files, "The file was not there when the job was read.") &&
                      Compare(m_saved.source->carried, again.carried, "The file is no longer there.") &&
                      Compare(again.carried, m_saved.source->carried, "The file was not there when the job was read.");
        return isSame;
    }
    template <class Files>
    bool Compare(const Files& files, const Files& others, const char* missing)
    {
        bool isSame = true;
        for (const auto& [file, value] : files)
            if (const auto other = others.find(file); other == others.end())
                isSame = Fail(file, kChanged, missing);
            else if (other->second != value)
                isSame = Fail(file, kChanged, "The file has changed since it was read.");
        return isSame;
    }

    const CSavedJob& m_saved;
    const CString m_target;
    const CJOBXreading& m_reading;
    CMessageList m_messages;
};
} // namespace

bool SaveJob(const CSavedJob& saved, const CString& outputDirectory, const CJOBXreading& reading)
{
    return CJobSaving(saved, outputDirectory, reading).Save();
}
