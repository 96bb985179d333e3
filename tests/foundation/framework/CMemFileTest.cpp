#include "foundation/framework/CMemFile.h"

#include "foundation/framework/RaisedPointer.h"
#include "support/MemoryChecker.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>

namespace mem_file_test
{
namespace
{
void Put(CFile& file, std::string_view bytes)
{
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
}

std::string All(const CMemFile& file)
{
    const auto length = static_cast<std::size_t>(file.GetLength());
    return length == 0 ? std::string() : std::string(reinterpret_cast<const char*>(file.GetBufferPtr()), length);
}
} // namespace

TEST(MemFile, Write_AppendsOverwritesAndReadsBack)
{
    CMemFile file(1024);
    Put(file, "hello");
    file.Seek(1, CFile::begin);
    Put(file, "EL");
    EXPECT_EQ(file.GetPosition(), 3U);
    EXPECT_EQ(All(file), "hELlo");
    char buffer[10] = {};
    EXPECT_EQ(file.Read(buffer, sizeof(buffer)), 2U);
    EXPECT_STREQ(buffer, "lo");
    EXPECT_EQ(file.Read(buffer, sizeof(buffer)), 0U);
    EXPECT_EQ(file.GetLength(), 5U);
}

TEST(MemFile, Write_BehindTheEndFillsTheGapWithZero)
{
    CMemFile file;
    Put(file, "a");
    EXPECT_EQ(file.Seek(3, CFile::begin), 3U);
    EXPECT_EQ(file.GetLength(), 1U);
    Put(file, "b");
    EXPECT_EQ(All(file), std::string("a\0\0b", 4));
}

TEST(MemFile, Write_OfManyPiecesStaysInOrder)
{
    for (const UINT growth : {0U, 1U, 1024U})
    {
        CMemFile file(growth);
        std::string expected;
        for (int i = 0; i < 20000; ++i)
        {
            const std::string part = std::to_string(i);
            Put(file, part);
            expected += part;
        }
        EXPECT_EQ(All(file), expected);
    }
}

TEST(MemFile, Write_OfItsOwnBytesWhileItGrows)
{
    CMemFile file(1);
    Put(file, "abcdefgh");
    for (int i = 0; i < 10; ++i)
        file.Write(file.GetBufferPtr(), static_cast<UINT>(file.GetLength()));
    EXPECT_EQ(file.GetLength(), 8192U);
    EXPECT_EQ(All(file).substr(8184), "abcdefgh");
}

TEST(MemFile, Seek_GoesFromEveryPlaceAndRefusesNegativePositions)
{
    CMemFile file;
    Put(file, "hello");
    EXPECT_EQ(file.Seek(-2, CFile::end), 3U);
    EXPECT_EQ(file.Seek(-1, CFile::current), 2U);
    EXPECT_EQ(file.Seek(10, CFile::current), 12U);
    EXPECT_EQ(file.SeekToEnd(), 5U);
    file.SeekToBegin();
    EXPECT_EQ(file.GetPosition(), 0U);
    constexpr __int64 kLeast = std::numeric_limits<__int64>::min();
    for (const UINT from : {CFile::begin, CFile::current, CFile::end})
        for (const __int64 offset : {__int64{-6}, kLeast})
            EXPECT_EQ(CauseOf<CFileException>([&] { file.Seek(offset, from); }), CFileException::badSeek);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.Seek(0, 3); }));
    EXPECT_EQ(file.GetPosition(), 0U);
}

