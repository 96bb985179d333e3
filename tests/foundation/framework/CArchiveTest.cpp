#include "foundation/framework/CArchive.h"

#include "foundation/framework/CMemFile.h"
#include "foundation/framework/RaisedPointer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{
using ByteList = std::vector<BYTE>;

// What `store` writes into an archive with a buffer of that size.
template <class Store>
ByteList Stored(const Store& store, int bufferSize = 4096)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store, bufferSize);
    store(archive);
    archive.Close();
    return {file.GetBufferPtr(), file.GetBufferPtr() + file.GetLength()};
}

// Calls `load` with an archive over `bytes`.
template <class Load>
void WithLoaded(const ByteList& bytes, const Load& load, int bufferSize = 4096)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load, bufferSize);
    load(archive);
}

CString LoadedText(const ByteList& bytes)
{
    CString text;
    WithLoaded(bytes, [&](CArchive& archive) { archive >> text; });
    return text;
}

// The archive exception's cause when `bytes` are loaded as a text, -1 when there is none.
int CauseOfText(const ByteList& bytes)
{
    return CauseOf<CArchiveException>([&] { LoadedText(bytes); });
}

ByteList operator+(ByteList a, const ByteList& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// A file whose calls fail as a full or broken disk would.
class FailingFile : public CMemFile
{
public:
    UINT Read(void* /*buffer*/, UINT /*count*/) override { AfxThrowFileException(CFileException::hardIO); }
    void Write(const void* /*buffer*/, UINT count) override
    {
        ++m_nWrites;
        m_nOffered += count;
        AfxThrowFileException(CFileException::diskFull);
    }

    int m_nWrites = 0;
    UINT m_nOffered = 0;
};

class ForeignFailure : public CMemFile
{
public:
    void Write(const void* /*buffer*/, UINT /*count*/) override { throw std::runtime_error("not of the framework"); }
};
} // namespace

TEST(Archive, Values_AreStoredLittleEndianWithoutPadding)
{
    const ByteList bytes = Stored(
        [](CArchive& archive)
        {
            archive << static_cast<BYTE>(0x12) << static_cast<WORD>(0x3456) << static_cast<short>(-2) << -3
                    << 0x89ABCDEFU << static_cast<__int64>(-4) << static_cast<ULONGLONG>(0x0102030405060708ULL) << 1.0F
                    << -2.0 << 'c' << true << false;
        });
    const ByteList expected{0x12, 0x56, 0x34, 0xFE, 0xFF, 0xFD, 0xFF, 0xFF, 0xFF, 0xEF, 0xCD, 0xAB, 0x89, 0xFC, 0xFF,
                            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01, 0x00,
                            0x00, 0x80, 0x3F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0, 'c',  0x01, 0x00};
    EXPECT_EQ(bytes, expected);
}

TEST(Archive, Values_LoadAsTheyWereStored)
{
    const ByteList bytes = Stored(
        [](CArchive& archive)
        {
            archive << static_cast<BYTE>(255) << static_cast<WORD>(65535) << std::numeric_limits<short>::min()
                    << std::numeric_limits<int>::min() << std::numeric_limits<UINT>::max()
                    << std::numeric_limits<__int64>::min() << std::numeric_limits<ULONGLONG>::max() << 0.1F << 0.1
                    << '\xE4' << true;
        });
    WithLoaded(bytes,
               [](CArchive& archive)
               {
                   BYTE byte = 0;
                   WORD word = 0;
                   short small = 0;
                   int number = 0;
                   UINT positive = 0;
                   __int64 large = 0;
                   ULONGLONG largest = 0;
                   float single = 0;
                   double real = 0;
                   char character = 0;
                   bool flag = false;
                   archive >> byte >> word >> small >> number >> positive >> large >> largest >> single >> real >>
                       character >> flag;
                   EXPECT_EQ(byte, 255);
                   EXPECT_EQ(word, 65535);
                   EXPECT_EQ(small, std::numeric_limits<short>::min());
                   EXPECT_EQ(number, std::numeric_limits<int>::min());
                   EXPECT_EQ(positive, std::numeric_limits<UINT>::max());
                   EXPECT_EQ(large, std::numeric_limits<__int64>::min());
                   EXPECT_EQ(largest, std::numeric_limits<ULONGLONG>::max());
                   EXPECT_EQ(single, 0.1F);
                   EXPECT_EQ(real, 0.1);
                   EXPECT_EQ(character, '\xE4');
                   EXPECT_TRUE(flag);
                   EXPECT_EQ(CauseOf<CArchiveException>([&] { archive >> byte; }), CArchiveException::endOfFile);
               });
}

