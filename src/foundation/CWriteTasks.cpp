#include "foundation/CWriteTasks.h"

#include "foundation/WorkerTeam.h"
#include "foundation/corekit/CDiagnosticCapture.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/FreshDirectory.h"

#include <algorithm>
#include <atomic>
#include <utility>

CString CWriteTasks::MakeFreshDirectory(const CString& parent, const CString& name, const char* sourceFile, int line)
{
    bool isDone = false;
    const CString made = DoNow(
        [&]
        {
            CString path;
            isDone = MakeDirectoryBelow(parent, name, path);
            return path;
        });
    if (isDone)
        return made;
    Run();
    return DoNow([&] { return ::MakeFreshDirectory(parent, name, sourceFile, line); });
}

CString CWriteTasks::MakeEntryDirectory(const CString& parent, const CString& name, const char* sourceFile, int line)
{
    return DoNow([&] { return ::MakeEntryDirectory(parent, name, sourceFile, line); });
}

void CWriteTasks::Add(__int64 weight, std::function<void()> work)
{
    m_tasks.push_back({weight, std::move(work), {}, nullptr});
}

void CWriteTasks::Run()
{
    std::vector<Task> tasks = std::exchange(m_tasks, {});
    std::vector<Task*> order;
    for (Task& task : tasks)
        if (task.work)
            order.push_back(&task);
    // The heaviest first, so that no thread begins it when the others are out of work.
    std::sort(order.begin(), order.end(),
              [](const Task* a, const Task* b) { return a->weight != b->weight ? a->weight > b->weight : a < b; });
    std::atomic<std::size_t> next{0};
    RunOnTeam(WorkerTeamSize(static_cast<int>(order.size())),
              [&]
              {
                  for (std::size_t i = next++; i < order.size(); i = next++)
                      Do(*order[i], order[i]->work);
              });
    for (const Task& task : tasks)
    {
        for (const CKDiagnostic& diagnostic : task.diagnostics)
            CKUtility::GetInstance()->Report(diagnostic.sourceFile, diagnostic.line, diagnostic.operation,
                                             diagnostic.path, diagnostic.systemError);
        if (task.failure)
            std::rethrow_exception(task.failure);
    }
}

void CWriteTasks::Do(Task& task, const std::function<void()>& work) noexcept
{
    const CDiagnosticCapture capture(task.diagnostics);
    try
    {
        work();
    }
    catch (...)
    {
        task.failure = std::current_exception();
    }
}

CString CWriteTasks::DoNow(const std::function<CString()>& work)
{
    CString result;
    Task task;
    Do(task, [&] { result = work(); });
    const bool isToTell = !task.diagnostics.empty() || task.failure;
    const bool isFailed = task.failure != nullptr;
    if (isToTell)
        m_tasks.push_back(std::move(task));
    if (isFailed)
        Run();
    return result;
}
