#pragma once

#include "foundation/corekit/CKDiagnostic.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/FrameworkTypes.h"

#include <exception>
#include <functional>
#include <vector>

// Writes the files of a directory tree on a team of worker threads. Result and order of diagnostics are the same as if
// they were written one after the other. The calling thread makes the directories at once; Run writes the files in
// them. If a directory already exists, the tasks added so far run first, so that of two with one name the later
// replaces the earlier.
// Results:   Run raises an exception of a task on the calling thread; of several, that of the earliest task. Later
//            tasks may or may not have run. Tasks that are not run are dropped.
// Threads:   one thread calls.
class CWriteTasks
{
public:
    CWriteTasks() = default;
    CWriteTasks(const CWriteTasks&) = delete;
    CWriteTasks& operator=(const CWriteTasks&) = delete;
    ~CWriteTasks() = default;

    // Like the functions in FreshDirectory.h.
    CString MakeFreshDirectory(const CString& parent, const CString& name, const char* sourceFile, int line);
    CString MakeEntryDirectory(const CString& parent, const CString& name, const char* sourceFile, int line);
    // Work that uses no file or directory of another task; `weight` is its expected time relative to other tasks.
    void Add(__int64 weight, std::function<void()> work);
    // Runs the tasks added since the last run and reports their diagnostics.
    void Run();

private:
    struct Task
    {
        __int64 weight = 0;
        std::function<void()> work; // empty if it was done at once
        std::vector<CKDiagnostic> diagnostics;
        std::exception_ptr failure;
    };

    static void Do(Task& task, const std::function<void()>& work) noexcept;
    CString DoNow(const std::function<CString()>& work);

    std::vector<Task> m_tasks;
};
