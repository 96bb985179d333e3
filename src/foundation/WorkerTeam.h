// The team of worker threads that reads and writes files.
#pragma once

#include <exception>
#include <thread>
#include <vector>

// How many threads may share `tasks` tasks: what the OpenMP runtime would take here (OMP_NUM_THREADS, OMP_THREAD_LIMIT,
// omp_set_num_threads; one inside a parallel region that does not nest), at most one for each task and never more than
// kMostWorkers. One inside the work of a team.
constexpr int kMostWorkers = 256;
int WorkerTeamSize(int tasks) noexcept;

// While one lives, its thread works for a team.
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

// Runs `work` on the calling thread and, at the same time, on up to `size` - 1 further ones, and waits for all. Where
// the system gives fewer threads it runs on those: `work` takes its tasks one by one, so that nothing is left out. The
// threads end with the work, so that none idles, or is missing after a fork. No exception may leave `work`.
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
        // No thread or no memory: those that there are do it all.
    }
    member();
    for (std::thread& helper : helpers)
        helper.join();
}
