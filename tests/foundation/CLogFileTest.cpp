#include "foundation/CLogFile.h"
#include "support/CommaLocale.h"
#include "support/CurrentDir.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <regex>
#include <string>
#include <type_traits>
#include <vector>

using namespace std::string_literals;

namespace
{
constexpr std::size_t kLongest = 16383; // bytes of one text

std::vector<std::string> FilesIn(const TempDir& dir)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir.Path()))
        names.push_back(entry.path().filename().string());
    return names;
}

// What `write` leaves in a new log.
template <class Write>
std::string Logged(Write write)
{
    const TempDir dir;
    CLogFile log(dir.Path("l.txt").c_str(), 0);
    write(log);
    return dir.Read("l.txt");
}

// Seconds of the local day in "HHMMSS" or "HH:MM:SS".
int Seconds(std::string time)
{
    std::erase(time, ':');
    return std::stoi(time.substr(0, 2)) * 3600 + std::stoi(time.substr(2, 2)) * 60 + std::stoi(time.substr(4, 2));
}

int SecondsNow()
{
    const std::time_t now = std::time(nullptr);
    const std::tm local = *std::localtime(&now);
    return local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
}

void ExpectJustNow(const std::string& time)
{
    constexpr int kDay = 24 * 3600;
    EXPECT_LE((SecondsNow() - Seconds(time) + kDay) % kDay, 60) << time;
}
} // namespace

TEST(LogFile, NewLogHasNoNameAndIsNotOpen)
{
    const TempDir dir;
    const CurrentDir inside(dir.Path());
    CLogFile log;
    EXPECT_EQ(log.GetFileName(), "");
    EXPECT_EQ(log.m_nWriteStop, 0);
    EXPECT_EQ(log.m_nTimeStamp, 0);
    log.Write("lost\n");
    EXPECT_TRUE(FilesIn(dir).empty());
}

TEST(LogFile, NamedLogOpensItsFileAtOnce)
{
    const TempDir dir;
    const CLogFile log(dir.Path("run.txt").c_str(), 0);
    EXPECT_EQ(log.GetFileName(), dir.Path("run.txt").c_str());
    EXPECT_EQ(log.m_nTimeStamp, 0);
    EXPECT_EQ(FilesIn(dir), std::vector<std::string>{"run.txt"});
}

TEST(LogFile, ExtensionIsAddedUnlessItIsThereInAnyLetterCase)
{
    const std::pair<const char*, const char*> cases[] = {
        {"run", "run.TXT"},       {"run.TXT", "run.TXT"},       {"run.Txt", "run.Txt"},     {"run.log", "run.log.TXT"},
        {"runTXT", "runTXT.TXT"}, {"run.txt ", "run.txt .TXT"}, {"r.TXT.x", "r.TXT.x.TXT"}, {"a", "a.TXT"},
    };
    for (const auto& [name, expected] : cases)
    {
        const TempDir dir;
        const CLogFile log(dir.Path(name).c_str(), 0);
        EXPECT_EQ(log.GetFileName(), dir.Path(expected).c_str());
        EXPECT_EQ(FilesIn(dir), std::vector<std::string>{expected});
    }
}

TEST(LogFile, NameOfTheExtensionAloneIsAName)
{
    const TempDir dir;
    const CurrentDir inside(dir.Path());
    const CLogFile log(".txt", 0);
    EXPECT_EQ(FilesIn(dir), std::vector<std::string>{".txt"});
    const CLogFile empty("", 0);
    EXPECT_EQ(empty.GetFileName(), ".TXT");
}

TEST(LogFile, TimeIsAddedToTheNameBeforeTheExtension)
{
    const TempDir dir;
    const CurrentDir inside(dir.Path());
    const CLogFile log("run", 1);
    const std::string name = log.GetFileName().GetString();
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(name, parts, std::regex("run_(20\\d\\d)([01]\\d)([0-3]\\d)(\\d{6})\\.TXT"))) << name;
    ExpectJustNow(parts[4]);
    EXPECT_EQ(FilesIn(dir), std::vector<std::string>{name});
    const CLogFile second("run.txt", -1);
    EXPECT_TRUE(std::regex_match(second.GetFileName().GetString(), std::regex("run\\.txt_\\d{14}\\.TXT")));
}

