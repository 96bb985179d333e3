#include "foundation/framework/CStdioFile.h"

#include "foundation/framework/RaisedPointer.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

namespace
{
std::vector<std::string> Lines(CStdioFile& file)
{
    std::vector<std::string> lines;
    CString line;
    while (file.ReadString(line))
        lines.emplace_back(line.View());
    EXPECT_EQ(line, "");
    return lines;
}

// The lines of a file with these bytes.
std::vector<std::string> LinesOf(std::string_view bytes)
{
    const TempDir dir;
    CStdioFile file(dir.Write("file", bytes).c_str(), CFile::modeRead);
    return Lines(file);
}

using Texts = std::vector<std::string>;
} // namespace

TEST(StdioFile, ReadString_EndsLinesAtLfAndCrlf)
{
    const struct
    {
        std::string bytes;
        Texts lines;
    } cases[] = {
        {"", {}},
        {"\n", {""}},
        {"\r\n", {""}},
        {"a", {"a"}},
        {"a\n", {"a"}},
        {"a\r\nb\n\nc", {"a", "b", "", "c"}},
        {"a\rb\r\n", {"a\rb"}},
        {"a\r\r\n", {"a\r"}},
        {"a\r", {"a\r"}},
        {"\r", {"\r"}},
        {"\n\r", {"", "\r"}},
        {"  a\t \n", {"  a\t "}},
    };
    for (const auto& one : cases)
        EXPECT_EQ(LinesOf(one.bytes), one.lines) << testing::PrintToString(one.bytes);
}

TEST(StdioFile, ReadString_PassesEveryOtherByteThrough)
{
    std::string line;
    for (int c = 0; c < 256; ++c)
        if (c != '\n')
            line += static_cast<char>(c);
    EXPECT_EQ(LinesOf(line + "\n" + line), (Texts{line, line}));
    const std::string nuls(3, '\0');
    EXPECT_EQ(LinesOf(nuls), (Texts{nuls}));
    EXPECT_EQ(LinesOf(nuls + "\n" + nuls + "\r\n\n" + nuls), (Texts{nuls, nuls, "", nuls}));
    EXPECT_EQ(LinesOf(std::string("\0\n\0\n", 4)), (Texts{std::string(1, '\0'), std::string(1, '\0')}));
}

TEST(StdioFile, ReadString_TakesLinesOfEveryLengthAroundTheBuffers)
{
    for (const char fill : {'x', '\0', '\r'})
        for (const std::string end : {"\n", "\r\n", ""})
        {
            std::string bytes;
            Texts lines;
            for (const std::size_t length :
                 {1U, 509U, 510U, 511U, 512U, 513U, 1021U, 1022U, 1023U, 1024U, 4096U, 8192U})
            {
                lines.emplace_back(length, fill);
                bytes += lines.back() + (end.empty() ? "\n" : end);
                if (fill == '\r' && end != "\r\n")
                    lines.back().pop_back(); // the last one belongs to the line end
            }
            if (end.empty())
            {
                bytes.pop_back();
                if (fill == '\r')
                    lines.back() += '\r';
            }
            EXPECT_EQ(LinesOf(bytes), lines);
        }
}

TEST(StdioFile, ReadString_IsLinearInTheLength)
{
    const TempDir dir;
    const auto seconds = [&](std::size_t length)
    {
        const std::string path = dir.Write("file", std::string(length, 'x'));
        CString line;
        const std::clock_t begin = std::clock(); // processor time, which other programs hardly change
        CStdioFile file(path.c_str(), CFile::modeRead);
        EXPECT_TRUE(file.ReadString(line));
        const std::clock_t taken = std::clock() - begin;
        EXPECT_EQ(line.GetLength(), static_cast<int>(length));
        return static_cast<double>(taken) / CLOCKS_PER_SEC;
    };
    const double one = std::min(seconds(4000000), seconds(4000000));
    const double four = std::min(seconds(16000000), seconds(16000000));
    EXPECT_LT(four, 12 * one + 0.05); // 4 when linear, 16 when quadratic
}

TEST(StdioFile, ReadString_IntoABufferKeepsTheLineEnd)
{
    const TempDir dir;
    CStdioFile file(dir.Write("file", "ab\r\n\ncd\rx\r\nlast").c_str(), CFile::modeRead);
    char buffer[100];
    for (const char* const expected : {"ab\n", "\n", "cd\rx\n", "last"})
    {
        EXPECT_EQ(file.ReadString(buffer, sizeof(buffer)), buffer);
        EXPECT_STREQ(buffer, expected);
    }
    EXPECT_EQ(file.ReadString(buffer, sizeof(buffer)), nullptr);
    EXPECT_STREQ(buffer, "");
}

TEST(StdioFile, ReadString_IntoASmallBufferGoesOnWithTheNextCall)
{
    const TempDir dir;
    CStdioFile file(dir.Write("file", "abcde\r\nfg\r").c_str(), CFile::modeRead);
    char buffer[4];
    for (const char* const expected : {"abc", "de\n", "fg\r"})
    {
        ASSERT_NE(file.ReadString(buffer, sizeof(buffer)), nullptr);
        EXPECT_STREQ(buffer, expected);
    }
    EXPECT_EQ(file.ReadString(buffer, sizeof(buffer)), nullptr);
    EXPECT_EQ(file.ReadString(buffer, 1), buffer);
    EXPECT_STREQ(buffer, "");
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.ReadString(buffer, 0); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.ReadString(nullptr, 4); }));
}

