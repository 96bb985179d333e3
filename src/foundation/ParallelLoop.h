// The two parallel reading loops of the library run on these.
#pragma once

#include "foundation/CExPtrArray.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>
#include <vector>

// Runs `work` inside the process-wide critical section; its exception leaves after the section.
template <class Work>
void InCriticalSection(Work&& work)
{
    std::exception_ptr failure;
#pragma omp critical
    {
        try
        {
            work();
        }
        catch (...)
        {
            failure = std::current_exception();
        }
    }
    if (failure)
        std::rethrow_exception(failure);
}

// Runs body(0) to body(count - 1) on the team of worker threads, each thread a contiguous block. No exception leaves an
// iteration: after the loop the one of the lowest index is raised on the calling thread.
template <class Body>
void ParallelLoop(int count, Body body)
{
    std::exception_ptr failure;
    int failedIndex = count;
#pragma omp parallel for schedule(static) if (count > 1)
    for (int i = 0; i < count; ++i)
    {
        try
        {
            body(i);
        }
        catch (...)
        {
            const std::exception_ptr raised = std::current_exception();
            InCriticalSection(
                [&]
                {
                    if (i < failedIndex)
                    {
                        failedIndex = i;
                        failure = raised;
                    }
                });
        }
    }
    if (failure)
        std::rethrow_exception(failure);
}

// Appends what parallel iterations finish to one array, and puts it into the order of the iterations afterwards, so
// that two runs over the same files give the same array.
template <class T>
class CParallelAppend
{
public:
    explicit CParallelAppend(COwningPtrArray<T>& array) : m_array(array), m_first(array.GetSize()) {}

    // Called by the iteration `index`, at most once each; takes the element over.
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
