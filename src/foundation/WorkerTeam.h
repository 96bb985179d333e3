// The team of worker threads that reads and writes files.
#pragma once

#include <exception>
#include <thread>
#include <vector>

// How many threads may share `tasks` tasks: the number that OpenMP would use here (OMP_NUM_THREADS, OMP_THREAD_LIMIT,
// omp_set_num_threads; 1 inside a parallel region that does not nest), at most one per task and at most kMostWorkers. 1
// inside the work of a team.
constexpr int kMostWorkers = 256;
int WorkerTeamSize(int tasks) noexcept;

// While it lives, its thread works for a team.
class CTeamMember
{
public:
    CTeamMember() noexcept;
    CTeamMember(const CTeamMember&) = delete;
    CTeamMember& operator=(const CTeamMember&) = delete;
    ~CTeamMember();

private:
    bool m_wasOne;
};

// Runs `work` on the calling thread and, at the same time, on up to `size` - 1 other threads, and waits for all. It
// also works with fewer threads than requested, because `work` takes its tasks one by one. The threads end with the
// work, so none is idle, or missing after a fork. `work` must not raise.
template <class Work>
void RunOnTeam(int size, const Work& work)
{
    const auto member = [&work]() noexcept
    {
        const CTeamMember isMember;
        work();
    };
    std::vector<std::thread> helpers;
    try
    {
        for (int i = 1; i < size; ++i)
            helpers.emplace_back(member);
    }
    catch (const std::exception&)
    {
        // No thread or no memory: the existing ones do everything.
    }
    member();
    for (std::thread& helper : helpers)
        helper.join();
}
