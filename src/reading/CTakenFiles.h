// Which files of a job its readers took, and what was in them.
#pragma once

#include "foundation/framework/AsciiText.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>

// Paths below the job, as CReadingJob::BelowJob gives them.
// Threads:   any number.
class CTakenFiles
{
public:
    void Add(const std::string& file)
    {
        const std::scoped_lock lock(m_lock);
        m_hashes.try_emplace(file);
        m_inAnyCase.try_emplace(MakeLower(file), file);
    }
    // The hash of the bytes of a file that was added.
    void SetHash(const std::string& file, std::uint64_t hash) noexcept
    {
        const std::scoped_lock lock(m_lock);
        if (const auto found = m_hashes.find(file); found != m_hashes.end())
            found->second = hash;
    }
    // The files with the hashes of their bytes; 0 for one that was added without.
    const std::map<std::string, std::uint64_t>& Hashes() const noexcept { return m_hashes; }
    bool Has(const std::string& file) const
    {
        const std::scoped_lock lock(m_lock);
        return m_hashes.contains(file);
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
    std::map<std::string, std::uint64_t> m_hashes;
    std::map<std::string, std::string> m_inAnyCase; // by path in lower case
};
