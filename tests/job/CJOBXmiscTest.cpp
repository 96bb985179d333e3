#include "job/CJOBXmisc.h"
#include "support/CountFailedAllocations.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <utility>
#include <vector>

using namespace std::string_literals;

namespace
{
std::unique_ptr<CJOBXmisc> ReadInfo(const std::string& bytes)
{
    const TempDir dir;
    dir.Write("info", bytes);
    auto misc = std::make_unique<CJOBXmisc>();
    EXPECT_EQ(misc->ParseODBOfMFC(dir.Path().c_str()), 1);
    return misc;
}

const std::vector<std::pair<std::string, CString CJOBXmisc::*>> kTexts = {
    {"JOB_NAME", &CJOBXmisc::m_sJobName},           {"ODB_SOURCE", &CJOBXmisc::m_sODBSource},
    {"CREATION_DATE", &CJOBXmisc::m_sCreationDate}, {"SAVE_DATE", &CJOBXmisc::m_sSaveDate},
    {"SAVE_APP", &CJOBXmisc::m_sSaveApp},           {"SAVE_USER", &CJOBXmisc::m_sSaveUser},
};

void ExpectOnlyText(const CJOBXmisc& misc, CString CJOBXmisc::*changed, const char* value)
{
    for (const auto& [key, member] : kTexts)
        EXPECT_EQ(misc.*member, member == changed ? value : "") << key;
    EXPECT_EQ(misc.m_nODBVersionMajor, 6);
    EXPECT_EQ(misc.m_nODBVersionMinor, 0);
}

const char* const kWhole = "JOB_NAME=my job\nUNITS=MM\nODB_VERSION_MAJOR=8\nODB_VERSION_MINOR=1\n"
                           "ODB_SOURCE=a tool\nCREATION_DATE=20250811.112048\nSAVE_DATE=20250812.112048\n"
                           "SAVE_APP=an app 9.0\nSAVE_USER=me\n";
} // namespace

TEST(Misc, NewRecordIsVersionSixWithoutTexts)
{
    ExpectOnlyText(CJOBXmisc(), nullptr, "");
}

TEST(Misc, Reader_TakesEveryKey)
{
    const auto misc = ReadInfo(kWhole);
    EXPECT_EQ(misc->m_sJobName, "my job");
    EXPECT_EQ(misc->m_nODBVersionMajor, 8);
    EXPECT_EQ(misc->m_nODBVersionMinor, 1);
    EXPECT_EQ(misc->m_sODBSource, "a tool");
    EXPECT_EQ(misc->m_sCreationDate, "20250811.112048");
    EXPECT_EQ(misc->m_sSaveDate, "20250812.112048");
    EXPECT_EQ(misc->m_sSaveApp, "an app 9.0");
    EXPECT_EQ(misc->m_sSaveUser, "me");
}

TEST(Misc, Reader_EachKeySetsItsTextAlone)
{
    for (const auto& [key, member] : kTexts)
        ExpectOnlyText(*ReadInfo(key + "=vAl\n"), member, "vAl");
}

TEST(Misc, Reader_EachVersionKeySetsItsNumberAlone)
{
    const auto major = ReadInfo("ODB_VERSION_MAJOR=8\n");
    EXPECT_EQ(major->m_nODBVersionMajor, 8);
    EXPECT_EQ(major->m_nODBVersionMinor, 0);
    const auto minor = ReadInfo("odb_version_minor=1\n");
    EXPECT_EQ(minor->m_nODBVersionMajor, 6);
    EXPECT_EQ(minor->m_nODBVersionMinor, 1);
}

TEST(Misc, Reader_LowerCaseSaveDateIsIgnoredAndEveryOtherLowerCaseKeyIsTaken)
{
    for (const auto& [key, member] : kTexts)
    {
        std::string lower = key;
        for (char& c : lower)
            c = static_cast<char>(c == '_' ? c : c + ('a' - 'A'));
        ExpectOnlyText(*ReadInfo(lower + "=v\n"), member, key == "SAVE_DATE" ? "" : "v");
    }
    ExpectOnlyText(*ReadInfo("Save_Date=v\n"), nullptr, "");
}

TEST(Misc, Reader_KeysAreBeginnings)
{
    for (const auto& [key, member] : kTexts)
        ExpectOnlyText(*ReadInfo(key + "S_X=v\n"), member, "v");
}

TEST(Misc, Reader_OtherLinesAreIgnored)
{
    ExpectOnlyText(
        *ReadInfo("UNITS=MM\nMAX_UID=3\nECHAR=1\necharJOB_NAME=x\nX_JOB_NAME=y\nODB_VERSION=9\nSAVE=1\n\n}\n"), nullptr,
        "");
}

TEST(Misc, Reader_ValueIsWhatFollowsTheFirstEqualsSignTrimmed)
{
    const std::pair<std::string, const char*> cases[] = {
        {"JOB_NAME= a = b \t", "a = b"},   {"JOB_NAME=", ""}, {"  JOB_NAME\t=x", "x"}, {"Job_Name x", "Job_Name x"},
        {"JOB_NAME=\xE4\xA0", "\xE4\xA0"},
    };
    for (const auto& [line, expected] : cases)
        EXPECT_EQ(ReadInfo(line)->m_sJobName, expected) << line;
}

