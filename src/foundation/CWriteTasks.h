#pragma once

#include "foundation/corekit/CKDiagnostic.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/FrameworkTypes.h"

#include <exception>
#include <functional>
#include <vector>

// Writes the files of a directory tree on a team of worker threads with the result, and the diagnostics in the order,
// of writing them one after the other. Directories are made at once, on the calling thread; the files in them are
// written by Run. When a directory is there already, what stands before it is written first, so that of two with one
// name the later takes the earlier one's place.
// Results: an exception of a task is raised by Run on the calling thread, that of the earliest task when there are
//          several; the tasks behind it may or may not have been done. Tasks that were never run are dropped.
// Threads: one thread calls.
class CWriteTasks
{
public:
    CWriteTasks() = default;
    CWriteTasks(const CWriteTasks&) = delete;
    CWriteTasks& operator=(const CWriteTasks&) = delete;
    ~CWriteTasks() = default;

    // As the functions of FreshDirectory.h.
    CString MakeFreshDirectory(const CString& parent, const CString& name, const char* sourceFile, int line);
    CString MakeEntryDirectory(const CString& parent, const CString& name, const char* sourceFile, int line);
    // Work that touches no file or directory of another task; `weight` tells how long it takes compared with others.
    void Add(__int64 weight, std::function<void()> work);
    // Does what was added since the last run and reports its diagnostics.
    void Run();

private:
    struct Task
    {
        __int64 weight = 0;
        std::function<void()> work; // empty when it was done at once
        std::vector<CKDiagnostic> diagnostics;
        std::exception_ptr failure;
    };

    static void Do(Task& task, const std::function<void()>& work) noexcept;
    CString DoNow(const std::function<CString()>& work);

    std::vector<Task> m_tasks;
};
