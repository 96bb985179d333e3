// What of a job can be changed by name: one class for each kind.
#pragma once

#include "JOBXCLSDLL.h"
#include "edit/ChangeText.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Records of one kind. A member is a word such as "part", or one of a group: "prop.VALUE", "attr..comp_height".
class EditedKind
{
public:
    EditedKind(const EditedKind&) = delete;
    EditedKind& operator=(const EditedKind&) = delete;
    virtual ~EditedKind() = default;

    std::string_view Word() const noexcept { return m_word; }   // in changes
    std::string_view Shown() const noexcept { return m_shown; } // for people, with an article
    const std::vector<std::string>& Members() const noexcept { return m_members; }
    // Whether it is a member that records of this kind may have.
    bool IsMember(std::string_view member) const;

    // All names, to find the nearest.
    virtual std::vector<std::string> Names() const = 0;
    // Whether there are records of that name, which may have a step in front.
    virtual bool Has(const std::string& name) const = 0;
    // Change, and raise ExitError if that cannot be. `member` is one.
    virtual void Set(const ChangeText& change, const std::string& name, const std::string& member) = 0;
    virtual void Delete(const ChangeText& change, const std::string& name) = 0;
    // `member` is one of a group.
    virtual void DeleteMember(const ChangeText& change, const std::string& name, const std::string& member) = 0;

protected:
    EditedKind(CJOBX& job, std::string_view word, std::string_view shown, std::vector<std::string> members,
               std::vector<std::string> groups)
        : m_job(job), m_word(word), m_shown(shown), m_members(std::move(members)), m_groups(std::move(groups))
    {
    }
    CJOBX& Job() const noexcept { return m_job; }

private:
    CJOBX& m_job;
    std::string_view m_word;
    std::string_view m_shown;
    std::vector<std::string> m_members;
    std::vector<std::string> m_groups;
};

// All kinds, the more important ones first.
std::vector<std::unique_ptr<EditedKind>> KindsOf(CJOBX& job);

// The parts of a member of a group: "attr" and ".comp_height". The second is empty for any other member.
std::pair<std::string, std::string> PartsOfMember(const std::string& member);

// The steps in which a name is looked for: the one in front of a "/" if there is such a step, else all. `name` is then
// without it.
std::vector<CJOBXstepObj*> StepsFor(const CJOBX& job, std::string& name);

// The value as a number; raises ExitError if it is none.
double NumberFor(const ChangeText& change, const std::string& member);
// Raises ExitError unless the operation was done.
void CheckDone(const ChangeText& change, const CJOBXresult& result);
// Raises ExitError if the value cannot be one field of a record.
void CheckField(const ChangeText& change, const std::string& member);

// Set or delete an attribute or property. Deleting one that is not there raises ExitError.
void SetProperty(CJOBXPropertyArray& list, const std::string& name, const std::string& value);
void SetProperty(CLPropertyArray& list, const std::string& name, const std::string& value);
void DeleteProperty(const ChangeText& change, CJOBXPropertyArray& list, const std::string& name);
void DeleteProperty(const ChangeText& change, CLPropertyArray& list, const std::string& name);

// The kinds whose records are in files of steps.
std::unique_ptr<EditedKind> MakeComponentKind(CJOBX& job);
std::unique_ptr<EditedKind> MakeNetKind(CJOBX& job);
std::unique_ptr<EditedKind> MakePackageKind(CJOBX& job);
// The kinds of the matrix, and the job.
std::unique_ptr<EditedKind> MakeLayerKind(CJOBX& job);
std::unique_ptr<EditedKind> MakeStepKind(CJOBX& job);
std::unique_ptr<EditedKind> MakeJobKind(CJOBX& job);
// The features of a layer, which can only be deleted.
std::unique_ptr<EditedKind> MakeFeaturesKind(CJOBX& job);