TEST(Archive, AVersionAndTwoTextsAreTheseBytes)
{
    const ByteList bytes = Stored([](CArchive& archive) { archive << 1 << CString("A") << CString("B"); });
    EXPECT_EQ(bytes, (ByteList{1, 0, 0, 0, 1, 0x41, 1, 0x42}));
    WithLoaded(bytes,
               [](CArchive& archive)
               {
                   int version = 0;
                   CString name;
                   CString value;
                   archive >> version >> name >> value;
                   EXPECT_EQ(version, 1);
                   EXPECT_EQ(name, "A");
                   EXPECT_EQ(value, "B");
               });
}

TEST(Archive, Text_PrefixGrowsWithTheLength)
{
    const struct
    {
        int length;
        ByteList prefix;
    } cases[] = {
        {0, {0}},
        {1, {1}},
        {254, {0xFE}},
        {255, {0xFF, 0xFF, 0x00}},
        {256, {0xFF, 0x00, 0x01}},
        {65533, {0xFF, 0xFD, 0xFF}},
        {65534, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}},
        {65535, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},
        {65536, {0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x01, 0x00}},
        {70000, {0xFF, 0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}},
    };
    for (const auto& one : cases)
        for (const int bufferSize : {0, 128, 4096, 1 << 20})
        {
            const CString text('x', one.length);
            const ByteList bytes = Stored([&](CArchive& archive) { archive << text; }, bufferSize);
            EXPECT_EQ(bytes, one.prefix + ByteList(static_cast<std::size_t>(one.length), 'x')) << one.length;
            CString loaded = "old";
            WithLoaded(
                bytes, [&](CArchive& archive) { archive >> loaded; }, bufferSize);
            EXPECT_EQ(loaded, text) << one.length;
        }
}

TEST(Archive, Text_WithALongerPrefixThanNeededLoads)
{
    EXPECT_EQ(LoadedText({0xFF, 1, 0, 'A'}), "A");
    EXPECT_EQ(LoadedText({0xFF, 0xFF, 0xFF, 1, 0, 0, 0, 'A'}), "A");
    EXPECT_EQ(LoadedText({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0, 0, 0, 0, 0, 'A'}), "A");
}

TEST(Archive, Text_KeepsEveryByte)
{
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    const CString text{std::string_view(all)};
    EXPECT_EQ(LoadedText(Stored([&](CArchive& archive) { archive << text; })), text);
}

