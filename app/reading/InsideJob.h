// Reads a job from inside its directory, so that the job's location makes no difference.
#pragma once

#include <string>

// Makes a job's directory the current one while it lives. The library judges user symbols by their whole path; from
// inside, that path begins with "." and contains no name of a folder above the job.
// Results:   a directory that cannot be entered raises ExitError.
// Threads:   only one at a time may exist; the current directory belongs to the whole process.
class InsideJob
{
public:
    explicit InsideJob(const std::string& path);
    InsideJob(const InsideJob&) = delete;
    InsideJob& operator=(const InsideJob&) = delete;
    ~InsideJob();

private:
#if defined(_WIN32)
    std::string m_before;
#else
    int m_before = -1;
#endif
};

// Converts `path`, seen from inside the job, to the path from outside, where the job is at `jobPath`.
std::string PathOutside(const std::string& jobPath, const std::string& path);

// While it lives, links that lead out of the directory are followed only on request, and a listing may have at most
// that many entries.
// Threads:   only one at a time may exist.
class ReadLimits
{
public:
    ReadLimits(const std::string& directory, bool followLinks, unsigned long long maxEntries);
    ReadLimits(const ReadLimits&) = delete;
    ReadLimits& operator=(const ReadLimits&) = delete;
    ~ReadLimits();

private:
    unsigned long long m_maxEntriesBefore;
};
