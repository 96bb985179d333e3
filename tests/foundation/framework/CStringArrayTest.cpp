#include "foundation/framework/CStringArray.h"

#include "foundation/framework/CMemFile.h"
#include "foundation/framework/RaisedPointer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{
CStringArray List(std::initializer_list<const char*> texts)
{
    CStringArray list;
    for (const char* const text : texts)
        list.Add(text);
    return list;
}

std::vector<BYTE> Stored(CStringArray& list)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    list.Serialize(archive);
    archive.Close();
    return {file.GetBufferPtr(), file.GetBufferPtr() + file.GetLength()};
}

void Load(CStringArray& list, const std::vector<BYTE>& bytes)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    list.Serialize(archive);
}
} // namespace

TEST(StringArray, Operations_TakeTextsAndTextObjects)
{
    CStringArray list;
    EXPECT_EQ(list.Add("b"), 0);
    EXPECT_EQ(list.Add(CString("c")), 1);
    list.InsertAt(0, "a");
    list.SetAt(1, "B");
    list.SetAtGrow(4, "e");
    list[3] = "d";
    EXPECT_EQ(list, List({"a", "B", "c", "d", "e"}));
    list.RemoveAt(1);
    EXPECT_EQ(list.GetAt(1), "c");
    EXPECT_EQ(list.GetSize(), 4);
    list.InsertAt(2, &list);
    EXPECT_EQ(list, List({"a", "c", "a", "c", "d", "e", "d", "e"}));
}

TEST(StringArray, Add_OfAnOwnElement)
{
    CStringArray list = List({"a text of more than six characters"});
    for (int i = 0; i < 30; ++i)
        list.Add(list[0]);
    for (INT_PTR i = 0; i < list.GetSize(); ++i)
        EXPECT_EQ(list[i], "a text of more than six characters");
}

TEST(StringArray, Copies_AreDeep)
{
    CStringArray list = List({"a", "a text of more than six characters"});
    const CStringArray copy(list);
    CStringArray assigned;
    assigned = list;
    list[0] = "changed";
    list[1].MakeUpper();
    EXPECT_EQ(copy, List({"a", "a text of more than six characters"}));
    EXPECT_EQ(assigned, copy);
    const CStringArray& same = assigned;
    assigned = same;
    EXPECT_EQ(assigned, copy);
}

TEST(StringArray, Equality_ComparesSizeAndTexts)
{
    EXPECT_TRUE(List({}) == List({}));
    EXPECT_TRUE(List({"a", "b"}) == List({"a", "b"}));
    EXPECT_FALSE(List({"a", "b"}) == List({"a"}));
    EXPECT_FALSE(List({"a"}) == List({"a", "b"}));
    EXPECT_TRUE(List({"a"}) != List({"A"}));
}

TEST(StringArray, BadIndex_RaisesInvalidArgument)
{
    CStringArray list = List({"a"});
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { (void)list[1]; }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.RemoveAt(1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.SetAt(-1, ""); }));
}

TEST(StringArray, Serialize_StoresTheCountAndEveryText)
{
    CStringArray list = List({"A", "", "bc"});
    EXPECT_EQ(Stored(list), (std::vector<BYTE>{3, 0, 1, 'A', 0, 2, 'b', 'c'}));
    CStringArray loaded = List({"old"});
    Load(loaded, Stored(list));
    EXPECT_EQ(loaded, list);
}

TEST(StringArray, Serialize_RoundTripsCountsAroundTheirPrefixes)
{
    for (const int count : {0, 1, 0xFFFE, 0xFFFF, 0x10000})
    {
        CStringArray list;
        list.SetSize(count);
        const std::vector<BYTE> bytes = Stored(list);
        EXPECT_EQ(bytes.size(), static_cast<std::size_t>(count) + (count < 0xFFFF ? 2U : 6U));
        CStringArray loaded;
        Load(loaded, bytes);
        EXPECT_EQ(loaded.GetSize(), count);
        EXPECT_EQ(loaded, list);
    }
}

TEST(StringArray, Serialize_OfACutArchiveRaisesAndKeepsWhatWasThere)
{
    CStringArray list = List({"one", "two", "three"});
    const std::vector<BYTE> whole = Stored(list);
    for (std::size_t size = 0; size < whole.size(); ++size)
    {
        const std::vector<BYTE> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        CStringArray loaded = List({"old"});
        EXPECT_EQ(CauseOf<CArchiveException>([&] { Load(loaded, cut); }), CArchiveException::endOfFile) << size;
        ASSERT_LT(loaded.GetSize(), 3);
        for (INT_PTR i = 0; i < loaded.GetSize(); ++i)
            EXPECT_EQ(loaded[i], list[i]);
    }
}

TEST(StringArray, Serialize_DoesNotBelieveACount)
{
    CStringArray loaded;
    const std::vector<BYTE> bytes{0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 1, 'A'};
    EXPECT_EQ(CauseOf<CArchiveException>([&] { Load(loaded, bytes); }), CArchiveException::endOfFile);
    EXPECT_EQ(loaded, List({"A"}));
}

TEST(StringArray, RuntimeClass_NamesItAndMakesOne)
{
    const CStringArray list;
    EXPECT_STREQ(list.GetRuntimeClass()->m_lpszClassName, "CStringArray");
    EXPECT_TRUE(list.IsSerializable());
    const std::unique_ptr<CObject> made(CStringArray::GetThisClass()->CreateObject());
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsKindOf(CStringArray::GetThisClass()));
}
