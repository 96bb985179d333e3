// Which files of a job its readers took.
#pragma once

#include <mutex>
#include <set>
#include <string>

// Paths below the job, as CReadingJob::BelowJob gives them.
// Threads:   any number.
class CTakenFiles
{
public:
    void Add(const std::string& file)
    {
        const std::scoped_lock lock(m_lock);
        m_files.insert(file);
    }
    bool Has(const std::string& file) const
    {
        const std::scoped_lock lock(m_lock);
        return m_files.contains(file);
    }

private:
    mutable std::mutex m_lock;
    std::set<std::string> m_files;
};