TEST(Archive, WideText_BecomesUtf8)
{
    const struct
    {
        ByteList bytes;
        const char* expected;
    } cases[] = {
        {{0xFF, 0xFE, 0xFF, 0}, ""},
        {{0xFF, 0xFE, 0xFF, 2, 'A', 0, 0xE4, 0}, "A\xC3\xA4"},
        {{0xFF, 0xFE, 0xFF, 1, 0xAC, 0x20}, "\xE2\x82\xAC"},
        {{0xFF, 0xFE, 0xFF, 2, 0x3D, 0xD8, 0x00, 0xDE}, "\xF0\x9F\x98\x80"},
        {{0xFF, 0xFE, 0xFF, 2, 0xFF, 0xDB, 0xFF, 0xDF}, "\xF4\x8F\xBF\xBF"},
        {{0xFF, 0xFE, 0xFF, 2, 0x3D, 0xD8, 'x', 0}, "\xEF\xBF\xBDx"}, // high alone
        {{0xFF, 0xFE, 0xFF, 2, 0x00, 0xDE, 'x', 0}, "\xEF\xBF\xBDx"}, // low alone
        {{0xFF, 0xFE, 0xFF, 1, 0x3D, 0xD8}, "\xEF\xBF\xBD"},          // high at the end
        {{0xFF, 0xFE, 0xFF, 3, 0x3D, 0xD8, 0x3D, 0xD8, 0x00, 0xDE}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
        {{0xFF, 0xFE, 0xFF, 0xFF, 1, 0, 'A', 0}, "A"},                   // 16-bit length
        {{0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0, 'A', 0}, "A"}, // 32-bit length
    };
    for (const auto& one : cases)
        EXPECT_EQ(LoadedText(one.bytes), one.expected);
    EXPECT_EQ(LoadedText({0xFF, 0xFE, 0xFF, 3, 'a', 0, 0, 0, 'b', 0}), CString(std::string_view("a\0b", 3)));
}

TEST(Archive, WideText_SplitsSurrogatesBetweenPieces)
{
    // 70001 units, so that a pair lies across every even place.
    ByteList bytes{0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0x71, 0x11, 0x01, 0x00, 'x', 0};
    std::string expected = "x";
    for (int i = 0; i < 35000; ++i)
    {
        for (const BYTE byte : ByteList{0x3D, 0xD8, 0x00, 0xDE})
            bytes.push_back(byte);
        expected += "\xF0\x9F\x98\x80";
    }
    EXPECT_EQ(LoadedText(bytes), expected.c_str());
}

TEST(Archive, WideText_WithHalfAPairGivesTheReplacementCharacter)
{
    EXPECT_EQ(LoadedText({0xFF, 0xFE, 0xFF, 2, 0x3D, 0xD8, 0x00, 0xE0}), "\xEF\xBF\xBD\xEE\x80\x80");
    EXPECT_EQ(LoadedText({0xFF, 0xFE, 0xFF, 2, 0x3D, 0xD8, 'x', 0}), "\xEF\xBF\xBDx");
    EXPECT_EQ(LoadedText({0xFF, 0xFE, 0xFF, 2, 0x00, 0xDE, 'x', 0}), "\xEF\xBF\xBDx");
    EXPECT_EQ(LoadedText({0xFF, 0xFE, 0xFF, 1, 0x3D, 0xD8}), "\xEF\xBF\xBD");
}

TEST(Archive, Text_CutAtEveryByteRaisesEndOfFileAndKeepsTheTarget)
{
    const ByteList wholes[] = {
        {3, 'a', 'b', 'c'},
        {0xFF, 3, 0, 'a', 'b', 'c'},
        {0xFF, 0xFF, 0xFF, 3, 0, 0, 0, 'a', 'b', 'c'},
        {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 3, 0, 0, 0, 0, 0, 0, 0, 'a', 'b', 'c'},
        {0xFF, 0xFE, 0xFF, 3, 'a', 0, 'b', 0, 'c', 0},
        {0xFF, 0xFE, 0xFF, 0xFF, 3, 0, 'a', 0, 'b', 0, 'c', 0},
    };
    for (const ByteList& whole : wholes)
    {
        EXPECT_EQ(LoadedText(whole), "abc");
        for (std::size_t size = 0; size < whole.size(); ++size)
        {
            const ByteList cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            CString text = "kept";
            EXPECT_EQ(CauseOf<CArchiveException>([&] { WithLoaded(cut, [&](CArchive& archive) { archive >> text; }); }),
                      CArchiveException::endOfFile);
            EXPECT_EQ(text, "kept");
        }
    }
}

TEST(Archive, Text_AnnouncedLongerThanTheArchiveRaisesEndOfFile)
{
    EXPECT_EQ(CauseOfText({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 'a'}), CArchiveException::endOfFile);
    EXPECT_EQ(CauseOfText({0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 'a', 0}),
              CArchiveException::endOfFile);
}

TEST(Archive, Text_WithALengthThatCannotBeRaisesBadIndex)
{
    EXPECT_EQ(CauseOfText({0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x80}), CArchiveException::badIndex);
    EXPECT_EQ(CauseOfText({0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF}), CArchiveException::badIndex);
    EXPECT_EQ(CauseOfText(ByteList(15, 0xFF)), CArchiveException::badIndex);
    EXPECT_EQ(CauseOfText({0xFF, 0xFE, 0xFF, 0xFF, 0xFE, 0xFF, 1, 'A', 0}),
              CArchiveException::badIndex); // marked twice
}

TEST(Archive, Count_PrefixGrowsWithTheCount)
{
    const struct
    {
        ULONGLONG count;
        ByteList bytes;
    } cases[] = {
        {0, {0, 0}},
        {0xFFFE, {0xFE, 0xFF}},
        {0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0, 0}},
        {0x10000, {0xFF, 0xFF, 0, 0, 1, 0}},
        {0xFFFFFFFE, {0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF}},
        {0xFFFFFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}},
        {0x100000000, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 1, 0, 0, 0}},
    };
    for (const auto& one : cases)
    {
        EXPECT_EQ(Stored([&](CArchive& archive) { archive.WriteCount(one.count); }), one.bytes);
        WithLoaded(one.bytes, [&](CArchive& archive) { EXPECT_EQ(archive.ReadCount(), one.count); });
        for (std::size_t size = 0; size < one.bytes.size(); ++size)
            WithLoaded(
                ByteList(one.bytes.begin(), one.bytes.begin() + static_cast<std::ptrdiff_t>(size)),
                [](CArchive& archive)
                { EXPECT_EQ(CauseOf<CArchiveException>([&] { archive.ReadCount(); }), CArchiveException::endOfFile); });
    }
}

