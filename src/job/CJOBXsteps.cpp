#include "job/CJOBXsteps.h"

#include "foundation/ProgressReport.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/Guarded.h"
#include "foundation/framework/PathText.h"
#include "job/StepsReader.h"
#include "step/StepReader.h"

#include <string_view>
#include <unordered_map>

namespace
{
constexpr int kStart = 20; // bar position after reading the symbols
constexpr int kSteps = 80;

bool IsStepName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(kPathSeparators) == std::string_view::npos;
}

// Finds step directories by name: the exact match, else the first in sorted order that matches ignoring case. Lists the
// steps directory once, however many names there are.
class CStepDirectories
{
public:
    explicit CStepDirectories(CString stepsDirectory) : m_steps(std::move(stepsDirectory)) {}

    // The directory of the step, "" if there is none.
    CString Find(const CString& name)
    {
        CKUtility* const files = CKUtility::GetInstance();
        const CString exact = files->CKPathCombine(m_steps, name, __FILE__, __LINE__);
        if (files->IsDir(exact))
            return exact;
        if (!m_listed)
            List();
        CString lower = name;
        const auto found = m_paths.find(lower.MakeLower());
        return found != m_paths.end() ? found->second : CString();
    }

private:
    void List()
    {
        m_listed = true;
        CKUtility* const files = CKUtility::GetInstance();
        CStringArray directories;
        files->GetAllSubDirListIn(m_steps, directories, 0);
        for (__int64 i = 0; i < directories.GetSize(); ++i)
        {
            CString lower = files->GetSegmntFromFilePath(directories[i], 2);
            m_paths.try_emplace(lower.MakeLower(), directories[i]);
        }
    }

    CString m_steps;
    bool m_listed = false;
    std::unordered_map<CString, CString> m_paths;
};

// Appends a step for each name with a directory, and reads it with `read`.
template <class Read>
void ReadSteps(CJOBXsteps& steps, const CString& stepsDirectory, const CStringArray& stepNames, Read read)
{
    CStepDirectories directories(stepsDirectory);
    const int count = static_cast<int>(stepNames.GetSize());
    for (int i = 0; i < count; ++i)
    {
        const CString& name = stepNames[i];
        const CString directory = IsStepName(name.View()) ? directories.Find(name) : CString();
        if (directory.IsEmpty())
            continue;
        CJOBXstepObj* const step = steps.m_arrSteps.Own(std::make_unique<CJOBXstepObj>());
        step->m_sName = name;
        if (steps.m_pProgress != nullptr)
            step->m_pStatus = steps.m_pStatus;
        read(*step, directory);
        if (steps.m_pProgress == nullptr)
            continue;
        // Integer division comes first, so only the last step moves the bar.
        SetPosition(*steps.m_pProgress, (i + 1) / count * kSteps + kStart);
        CString text;
        text.Format("Complete %s reading.", name);
        steps.m_pProgress->SetFocus();
        steps.m_pProgress->UpdateData(FALSE);
        ShowStatus(steps.m_pStatus, text);
    }
}
} // namespace

CJOBXsteps::CJOBXsteps() = default;

CJOBXsteps::~CJOBXsteps() = default;

int CJOBXsteps::ParseODBOfMFC(CString stepsDirectory, const CStringArray& stepNames)
{
    return Guarded(
        [&]
        {
            ReadSteps(*this, stepsDirectory, stepNames,
                      [](CJOBXstepObj& step, const CString& directory) { step.ParseODBOfMFC(directory); });
            return 1;
        });
}

void ReadCompletely(const CReadingContext& context, const CString& stepsDirectory, const CStringArray& stepNames,
                    CJOBXsteps& steps)
{
    ReadSteps(steps, stepsDirectory, stepNames,
              [&](CJOBXstepObj& step, const CString& directory)
              {
                  ReadCompletely(context, directory, step);
                  context.messages.Deliver();
              });
}
