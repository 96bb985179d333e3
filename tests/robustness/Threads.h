// Runs a piece of a test with a given number of threads in the library's parallel loops.
#pragma once

#include <omp.h>

// Threads: changes the calling thread's later loops only.
class Threads
{
public:
    explicit Threads(int count) : m_before(omp_get_max_threads()) { omp_set_num_threads(count); }
    ~Threads() { omp_set_num_threads(m_before); }
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;

private:
    int m_before;
};