TEST(Archive, Mode_IsKeptAndTheWrongUseRaises)
{
    CMemFile file;
    CArchive store(&file, CArchive::store);
    EXPECT_TRUE(store.IsStoring());
    EXPECT_FALSE(store.IsLoading());
    EXPECT_EQ(store.GetFile(), &file);
    int number = 5;
    CString text = "kept";
    EXPECT_EQ(CauseOf<CArchiveException>([&] { store >> number; }), CArchiveException::writeOnly);
    EXPECT_EQ(CauseOf<CArchiveException>([&] { store >> text; }), CArchiveException::writeOnly);
    EXPECT_EQ(CauseOf<CArchiveException>([&] { store.Read(&number, 0); }), CArchiveException::writeOnly);
    EXPECT_EQ(CauseOf<CArchiveException>([&] { store.ReadExactly(&number, 0); }), CArchiveException::writeOnly);
    EXPECT_EQ(CauseOf<CArchiveException>([&] { store.ReadCount(); }), CArchiveException::writeOnly);
    CArchive load(&file, CArchive::load);
    EXPECT_TRUE(load.IsLoading());
    EXPECT_FALSE(load.IsStoring());
    EXPECT_EQ(CauseOf<CArchiveException>([&] { load << number; }), CArchiveException::readOnly);
    EXPECT_EQ(CauseOf<CArchiveException>([&] { load << text; }), CArchiveException::readOnly);
    EXPECT_EQ(CauseOf<CArchiveException>([&] { load.Write(&number, 0); }), CArchiveException::readOnly);
    EXPECT_EQ(CauseOf<CArchiveException>([&] { load.WriteCount(1); }), CArchiveException::readOnly);
    EXPECT_EQ(number, 5);
    EXPECT_EQ(text, "kept");
    store.Close();
    load.Close();
    EXPECT_EQ(file.GetLength(), 0U);
}

TEST(Archive, Closed_RaisesOnUseAndMayBeClosedAgain)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive.Close();
    archive.Close();
    archive.Abort();
    EXPECT_EQ(archive.GetFile(), nullptr);
    EXPECT_EQ(CauseOf<CArchiveException>([&] { archive << 1; }), CArchiveException::genericException);
    EXPECT_EQ(CauseOf<CArchiveException>([&] { archive.Flush(); }), CArchiveException::genericException);
    EXPECT_TRUE(Raises<CInvalidArgException>([] { CArchive none(nullptr, CArchive::load); }));
    CArchive loading(&file, CArchive::load);
    loading.Close();
    int value = 7;
    EXPECT_EQ(CauseOf<CArchiveException>([&] { loading >> value; }), CArchiveException::genericException);
    EXPECT_EQ(value, 7);
}

TEST(Archive, NullBuffers_RaiseInvalidArgument)
{
    CMemFile file;
    CArchive store(&file, CArchive::store);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { store.Write(nullptr, 1); }));
    store.Write(nullptr, 0);
    CArchive load(&file, CArchive::load);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { load.Read(nullptr, 1); }));
    EXPECT_EQ(load.Read(nullptr, 0), 0U);
}

