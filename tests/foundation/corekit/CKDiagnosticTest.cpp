#include "foundation/corekit/CKDiagnostic.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/RecordingSink.h"

#include <gtest/gtest.h>

#include <cerrno>

TEST(CKDiagnostic, Text_NamesOperationPathReasonAndCaller)
{
    const CKDiagnostic diagnostic{"Reader.cpp", 12, "read", "/job/matrix", ENOENT};
    EXPECT_EQ(diagnostic.Text(), "cannot read /job/matrix: No such file or directory (Reader.cpp:12)");
}

TEST(CKDiagnostic, Text_LeavesOutWhatIsUnknown)
{
    EXPECT_EQ((CKDiagnostic{"", 0, "list", "/job", 0}).Text(), "cannot list /job");
    EXPECT_EQ((CKDiagnostic{"", 0, "decompress", "f.Z", EBADMSG}).Text(), "cannot decompress f.Z: the data is damaged");
}

TEST(CKDiagnostic, Text_NamesTheNumberOfAnUnknownReason)
{
    EXPECT_EQ((CKDiagnostic{"", 0, "read", "/job", 99999}).Text(), "cannot read /job: Unknown error 99999");
}

TEST(CKDiagnostic, Text_IsOneLineWhateverThePathHolds)
{
    const CKDiagnostic diagnostic{"", 0, "read", "a\nb\r\x1B[0m\x7F %s\xE4", 0};
    EXPECT_EQ(diagnostic.Text(), "cannot read a?b??[0m? %s\xE4");
}

TEST(CKDiagnostic, Report_HandsEveryFieldToTheSink)
{
    const RecordingSink sink;
    CKUtility::GetInstance()->Report("Writer.cpp", 5, "write", "/job/file", ENOSPC);
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].sourceFile, "Writer.cpp");
    EXPECT_EQ(sink.all[0].line, 5);
    EXPECT_EQ(sink.all[0].operation, "write");
    EXPECT_EQ(sink.all[0].path, "/job/file");
    EXPECT_EQ(sink.all[0].systemError, ENOSPC);
}

TEST(CKDiagnostic, SetDiagnosticSink_ReturnsTheFormerOne)
{
    RecordingSink first; // its destructor sets the sink that was set before the test
    {
        RecordingSink second;
        EXPECT_EQ(CKUtility::GetInstance()->SetDiagnosticSink(&second), &second);
    }
    EXPECT_EQ(CKUtility::GetInstance()->SetDiagnosticSink(nullptr), &first);
    CKUtility::GetInstance()->Report("", 0, "read", "x", 0);
    EXPECT_TRUE(first.all.empty());
    EXPECT_EQ(CKUtility::GetInstance()->SetDiagnosticSink(&first), nullptr);
}

TEST(CKDiagnostic, Text_ReplacesWhatShowsNothingOrTurnsTheDirection)
{
    const auto shown = [](const char* path) { return CKDiagnostic{"", 0, "read", path, 0}.Text(); };
    EXPECT_EQ(shown("/a\xE2\x80\xAE"
                    "b\xE2\x81\xA6\xEF\xBB\xBF"),
              "cannot read /a?b??");
    EXPECT_EQ(shown("\xC2\x85\xE2\x80\xA8\xF3\xA0\x81\x81"), "cannot read ???");
    EXPECT_EQ(shown("\xC3\xA9\xE2\x82\xAC\xE2\x80\xAF"), "cannot read \xC3\xA9\xE2\x82\xAC\xE2\x80\xAF");
    EXPECT_EQ(shown("\xE2\x80"), "cannot read \xE2\x80");
}

TEST(CKDiagnostic, Report_PrintsOnStandardErrorUntilASinkIsSetAndNothingOnceItIsNull)
{
    CKUtility& files = *CKUtility::GetInstance();
    testing::internal::CaptureStderr();
    files.Report("", 0, "write", "/job/file", ENOSPC);
    CKDiagnosticSink* const first = files.SetDiagnosticSink(nullptr);
    files.Report("", 0, "write", "/job/silent", ENOSPC);
    files.SetDiagnosticSink(first);
    files.Report("", 0, "write", "/job/again", EBADMSG);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "JOBXCLSDLL: cannot write /job/file: No space left on device\n"
                                                      "JOBXCLSDLL: cannot write /job/again: the data is damaged\n");
}
