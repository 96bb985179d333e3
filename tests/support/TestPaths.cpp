#include "support/TestPaths.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

std::string SamplesDir()
{
    return JOBX_SAMPLES_DIR;
}

std::string TestDataDir()
{
    return JOBX_TEST_DATA_DIR;
}

std::string RealJobsPlace()
{
    const char* const chosen = std::getenv("JOBX_REAL_JOBS");
    return chosen != nullptr && *chosen != '\0' ? chosen : JOBX_REAL_JOBS_DIR;
}

std::optional<std::string> RealJobsDir()
{
    std::string place = RealJobsPlace();
    std::error_code error;
    if (!std::filesystem::is_directory(place, error))
        return std::nullopt;
    return place;
}
