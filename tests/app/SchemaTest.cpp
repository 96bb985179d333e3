// The schema in docs/ against the lists of fields that it is made from.
#include "JobSchema.h"
#include "RunProgram.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

TEST(Schema, OfJobsIsWhatTheListsOfFieldsSay)
{
    const std::string path = JOBX_DOCS_DIR "/job.schema.json";
    const std::string schema = JobSchema();
    if (std::getenv("JOBX_WRITE_GOLDEN") != nullptr)
        std::ofstream(path, std::ios::binary) << schema;
    EXPECT_EQ(schema, ReadWhole(path)) << "JOBX_WRITE_GOLDEN=1 app_tests --gtest_filter=Schema.* rewrites it";
}
