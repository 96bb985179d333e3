// Every allocation of every public operation fails once.
#include "robustness/MemoryOperations.h"
#include "robustness/SampleJob.h"
#include "robustness/Threads.h"
#include "support/TestPaths.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>
#include <string_view>

namespace
{
int CountFailures()
{
    return ::testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

// Runs the operation with that many allocations succeeding: whether one was refused.
bool RunOnce(const MemoryOperation& operation, long succeeding, Refused refused)
{
    SCOPED_TRACE(operation.type + "::" + operation.name + " after " + std::to_string(succeeding) + " allocations" +
                 (refused == Refused::One ? ", one refused" : ""));
    const long live = FailingAllocation::LiveBlocks();
    MemoryRun run(succeeding, refused);
    operation.run(run);
    EXPECT_STREQ(run.wrong, nullptr);
    EXPECT_EQ(run.raised, run.failed && operation.memory != Memory::Useful);
    EXPECT_EQ(FailingAllocation::LiveBlocks() - live, 0) << "blocks are lost";
    return run.failed;
}

// Fails each allocation in turn, alone and with all that follow: how many there are.
long RunWhateverFails(const MemoryOperation& operation)
{
    constexpr long kMost = 100'000;
    MemoryRun first(kMost, Refused::Every); // makes whatever is made once only
    operation.run(first);
    long allocations = 0;
    const int failures = CountFailures();
    for (const Refused refused : {Refused::Every, Refused::One})
        for (allocations = 0; allocations < kMost && RunOnce(operation, allocations, refused); ++allocations)
            if (CountFailures() != failures)
                return allocations; // the rest would only repeat it
    return allocations;
}

void TryAll(const MemoryOperations& operations)
{
    EXPECT_FALSE(operations.empty());
    const Threads one(1); // a helper thread that is refused is no failure
    for (const MemoryOperation& operation : operations)
    {
        const long allocations = RunWhateverFails(operation);
        const std::string name = operation.type + "::" + operation.name;
        EXPECT_TRUE(operation.memory == Memory::Sometimes ||
                    (allocations == 0) == (operation.memory == Memory::NotNeeded))
            << name << " makes " << allocations << " allocations";
    }
}

// The class that an exported name belongs to, without template arguments; "" for a function of none.
std::string ClassOf(std::string_view symbol)
{
    for (const std::string_view of : {"vtable for ", "typeinfo for ", "typeinfo name for ", "guard variable for "})
        if (symbol.starts_with(of))
            symbol.remove_prefix(of.size());
    const auto end =
        std::find_if_not(symbol.begin(), symbol.end(),
                         [](char c) { return c == '_' || std::isalnum(static_cast<unsigned char>(c)) != 0; });
    const std::string name(symbol.begin(), end);
    const std::string_view rest(end, symbol.end());
    const bool isClass = rest.empty() || rest.starts_with("::") || rest.starts_with('<');
    return isClass && name.starts_with('C') ? name : std::string();
}

// The public classes of which there is nothing to try.
const std::set<std::string> kWithoutOperations = {
    "CJOBXrecord",                                              // only the base of records
    "CRaisingNew",                                              // only a base: each class that derives from it is tried
    "CKDiagnosticSink",                                         // the host's own
    "CJOBXmessageSink", "CJOBXblockTaker", "CJOBXgzipExpander", // likewise
    "CJOBXreading",     "CJOBXidentified", "CJOBXmeasured",     // no texts
    "CJOBXsourced",                                             // likewise
};
} // namespace

const TempDir& ScratchDir()
{
    static const TempDir dir;
    return dir;
}

CString SmallJob()
{
    static const std::string job = MakeSmallJob(ScratchDir());
    return job.c_str();
}

std::FILE* Nowhere()
{
    static std::FILE* const file = std::fopen("/dev/null", "w");
    return file;
}

#define JOBX_TRY_ALL(area, operations)                                                                                 \
    TEST(MemoryOperations, area##RaisesTheMemoryExceptionWhateverAllocationFails)                                      \
    {                                                                                                                  \
        JOBX_REQUIRE_FAILING_ALLOCATION();                                                                             \
        TryAll(operations());                                                                                          \
    }

JOBX_TRY_ALL(TheFramework, FrameworkOperations)
JOBX_TRY_ALL(TheFoundation, FoundationOperations)
JOBX_TRY_ALL(AnArrayOfPointers, PointerArrayOperations)
JOBX_TRY_ALL(TheCompactModel, CompactOperations)
JOBX_TRY_ALL(EdaDataAndComponents, EdaOperations)
JOBX_TRY_ALL(ALayer, LayerOperations)
JOBX_TRY_ALL(AJob, JobOperations)
JOBX_TRY_ALL(AChange, ChangeOperations)

TEST(MemoryOperations, EveryPublicClassHasOne)
{
    std::set<std::string> tried = kWithoutOperations;
    for (const auto& operations : {FrameworkOperations, FoundationOperations, PointerArrayOperations, CompactOperations,
                                   EdaOperations, LayerOperations, JobOperations, ChangeOperations})
        for (const MemoryOperation& operation : operations())
            tried.insert(operation.type);
    std::ifstream exported(TestDataDir() + "/exported_symbols.txt");
    std::set<std::string> missing;
    int classes = 0;
    for (std::string symbol; std::getline(exported, symbol);)
        if (const std::string name = ClassOf(symbol); !name.empty())
        {
            ++classes;
            if (!tried.contains(name))
                missing.insert(name);
        }
    EXPECT_GT(classes, 1000);
    EXPECT_EQ(missing, std::set<std::string>());
}