TEST(Archive, Read_AnswersHowManyThereWere)
{
    ByteList bytes(10000);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<BYTE>(i * 7);
    for (const UINT step : {1U, 127U, 128U, 129U, 4096U, 20000U})
        WithLoaded(
            bytes,
            [&](CArchive& archive)
            {
                ByteList read;
                ByteList part(step);
                for (UINT count = archive.Read(part.data(), step); count != 0; count = archive.Read(part.data(), step))
                    read.insert(read.end(), part.begin(), part.begin() + count);
                EXPECT_EQ(read, bytes) << step;
            },
            128);
}

TEST(Archive, Write_OfAnySizeKeepsTheOrder)
{
    ByteList expected;
    const ByteList bytes = Stored(
        [&](CArchive& archive)
        {
            for (const std::size_t size : {1U, 127U, 1U, 128U, 129U, 5U, 1000U, 3U})
            {
                const ByteList part(size, static_cast<BYTE>(expected.size()));
                archive.Write(part.data(), static_cast<UINT>(part.size()));
                expected = expected + part;
            }
        },
        128);
    EXPECT_EQ(bytes, expected);
}

TEST(Archive, Flush_OfALoadingOnePutsTheFileBehindWhatWasRead)
{
    const ByteList bytes{1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0};
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    int number = 0;
    archive >> number;
    EXPECT_EQ(file.GetPosition(), 12U); // read ahead
    archive.Flush();
    EXPECT_EQ(file.GetPosition(), 4U);
    archive >> number;
    EXPECT_EQ(number, 2);
    archive.Close();
    EXPECT_EQ(file.GetPosition(), 8U);
}

TEST(Archive, Flush_OfAStoringOneHandsEverythingOver)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive << 1;
    EXPECT_EQ(file.GetLength(), 0U);
    archive.Flush();
    EXPECT_EQ(file.GetLength(), 4U);
    archive << 2;
    archive.Abort();
    EXPECT_EQ(file.GetLength(), 4U);
}

TEST(Archive, Destructor_ClosesUnlessToldOtherwise)
{
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store);
        archive << 1;
    }
    EXPECT_EQ(file.GetLength(), 4U);
    {
        CArchive archive(&file, CArchive::store | CArchive::bNoFlushOnDelete);
        archive << 1;
    }
    EXPECT_EQ(file.GetLength(), 4U);
}

TEST(Archive, FailingFile_RaisesItsOwnExceptionAndIsOfferedTheBytesOnce)
{
    FailingFile file;
    {
        CArchive archive(&file, CArchive::store);
        archive << 1;
        EXPECT_EQ(CauseOf<CFileException>([&] { archive.Flush(); }), CFileException::diskFull);
        archive << 2;
        EXPECT_EQ(CauseOf<CFileException>([&] { archive.Close(); }), CFileException::diskFull);
        EXPECT_EQ(archive.GetFile(), nullptr);
    }
    EXPECT_EQ(file.m_nWrites, 2);
    EXPECT_EQ(file.m_nOffered, 8U);
    CArchive load(&file, CArchive::load);
    int number = 0;
    EXPECT_EQ(CauseOf<CFileException>([&] { load >> number; }), CFileException::hardIO);
    EXPECT_EQ(CauseOf<CFileException>([&] { load >> number; }), CFileException::hardIO);
}

TEST(Archive, Destructor_DropsEveryFailure)
{
    FailingFile file;
    ForeignFailure foreign;
    {
        CArchive archive(&file, CArchive::store);
        archive << 1;
        CArchive other(&foreign, CArchive::store);
        other << 1;
    }
    EXPECT_EQ(file.m_nWrites, 1);
}

TEST(Archive, Exception_NamesTheFile)
{
    CMemFile file;
    file.SetFilePath("properties");
    CArchive archive(&file, CArchive::load);
    try
    {
        archive.ReadCount();
        ADD_FAILURE();
    }
    catch (CArchiveException* error)
    {
        EXPECT_EQ(error->m_strFileName, "properties");
        EXPECT_EQ(error->GetMessageText(), "properties: the archive ended too early");
        error->Delete();
    }
}
