#include "reading/Progress.h"

#include "JOBXCLSDLL.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;

namespace
{
// The directories of a job from which files are read.
constexpr std::array<const char*, 5> kReadDirectories = {"matrix", "misc", "steps", "symbols", "fonts"};

bool AreSameName(const fs::path& name, const std::string& other)
{
    return CString(name.string().c_str()).CompareNoCase(other.c_str()) == 0;
}

template <class Names>
bool IsOneOf(const fs::path& name, const Names& names)
{
    return std::any_of(names.begin(), names.end(), [&](const std::string& other) { return AreSameName(name, other); });
}

// The size of the files below the directory; of the job's own directories and of these steps if `steps` is not null.
double SizeBelow(const std::string& directory, const std::vector<std::string>* steps, const std::stop_token& stop)
{
    double size = 0.0;
    std::error_code error;
    fs::recursive_directory_iterator entry(directory, fs::directory_options::skip_permission_denied, error);
    const fs::recursive_directory_iterator end;
    for (; !error && entry != end && !stop.stop_requested(); entry.increment(error))
    {
        std::error_code ignored;
        const fs::path name = entry->path().filename();
        const bool isForeign = steps != nullptr && ((entry.depth() == 0 && !IsOneOf(name, kReadDirectories)) ||
                                                    (entry.depth() == 1 && !steps->empty() &&
                                                     AreSameName(entry->path().parent_path().filename(), "steps") &&
                                                     !IsOneOf(name, *steps)));
        if (isForeign)
            entry.disable_recursion_pending();
        else if (entry->is_regular_file(ignored))
            if (const std::uintmax_t bytes = entry->file_size(ignored); !ignored)
                size += static_cast<double>(bytes);
    }
    return size;
}

// Finds the size of the job when it is needed first.
class JobSize
{
public:
    JobSize(std::string directory, std::vector<std::string> steps)
        : m_directory(std::move(directory)), m_steps(std::move(steps))
    {
    }
    // The part of it that so many bytes are.
    double PartOf(double bytes, const std::stop_token& stop)
    {
        if (!m_size)
            m_size = std::max(SizeBelow(m_directory, &m_steps, stop), 1.0);
        return std::min(bytes / *m_size, 1.0);
    }

private:
    std::string m_directory;
    std::vector<std::string> m_steps;
    std::optional<double> m_size;
};
} // namespace

ProgressMeasure ReadingMeasure(const std::string& directory, const std::vector<std::string>& steps)
{
    const ULONGLONG before = CKUtility::GetInstance()->GetBytesRead();
    return [size = JobSize(directory, steps), before](const std::stop_token& stop) mutable
    { return size.PartOf(static_cast<double>(CKUtility::GetInstance()->GetBytesRead() - before), stop); };
}

ProgressMeasure WritingMeasure(const std::string& from, const std::string& to, const std::vector<std::string>& steps)
{
    return [size = JobSize(from, steps), to](const std::stop_token& stop) mutable
    { return size.PartOf(SizeBelow(to, nullptr, stop), stop); };
}
