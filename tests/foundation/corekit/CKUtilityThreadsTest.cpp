#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/RecordingSink.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace k_utility_threads_test
{
namespace
{
constexpr int kThreads = 32;

// Runs `work(i)` in 32 threads that start at once.
template <class Work>
void InThreads(Work work)
{
    std::barrier start(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back(
            [&start, &work, i]
            {
                start.arrive_and_wait();
                work(i);
            });
    for (std::thread& thread : threads)
        thread.join();
}

CString Text(const std::string& text)
{
    return CString(std::string_view(text));
}

// Notices a call that comes while another one is in it.
class CountingSink : public CKDiagnosticSink
{
public:
    void OnDiagnostic(const CKDiagnostic& diagnostic) override
    {
        if (m_inside.exchange(true))
            m_wasCalledTwiceAtOnce = true;
        std::this_thread::yield();
        m_nCount += diagnostic.path.IsEmpty() ? 0 : 1;
        m_inside = false;
    }

    int m_nCount = 0; // the utility's lock guards it
    std::atomic<bool> m_wasCalledTwiceAtOnce{false};

private:
    std::atomic<bool> m_inside{false};
};

// Does what a sink should not: fails itself, sets another sink, throws.
class RudeSink : public CKDiagnosticSink
{
public:
    void OnDiagnostic(const CKDiagnostic&) override
    {
        ++m_nCount;
        CKUtility::GetInstance()->MakeDirectory("/no/such/parent/directory");
        CKUtility::GetInstance()->SetDiagnosticSink(nullptr);
        throw std::runtime_error("from the sink");
    }
    int m_nCount = 0;
};
} // namespace

// The first test of this file, so that in a process of its own the instance is made here.
TEST(CKUtilityThreads, GetInstance_IsOneObjectAlsoOnFirstUseFromManyThreads)
{
    std::vector<CKUtility*> instances(kThreads);
    InThreads([&](int i) { instances[static_cast<std::size_t>(i)] = CKUtility::GetInstance(); });
    for (const CKUtility* instance : instances)
        EXPECT_EQ(instance, CKUtility::GetInstance());
}

TEST(CKUtilityThreads, Operations_OnDifferentPathsRunAtOnce)
{
    const TempDir dir;
    for (int i = 0; i < kThreads; ++i)
        dir.Write(std::to_string(i) + "/Features.Z", std::string("\x1F\x9D\x90x\0", 5));
    std::atomic<int> good{0};
    InThreads(
        [&](int i)
        {
            CKUtility& utility = *CKUtility::GetInstance();
            const CString folder = Text(dir.Path(std::to_string(i)));
            for (int round = 0; round < 20; ++round)
            {
                const CString made = utility.CKPathCombine(folder, "made");
                utility.MakeDirectory(made);
                const int decompressed = utility.GDecompress(utility.FindPath(folder, "features.z"));
                CStringArray files;
                utility.GetAllFileListIn(folder, files, "*.*", 1);
                CStringArray folders;
                utility.GetAllSubDirListIn(folder, folders, 0);
                utility.DeleteDirectory(made);
                if (decompressed == 1 && files.GetSize() == 2 && utility.IsFile(files[0]) && folders.GetSize() == 1 &&
                    !utility.IsDir(made))
                    ++good;
            }
        });
    EXPECT_EQ(good, kThreads * 20);
}

TEST(CKUtilityThreads, Decompression_OfOneFileByManyThreadsNeverShowsHalfAFile)
{
    const TempDir dir;
    const CString path = Text(dir.Write("features.Z", std::string("\x1F\x9D\x90x\0", 5)));
    const CString target = Text(dir.Path("features"));
    ASSERT_EQ(CKUtility::GetInstance()->GDecompress(path), 1);
    std::atomic<int> good{0};
    InThreads([&](int)
              { good += CKUtility::GetInstance()->GDecompress(path) == 1 && dir.Read("features") == "x" ? 1 : 0; });
    EXPECT_EQ(good, kThreads);
    CStringArray files;
    CKUtility::GetInstance()->GetAllFileListIn(Text(dir.Path()), files, "*.*", 1);
    EXPECT_EQ(files.GetSize(), 2) << "something unfinished was left";
}

TEST(CKUtilityThreads, Sink_IsCalledByOneThreadAtATime)
{
    CountingSink sink;
    CKDiagnosticSink* const former = CKUtility::GetInstance()->SetDiagnosticSink(&sink);
    InThreads(
        [](int)
        {
            for (int round = 0; round < 50; ++round)
                CKUtility::GetInstance()->MakeDirectory("/no/such/parent/directory");
        });
    EXPECT_EQ(CKUtility::GetInstance()->SetDiagnosticSink(former), &sink);
    EXPECT_EQ(sink.m_nCount, kThreads * 50);
    EXPECT_FALSE(sink.m_wasCalledTwiceAtOnce);
}

TEST(CKUtilityThreads, Sink_ThatThrowsFailsOrReplacesItselfLeavesTheUtilityUsable)
{
    RudeSink sink;
    CKDiagnosticSink* const former = CKUtility::GetInstance()->SetDiagnosticSink(&sink);
    EXPECT_THROW(CKUtility::GetInstance()->MakeDirectory("/no/such/parent/directory"), std::runtime_error);
    EXPECT_EQ(sink.m_nCount, 1);
    // Another thread would wait forever for a lock that was kept.
    std::thread([] { CKUtility::GetInstance()->MakeDirectory("/no/such/parent/directory"); }).join();
    EXPECT_EQ(sink.m_nCount, 1) << "the sink took itself out";
    {
        RecordingSink recording;
        CKUtility::GetInstance()->MakeDirectory("/no/such/parent/directory");
        EXPECT_EQ(recording.all.size(), 1U);
    }
    CKUtility::GetInstance()->SetDiagnosticSink(former);
}
} // namespace k_utility_threads_test