TEST(MemFile, Positions_BeyondMemoryRaise)
{
    CMemFile file;
    char byte = 0;
    file.Seek(std::numeric_limits<__int64>::max(), CFile::begin);
    EXPECT_EQ(file.Read(&byte, 1), 0U);
    EXPECT_TRUE(Raises<CMemoryException>([&] { file.Write(&byte, 1); }));
    file.Seek(std::numeric_limits<__int64>::max(), CFile::current);
    EXPECT_EQ(CauseOf<CFileException>([&] { file.Seek(std::numeric_limits<__int64>::max(), CFile::current); }),
              CFileException::badSeek);
    EXPECT_TRUE(Raises<CMemoryException>([&] { file.Write(&byte, 1); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { file.SetLength(std::numeric_limits<ULONGLONG>::max()); }));
    EXPECT_EQ(file.GetLength(), 0U);
}

TEST(MemFile, SetLength_BeyondTheMemoryRaisesAndKeepsTheBytes)
{
#if defined(JOBX_MEMORY_CHECKER)
    GTEST_SKIP() << "the checker ends the process when memory is refused";
#endif
    CMemFile file;
    file.Write("ab", 2);
    EXPECT_TRUE(Raises<CMemoryException>([&] { file.SetLength(ULONGLONG{1} << 60U); }));
    EXPECT_EQ(file.GetLength(), 2U);
}

TEST(MemFile, Write_ThatWouldEndBehindTheLastPositionRaises)
{
    CMemFile file;
    const char bytes[2] = {};
    file.Seek(std::numeric_limits<__int64>::max(), CFile::begin);
    file.Seek(std::numeric_limits<__int64>::max(), CFile::current);
    file.Seek(1, CFile::current);
    EXPECT_EQ(file.GetPosition(), std::numeric_limits<ULONGLONG>::max());
    EXPECT_TRUE(Raises<CMemoryException>([&] { file.Write(bytes, 2); }));
    EXPECT_EQ(file.GetLength(), 0U);
}

TEST(MemFile, SetLength_CutsAndFillsWithZero)
{
    CMemFile file;
    Put(file, "hello");
    file.SetLength(2);
    EXPECT_EQ(file.GetPosition(), 2U);
    file.SetLength(4);
    EXPECT_EQ(file.GetPosition(), 2U);
    EXPECT_EQ(All(file), std::string("he\0\0", 4));
    file.SetLength(0);
    EXPECT_EQ(file.GetLength(), 0U);
}

TEST(MemFile, AttachedForReading_RefusesWriting)
{
    const BYTE bytes[] = {'a', 'b', 'c'};
    CMemFile file(bytes, sizeof(bytes));
    EXPECT_EQ(All(file), "abc");
    EXPECT_EQ(file.GetBufferPtr(), bytes);
    EXPECT_EQ(CauseOf<CFileException>([&] { Put(file, "x"); }), CFileException::accessDenied);
    EXPECT_EQ(CauseOf<CFileException>([&] { file.SetLength(1); }), CFileException::accessDenied);
    CMemFile none(static_cast<const BYTE*>(nullptr), 0);
    EXPECT_EQ(none.GetLength(), 0U);
}

TEST(MemFile, AttachedWithoutGrowth_IsTheCallersBlock)
{
    BYTE bytes[4] = {'a', 'b', 'c', 'd'};
    CMemFile file;
    file.Attach(bytes, sizeof(bytes));
    EXPECT_EQ(file.GetLength(), 4U);
    Put(file, "XY");
    EXPECT_EQ(bytes[1], 'Y');
    file.SeekToEnd();
    EXPECT_EQ(CauseOf<CFileException>([&] { Put(file, "z"); }), CFileException::diskFull);
    EXPECT_EQ(file.GetLength(), 4U);
    EXPECT_EQ(file.Detach(), bytes);
    EXPECT_EQ(file.GetLength(), 0U);
    Put(file, "free again, and as long as it likes");
    EXPECT_EQ(bytes[2], 'c');
}

TEST(MemFile, AttachedWithGrowth_StartsEmptyAndLeavesTheBlockWhenItIsFull)
{
    BYTE bytes[4] = {'a', 'b', 'c', 'd'};
    CMemFile file(bytes, sizeof(bytes), 16);
    EXPECT_EQ(file.GetLength(), 0U);
    Put(file, "1234");
    EXPECT_EQ(bytes[3], '4');
    Put(file, "5678");
    file.SeekToBegin();
    Put(file, "x");
    EXPECT_EQ(All(file), "x2345678");
    EXPECT_EQ(bytes[0], '1');
    EXPECT_NE(file.GetBufferPtr(), bytes);
}

TEST(MemFile, AttachedWithGrowth_IsLeftAtOnceByWhatDoesNotFit)
{
    BYTE bytes[4] = {'a', 'b', 'c', 'd'};
    CMemFile file(bytes, sizeof(bytes), 16);
    Put(file, "12345");
    EXPECT_EQ(All(file), "12345");
    EXPECT_EQ(bytes[0], 'a');
}

TEST(MemFile, Detach_HandsTheBlockOver)
{
    CMemFile file;
    EXPECT_EQ(file.Detach(), nullptr);
    Put(file, "abc");
    BYTE* const block = file.Detach();
    EXPECT_EQ(std::string(block, block + 3), "abc");
    EXPECT_EQ(file.GetLength(), 0U);
    EXPECT_EQ(file.GetPosition(), 0U);
    std::free(block);
    Put(file, "d");
    EXPECT_EQ(All(file), "d");
}

TEST(MemFile, Close_EmptiesIt)
{
    CMemFile file;
    Put(file, "abc");
    file.Flush();
    file.Close();
    EXPECT_EQ(file.GetLength(), 0U);
    EXPECT_EQ(file.GetBufferPtr(), nullptr);
    Put(file, "d");
    file.Abort();
    EXPECT_EQ(file.GetLength(), 0U);
}

TEST(MemFile, Open_IsRefused)
{
    CMemFile file;
    CFileException error;
    EXPECT_FALSE(file.Open("name", CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::badPath);
    EXPECT_EQ(error.m_strFileName, "name");
    EXPECT_FALSE(file.Open("name", CFile::modeRead));
    EXPECT_TRUE(file.IsOpen());
}

TEST(MemFile, NullBuffers_RaiseInvalidArgument)
{
    CMemFile file;
    Put(file, "abc");
    file.SeekToBegin();
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.Write(nullptr, 1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.Read(nullptr, 1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.Attach(nullptr, 1); }));
    file.Write(nullptr, 0);
    EXPECT_EQ(file.Read(nullptr, 0), 0U);
    EXPECT_EQ(All(file), "abc");
}
} // namespace mem_file_test