TEST(StdioFile, WriteString_WritesTheTextAsItIs)
{
    const TempDir dir;
    CStdioFile file(dir.Path("file").c_str(), CFile::modeCreate | CFile::modeWrite | CFile::typeText);
    file.WriteString("a\n");
    file.WriteString("b\r\n%s");
    file.WriteString("");
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.WriteString(nullptr); }));
    file.Close();
    EXPECT_EQ(dir.Read("file"), "a\nb\r\n%s");
}

TEST(StdioFile, LinesBytesAndPositions_FitTogether)
{
    const TempDir dir;
    CStdioFile file(dir.Path("file").c_str(), CFile::modeCreate | CFile::modeReadWrite);
    file.WriteString("one\ntwo\nthree\n");
    file.SeekToBegin();
    CString line;
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(file.GetPosition(), 4U);
    EXPECT_EQ(file.GetLength(), 14U);
    char byte = 0;
    EXPECT_EQ(file.Read(&byte, 1), 1U);
    EXPECT_EQ(byte, 't');
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, "wo");
    file.WriteString("THREE");
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, "");
    EXPECT_FALSE(file.ReadString(line));
    file.WriteString("four");
    file.Seek(-4, CFile::end);
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, "four");
    file.Flush();
    EXPECT_EQ(dir.Read("file"), "one\ntwo\nTHREE\nfour");
}

TEST(StdioFile, Stream_IsTakenAndClosed)
{
    std::FILE* const stream = std::tmpfile();
    ASSERT_NE(stream, nullptr);
    CStdioFile file(stream);
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(file.m_pStream, stream);
    std::fprintf(file.m_pStream, "%d\n", 5);
    file.SeekToBegin();
    EXPECT_EQ(Lines(file), (Texts{"5"}));
    file.Close();
    EXPECT_FALSE(file.IsOpen());
}

TEST(StdioFile, Failures_RaiseFileException)
{
    const TempDir dir;
    CString line;
    CStdioFile closed;
    EXPECT_EQ(CauseOf<CFileException>([&] { closed.ReadString(line); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf<CFileException>([&] { closed.WriteString("x"); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf<CFileException>([&] { CStdioFile(dir.Path("none").c_str(), CFile::modeRead); }),
              CFileException::fileNotFound);
    const std::string path = dir.Write("file", "x");
    CStdioFile writer(path.c_str(), CFile::modeWrite);
    EXPECT_EQ(CauseOf<CFileException>([&] { writer.ReadString(line); }), CFileException::accessDenied);
    CStdioFile reader(path.c_str(), CFile::modeRead);
    EXPECT_EQ(CauseOf<CFileException>([&] { reader.WriteString("x"); }), CFileException::accessDenied);
}

TEST(StdioFile, ReadString_TakesALastLineOfEveryLength)
{
    for (std::size_t length = 500; length < 520; ++length)
    {
        const std::string line(length, 'x');
        EXPECT_EQ(LinesOf(line), (Texts{line}));
        EXPECT_EQ(LinesOf("\n" + line), (Texts{"", line}));
    }
}

TEST(StdioFile, AStreamThatDoesNotServeTheUseRaisesFileException)
{
    const TempDir dir;
    const std::string path = dir.Write("file", "line\n");
    CString line;
    char buffer[8] = "old";
    CStdioFile writing(std::fopen(path.c_str(), "ab")); // what the stream was opened for is not known
    EXPECT_EQ(CauseOf<CFileException>([&] { writing.ReadString(line); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf<CFileException>([&] { writing.ReadString(buffer, sizeof buffer); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf<CFileException>([&] { writing.Read(buffer, 1); }), CFileException::invalidFile);
    CStdioFile reading(std::fopen(path.c_str(), "rb"));
    EXPECT_EQ(CauseOf<CFileException>([&] { reading.WriteString("x"); }), CFileException::invalidFile);
    EXPECT_EQ(dir.Read("file"), "line\n");
}

TEST(StdioFile, AFullDiskShowsWhenReadingFollowsWriting)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "needs a device that is always full";
    CStdioFile file("/dev/full", CFile::modeReadWrite);
    file.WriteString("x");
    CString line;
    EXPECT_EQ(CauseOf<CFileException>([&] { file.ReadString(line); }), CFileException::diskFull);
    file.Abort();
}

TEST(StdioFile, AFullDiskShowsWhenTheRestIsWritten)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "needs a device that is always full";
    CStdioFile file("/dev/full", CFile::modeWrite);
    file.WriteString("x");
    EXPECT_EQ(CauseOf<CFileException>([&] { file.Flush(); }), CFileException::diskFull);
    file.WriteString("x");
    EXPECT_EQ(CauseOf<CFileException>([&] { file.Close(); }), CFileException::diskFull);
    EXPECT_FALSE(file.IsOpen());
}