TEST(Misc, Reader_MalformedVersionIsZero)
{
    const auto misc = ReadInfo("ODB_VERSION_MAJOR=x\nODB_VERSION_MINOR\n");
    EXPECT_EQ(misc->m_nODBVersionMajor, 0);
    EXPECT_EQ(misc->m_nODBVersionMinor, 0);
}

TEST(Misc, Reader_LastOfRepeatedKeysWins)
{
    EXPECT_EQ(ReadInfo("SAVE_APP=a\nSAVE_APP=b\n")->m_sSaveApp, "b");
}

TEST(Misc, Reader_MissingFileGivesZeroAndKeepsTheDefaults)
{
    const TempDir dir;
    CJOBXmisc misc;
    EXPECT_EQ(misc.ParseODBOfMFC(dir.Path().c_str()), 0);
    EXPECT_EQ(misc.ParseODBOfMFC(dir.Path("none").c_str()), 0);
    dir.MakeDir("info");
    EXPECT_EQ(misc.ParseODBOfMFC(dir.Path().c_str()), 0);
    ExpectOnlyText(misc, nullptr, "");
}

TEST(Misc, Reader_EmptyFileGivesOneAndKeepsTheDefaults)
{
    ExpectOnlyText(*ReadInfo(""), nullptr, "");
}

TEST(Misc, Reader_FileIsFoundInAnyLetterCase)
{
    const TempDir dir;
    dir.Write("Info", "JOB_NAME=x\n");
    CJOBXmisc misc;
    EXPECT_EQ(misc.ParseODBOfMFC(dir.Path().c_str()), 1);
    EXPECT_EQ(misc.m_sJobName, "x");
}

TEST(Misc, Reader_LineEndsMayBeCrLfAndTheLastOneMayMiss)
{
    const auto misc = ReadInfo("JOB_NAME=x\r\nODB_VERSION_MAJOR=8\r\nSAVE_DATE=1\r\nSAVE_USER=u");
    EXPECT_EQ(misc->m_sJobName, "x");
    EXPECT_EQ(misc->m_nODBVersionMajor, 8);
    EXPECT_EQ(misc->m_sSaveDate, "1");
    EXPECT_EQ(misc->m_sSaveUser, "u");
}

TEST(Misc, Reader_NulEndsTheTextOfItsLine)
{
    const auto misc = ReadInfo("JOB_NAME=a\0b\nSAVE_USER=u\n"s);
    EXPECT_EQ(misc->m_sJobName, "a");
    EXPECT_EQ(misc->m_sSaveUser, "u");
}

TEST(Misc, Reader_EveryBeginningOfAFileGivesTheValuesBegunInIt)
{
    const std::string whole = kWhole;
    for (std::size_t size = 0; size <= whole.size(); ++size)
    {
        const std::string bytes = whole.substr(0, size);
        const auto misc = ReadInfo(bytes);
        for (const auto& [key, member] : kTexts)
        {
            std::smatch found;
            const bool begun = std::regex_search(bytes, found, std::regex("(^|\\n)" + key + "([^\\n]*)"));
            const std::string rest = begun ? found[2].str() : "";
            // A key cut before its equals sign is its own value.
            std::string expected = rest.empty() ? (begun ? key : "") : rest.substr(1);
            expected.erase(expected.find_last_not_of(' ') + 1);
            ASSERT_EQ(misc.get()->*member, expected.c_str()) << key << " at " << size;
        }
    }
}

TEST(Misc, Reader_ExhaustedMemoryLeavesAsTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    dir.Write("INFO", kWhole); // found by listing, which takes memory
    const CString path = dir.Path().c_str();
    EXPECT_GT(CountFailedAllocations(
                  [&]
                  {
                      CJOBXmisc misc;
                      EXPECT_EQ(misc.ParseODBOfMFC(path), 1);
                  }),
              0);
}

TEST(Misc, RealJobs_EveryKeyIsReadAsItsLineSays)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    int read = 0;
    for (const auto& job : std::filesystem::directory_iterator(jobs))
    {
        std::ifstream file(job.path() / "misc/info", std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        if (bytes.empty())
            continue;
        CJOBXmisc misc;
        ASSERT_EQ(misc.ParseODBOfMFC((job.path() / "misc").string().c_str()), 1);
        const auto valueOf = [&bytes](const std::string& key)
        {
            std::smatch found;
            const std::regex line("(^|\\n)" + key + "=([^\\r\\n]*)");
            return std::regex_search(bytes, found, line) ? found[2].str() : std::string();
        };
        for (const auto& [key, member] : kTexts)
            EXPECT_EQ(misc.*member, valueOf(key).c_str()) << key;
        EXPECT_EQ(misc.m_nODBVersionMajor, std::stoi(valueOf("ODB_VERSION_MAJOR")));
        EXPECT_EQ(misc.m_nODBVersionMinor, std::stoi(valueOf("ODB_VERSION_MINOR")));
        ++read;
    }
    if (read == 0)
        GTEST_SKIP() << "no job with an info file in " << jobs;
}
