// The basis of the library's two parallel loops for reading.
#pragma once

#include "foundation/WorkerTeam.h"
#include "foundation/base/CExPtrArray.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

// The lock of the process-wide critical section.
inline std::mutex& CriticalSection()
{
    static std::mutex section;
    return section;
}

// Runs `work` inside the process-wide critical section.
template <class Work>
void InCriticalSection(Work&& work)
{
    const std::lock_guard<std::mutex> lock(CriticalSection());
    work();
}

// The start of that block if `count` indices are split into `blocks` blocks, the longer ones first.
constexpr int BlockBegin(int count, int blocks, int block) noexcept
{
    return count / blocks * block + std::min(block, count % blocks);
}

// Runs body(0) to body(count - 1) on a team of worker threads, each with a contiguous block. If there are fewer threads
// than blocks, a thread takes more than one. No exception leaves an iteration: after the loop, the one of the lowest
// index is raised on the calling thread.
template <class Body>
void ParallelLoop(int count, Body body)
{
    std::exception_ptr failure;
    int failedIndex = count;
    const auto iterate = [&](int i)
    {
        try
        {
            body(i);
        }
        catch (...)
        {
            InCriticalSection(
                [&]
                {
                    if (i < failedIndex)
                    {
                        failedIndex = i;
                        failure = std::current_exception();
                    }
                });
        }
    };
    const int blocks = WorkerTeamSize(count);
    std::atomic<int> next{0};
    RunOnTeam(blocks,
              [&]
              {
                  for (int block = next++; block < blocks; block = next++)
                      for (int i = BlockBegin(count, blocks, block); i < BlockBegin(count, blocks, block + 1); ++i)
                          iterate(i);
              });
    if (failure)
        std::rethrow_exception(failure);
}

// Appends the results of parallel iterations to one array and then sorts them by iteration, so that two runs over the
// same files give the same array.
template <class T>
class CParallelAppend
{
public:
    explicit CParallelAppend(COwningPtrArray<T>& array) : m_array(array), m_first(array.GetSize()) {}

    // Called by the iteration `index`, at most once each; takes ownership of the element.
    void Append(int index, std::unique_ptr<T> element)
    {
        InCriticalSection(
            [&]
            {
                m_order.reserve(m_order.size() + 1);
                m_array.Own(std::move(element));
                m_order.push_back(index);
            });
    }

    // Called once after the loop, on the calling thread.
    void PutInOrder()
    {
        std::vector<std::pair<int, T*>> appended;
        appended.reserve(m_order.size());
        for (std::size_t i = 0; i < m_order.size(); ++i)
            appended.emplace_back(m_order[i], m_array.GetAt(m_first + static_cast<__int64>(i)));
        std::sort(appended.begin(), appended.end());
        for (std::size_t i = 0; i < appended.size(); ++i)
            m_array.SetAt(m_first + static_cast<__int64>(i), appended[i].second);
    }

private:
    COwningPtrArray<T>& m_array;
    __int64 m_first;
    std::vector<int> m_order;
};