TEST(LogFile, WithoutANameTheDefaultNameIsOpenedAndNotKept)
{
    const TempDir dir;
    const CurrentDir inside(dir.Path());
    CLogFile log(1);
    EXPECT_EQ(log.GetFileName(), "");
    log.Write("ok\n");
    ASSERT_EQ(FilesIn(dir).size(), 1U);
    const std::string name = FilesIn(dir)[0];
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(name, parts, std::regex("TESTLOGDEFAULTNAME_\\d{8}(\\d{6})\\.TXT"))) << name;
    ExpectJustNow(parts[1]);
    EXPECT_EQ(dir.Read(name), "ok\n");
}

TEST(LogFile, OpeningEmptiesTheFile)
{
    const TempDir dir;
    dir.Write("l.txt", "old text");
    CLogFile log(dir.Path("l.txt").c_str(), 0);
    EXPECT_EQ(dir.Read("l.txt"), "");
    log.Write("a");
    EXPECT_EQ(log.OpenLogFile(), 1);
    log.Write("b");
    EXPECT_EQ(dir.Read("l.txt"), "b");
}

TEST(LogFile, FailedOpenAnswersOneAndWritingDoesNothing)
{
    const TempDir dir;
    CLogFile log;
    log.SetFileName(dir.Path("none/l.txt").c_str());
    EXPECT_EQ(log.OpenLogFile(), 1);
    log.Write("lost\n");
    EXPECT_TRUE(FilesIn(dir).empty());
    log.SetFileName(dir.Path().c_str());
    EXPECT_EQ(log.OpenLogFile(), 1);
    log.Write("lost\n");
    EXPECT_TRUE(FilesIn(dir).empty());
}

TEST(LogFile, FailedOpenLeavesTheFormerFileClosed)
{
    const TempDir dir;
    CLogFile log(dir.Path("a.txt").c_str(), 0);
    log.Write("a");
    log.SetFileName(dir.Path("none/l.txt").c_str());
    log.OpenLogFile();
    log.Write("b");
    EXPECT_EQ(dir.Read("a.txt"), "a");
}

TEST(LogFile, NewNameTakesEffectWithTheNextOpening)
{
    const TempDir dir;
    CLogFile log(dir.Path("a.txt").c_str(), 0);
    CString name = dir.Path("b.log").c_str(); // hosts pass variables
    log.SetFileName(name);
    EXPECT_EQ(log.GetFileName(), name);
    log.Write("a");
    log.OpenLogFile();
    log.Write("b");
    EXPECT_EQ(dir.Read("a.txt"), "a");
    EXPECT_EQ(dir.Read("b.log"), "b");
}

TEST(LogFile, ClosedLogWritesNothingAndMayBeClosedAgain)
{
    const TempDir dir;
    CLogFile log(dir.Path("l.txt").c_str(), 0);
    log.Write("a");
    EXPECT_EQ(log.CloseLogFile(), 1);
    EXPECT_EQ(log.CloseLogFile(), 1);
    log.Write("b");
    EXPECT_EQ(dir.Read("l.txt"), "a");
}

TEST(LogFile, IsNotCopyable)
{
    EXPECT_FALSE(std::is_copy_constructible_v<CLogFile>);
    EXPECT_FALSE(std::is_copy_assignable_v<CLogFile>);
}

TEST(LogFile, Write_IsOnDiskAtOnceWithoutALineEndOfItsOwn)
{
    const TempDir dir;
    CLogFile log(dir.Path("l.txt").c_str(), 0);
    log.Write("a");
    EXPECT_EQ(dir.Read("l.txt"), "a");
    char text[] = "b\n"; // hosts pass buffers
    log.Write(text);
    EXPECT_EQ(dir.Read("l.txt"), "ab\n");
}

