// The context of every reader in complete reading.
#pragma once

#include "foundation/CJOBXunit.h"
#include "foundation/framework/CString.h"
#include "reading/CAttributeTypes.h"
#include "reading/CJOBXreading.h"
#include "reading/CMessageList.h"
#include "reading/CTakenFiles.h"

#include <string>
#include <vector>

// The job around the file that is read.
// Threads:   readers on several threads share one; none of them changes it.
struct CReadingJob
{
    // One row of the matrix.
    struct Row
    {
        CString layer;
        bool isOfComponents = false;
    };

    const CJOBXreading& reading;
    CString directory;
    JOBXunit unit = JOBXunit::Inch; // of files that name none
    CAttributeTypes types{};
    std::vector<Row> rows{};      // empty if the matrix was not read
    std::vector<CString> steps{}; // likewise
    CTakenFiles* taken = nullptr; // notes the files that are read, if there is one

    // The path below the job's directory, with "/" between its parts; the whole path if it is not below.
    std::string BelowJob(const CString& path) const;
};

// Passed from reader to reader by reference. Readers on separate threads have separate messages.
struct CReadingContext
{
    const CReadingJob& job;
    CMessageList& messages;
    const std::string* bytes = nullptr; // of the file, instead of what is on the disk
};

// Gives each iteration of a parallel loop a context with its own messages.
class CParallelContexts
{
public:
    CParallelContexts(const CReadingContext& outside, std::size_t count)
        : m_outside(outside), m_lists(count, CMessageList(outside.job.reading))
    {
    }

    CReadingContext Of(std::size_t iteration) { return {m_outside.job, m_lists[iteration]}; }
    // Called after the loop, on the calling thread: appends the messages in the order of the iterations.
    void Join()
    {
        for (CMessageList& list : m_lists)
            m_outside.messages.Append(list);
    }

private:
    const CReadingContext& m_outside;
    std::vector<CMessageList> m_lists;
};
