#include "reading/CReadingContext.h"

#include "foundation/framework/PathText.h"

#include <algorithm>

std::string CReadingJob::BelowJob(const CString& path) const
{
    std::string_view job = directory.View();
    while (!job.empty() && IsPathSeparator(job.back()))
        job.remove_suffix(1);
    std::string_view rest = path.View();
    if (rest.starts_with(job) && rest.size() > job.size() && IsPathSeparator(rest[job.size()]))
        rest.remove_prefix(job.size() + 1);
    std::string below(rest);
    std::replace_if(below.begin(), below.end(), IsPathSeparator, '/');
    return below;
}
