// Which files of a job its readers took.
#pragma once

#include "foundation/framework/AsciiText.h"

#include <algorithm>
#include <map>
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
        m_inAnyCase.try_emplace(MakeLower(file), file);
    }
    bool Has(const std::string& file) const
    {
        const std::scoped_lock lock(m_lock);
        return m_files.contains(file);
    }

    // The first file of that path, ignoring letter case; "" if there is none.
    std::string FindInAnyCase(const std::string& file) const
    {
        const std::scoped_lock lock(m_lock);
        const auto found = m_inAnyCase.find(MakeLower(file));
        return found != m_inAnyCase.end() ? found->second : std::string();
    }

private:
    static std::string MakeLower(std::string text)
    {
        std::transform(text.begin(), text.end(), text.begin(), AsciiLower);
        return text;
    }

    mutable std::mutex m_lock;
    std::set<std::string> m_files;
    std::map<std::string, std::string> m_inAnyCase; // by path in lower case
};
