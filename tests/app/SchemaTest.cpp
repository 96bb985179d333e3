// The schemas in docs/ against the lists of fields that they are made from.
#include "JobSchema.h"
#include "RunProgram.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace
{
void ExpectSchema(const std::string& name, JOBXway way)
{
    const std::string path = std::string(JOBX_DOCS_DIR "/") + name;
    const std::string schema = JobSchema(way);
    if (std::getenv("JOBX_WRITE_GOLDEN") != nullptr)
        std::ofstream(path, std::ios::binary) << schema;
    EXPECT_EQ(schema, ReadWhole(path)) << "JOBX_WRITE_GOLDEN=1 app_tests --gtest_filter=Schema.* rewrites it";
}
} // namespace

TEST(Schema, OfJobsIsWhatTheListsOfFieldsSay)
{
    ExpectSchema("job.schema.json", JOBXway::Complete);
}

TEST(Schema, OfJobsReadAsBeforeIsWhatTheListsOfFieldsSay)
{
    ExpectSchema("job.legacy.schema.json", JOBXway::Classic);
}