TEST(LogFile, Write_StopsWhileAskedTo)
{
    EXPECT_EQ(Logged(
                  [](CLogFile& log)
                  {
                      log.Write("a");
                      log.SetWriteStop(-1);
                      log.Write("b");
                      log.SetWriteStop(0);
                      log.Write("c");
                  }),
              "ac");
}

TEST(LogFile, Write_StampsTheTimeRightBeforeTheText)
{
    const std::string text = Logged(
        [](CLogFile& log)
        {
            log.m_nTimeStamp = 1;
            log.Write("ok\n");
            log.m_nTimeStamp = 0;
            log.Write("plain\n");
        });
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(text, parts, std::regex("\\[(\\d\\d:\\d\\d:\\d\\d)\\]ok\nplain\n"))) << text;
    ExpectJustNow(parts[1]);
}

TEST(LogFile, Write_PrintsTheArgumentsThatFollow)
{
    const CString name = "layer";
    EXPECT_EQ(Logged([&](CLogFile& log) { log.Write("%s %d of %5.2f%% %c%*d|%-4s|", name, 3, 0.5, 'x', 4, 7, "ab"); }),
              "layer 3 of  0.50% x   7|ab  |");
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write("%lld %zu %hhd %x", -1LL, sizeof(char), true, 255U); }),
              "-1 1 1 ff");
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write("%f", 0.25F); }), "0.250000");
}

TEST(LogFile, Write_ConversionsWithoutAnArgumentStandAsTheyAreWritten)
{
    for (const char* const text : {"100% done\n", "%s%s%s\n", "%", "%d", "50%", "%*d", "%n", "%1$s", "%5", "% ", "%ll"})
        EXPECT_EQ(Logged([&](CLogFile& log) { log.Write(text); }), text);
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write("%%"); }), "%");
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write("%d %d %%\n", 1); }), "1 %d %\n");
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write("%*d %d\n", 3); }), "%*d %d\n");
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write("%d %2$s\n", 1, "x"); }), "1 %2$s\n");
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write("%d\n", 1, 2); }), "1\n");
}

TEST(LogFile, Write_NullTextWritesNothing)
{
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write(nullptr); }), "");
}

TEST(LogFile, Write_TextIsCutAtTheBuffer)
{
    for (const std::size_t size : {kLongest - 1, kLongest, kLongest + 1, 4 * kLongest})
    {
        const std::string text(size, 'x');
        const std::string expected(std::min(size, kLongest), 'x');
        EXPECT_EQ(Logged([&](CLogFile& log) { log.Write(text.c_str()); }), expected);
        EXPECT_EQ(Logged([&](CLogFile& log) { log.Write("%s", text.c_str()); }), expected);
        EXPECT_EQ(Logged(
                      [&](CLogFile& log)
                      {
                          log.Write("%s", text.c_str());
                          log.Write("|next\n");
                      }),
                  expected + "|next\n");
    }
}

TEST(LogFile, Write_TextThatCannotBePrintedIsLeftOut)
{
    const wchar_t wide[] = {static_cast<wchar_t>(0x7FFFFFFF), L'\0'}; // no character
    EXPECT_EQ(Logged(
                  [&](CLogFile& log)
                  {
                      log.Write("%ls", wide);
                      log.Write("next");
                  }),
              "next");
}

TEST(LogFile, Write_EightBitTextPassesUnchanged)
{
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write("\xE4\xFF\x80 %s", "\xC3"); }), "\xE4\xFF\x80 \xC3");
}

TEST(LogFile, Write_PrintsPointsInALocaleWithADecimalComma)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    EXPECT_EQ(Logged([](CLogFile& log) { log.Write("%.1f\n", 0.5); }), "0.5\n");
    const TempDir dir;
    const CLogFile log(dir.Path("run").c_str(), 1);
    EXPECT_TRUE(std::regex_search(log.GetFileName().GetString(), std::regex("run_\\d{14}\\.TXT$")));
}
