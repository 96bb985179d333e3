#include "foundation/WorkerTeam.h"

#include <algorithm>
#include <omp.h>
#include <utility>

namespace
{
thread_local bool t_isMember = false;
}

int WorkerTeamSize(int tasks) noexcept
{
    if (tasks < 2 || t_isMember)
        return 1;
    if (omp_in_parallel() != 0 && omp_get_active_level() >= omp_get_max_active_levels())
        return 1;
    return std::max(1, std::min({tasks, omp_get_max_threads(), omp_get_thread_limit(), kMostWorkers}));
}

CTeamMember::CTeamMember() noexcept : m_wasOne(std::exchange(t_isMember, true)) {}

CTeamMember::~CTeamMember()
{
    t_isMember = m_wasOne;
}
