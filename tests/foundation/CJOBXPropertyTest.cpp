// The property record: its archive bytes, copies, equality, reports.
#include "JOBXCLSDLL.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

namespace
{
std::unique_ptr<CJOBXProperty> Property(const char* name, const char* value, int number = -1, int textNumber = -1)
{
    auto property = std::make_unique<CJOBXProperty>();
    property->m_sName = name;
    property->m_sValue = value;
    property->m_nNumber = number;
    property->m_nTextNumber = textNumber;
    return property;
}

template <class T>
std::string Stored(T& object)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    object.Serialize(archive);
    archive.Close();
    return {reinterpret_cast<const char*>(file.GetBufferPtr()), static_cast<std::size_t>(file.GetLength())};
}

// Loads the object; false when the archive raised its exception.
template <class T>
bool Load(T& object, const std::string& bytes)
{
    CMemFile file(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    try
    {
        object.Serialize(archive);
    }
    catch (CArchiveException* exception)
    {
        exception->Delete();
        return false;
    }
    return true;
}

std::string Bytes(std::initializer_list<int> values)
{
    std::string bytes;
    for (const int value : values)
        bytes += static_cast<char>(value);
    return bytes;
}

template <class T>
std::string Printed(const T& object, int level)
{
    const TempDir dir;
    std::FILE* const file = std::fopen(dir.Path("out").c_str(), "wb");
    object.Write2AsciiFile(file, level);
    std::fclose(file);
    return dir.Read("out");
}
} // namespace

TEST(Property, HasItsDefaults)
{
    const CJOBXProperty property;
    EXPECT_EQ(property.m_nNumber, -1);
    EXPECT_EQ(property.m_nTextNumber, -1);
    EXPECT_EQ(property.m_sName, "");
    EXPECT_EQ(property.m_arrFurtherValues.GetSize(), 0);
    EXPECT_EQ(CJOBXProperty::nVersion, 1);
}

TEST(Property, ArchivesVersionNameAndValue)
{
    const auto property = Property("A", "B", 5, 6);
    EXPECT_EQ(Stored(*property), Bytes({1, 0, 0, 0, 1, 0x41, 1, 0x42}));
}

TEST(Property, LoadingKeepsTheNumbersAndReadsOnlyItsVersion)
{
    const auto property = Property("x", "y", 5, 6);
    EXPECT_TRUE(Load(*property, Bytes({1, 0, 0, 0, 1, 0x41, 2, 0x42, 0x43})));
    EXPECT_EQ(property->m_sName, "A");
    EXPECT_EQ(property->m_sValue, "BC");
    EXPECT_EQ(property->m_nNumber, 5);
    EXPECT_TRUE(Load(*property, Bytes({2, 0, 0, 0, 1, 0x44, 1, 0x45})));
    EXPECT_EQ(property->m_sName, "A");
    EXPECT_FALSE(Load(*property, Bytes({1, 0, 0})));
    EXPECT_FALSE(Load(*property, Bytes({1, 0, 0, 0, 3, 0x41})));
}

TEST(Property, LoadsTextsOfTheWideForm)
{
    const auto property = Property("", "");
    EXPECT_TRUE(Load(*property, Bytes({1, 0, 0, 0, 0xFF, 0xFE, 0xFF, 2, 0x41, 0, 0xE4, 0, 1, 0x42})));
    EXPECT_EQ(property->m_sName, "A\xC3\xA4");
    EXPECT_EQ(property->m_sValue, "B");
}

TEST(Property, EmptyListArchivesToItsVersionAndCount)
{
    CJOBXPropertyArray list;
    EXPECT_EQ(Stored(list), Bytes({1, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(Property, ListArchivesAndLoadsItsRecords)
{
    CJOBXPropertyArray list;
    list.Own(Property("A", "B", 1, 2));
    list.Own(Property("C", ""));
    const std::string bytes = Stored(list);
    EXPECT_EQ(bytes,
              Bytes({1, 0, 0, 0x80, 2, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0x41, 1, 0x42, 1, 0, 0, 0, 1, 0x43, 0}));
    CJOBXPropertyArray loaded;
    loaded.Own(Property("old", "old"));
    EXPECT_TRUE(Load(loaded, bytes));
    ASSERT_EQ(loaded.GetSize(), 2);
    EXPECT_EQ(loaded.GetAt(0)->m_sValue, "B");
    EXPECT_EQ(loaded.GetAt(0)->m_nNumber, -1);
    EXPECT_EQ(loaded.GetAt(1)->m_sName, "C");
}

TEST(Property, ListLoadsAShortCount)
{
    CJOBXPropertyArray list;
    EXPECT_TRUE(Load(list, Bytes({1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0x41, 1, 0x42})));
    ASSERT_EQ(list.GetSize(), 1);
    EXPECT_EQ(list.GetAt(0)->m_sName, "A");
}

TEST(Property, ListOfAnotherVersionLoadsEmpty)
{
    const int versions[][4] = {
        {0, 0, 0, 0},    {2, 0, 0, 0},    {3, 0, 0, 0}, {0x81, 0, 0, 0}, {0xFF, 0, 0, 0},
        {0, 1, 0, 0},    {1, 1, 0, 0},    {1, 0, 1, 0}, {1, 0, 0, 1},    {0, 0, 0, 1},
        {0, 0, 0, 0x80}, {2, 0, 0, 0x80}, {3, 0, 0, 0}, {1, 0, 0, 0x40}, {0xFF, 0xFF, 0xFF, 0xFF}};
    for (const auto& v : versions)
    {
        CJOBXPropertyArray list;
        list.Own(Property("old", "old"));
        EXPECT_TRUE(Load(list, Bytes({v[0], v[1], v[2], v[3], 1, 0, 0, 0, 1, 0, 0, 0, 1, 0x41, 1, 0x42})));
        EXPECT_EQ(list.GetSize(), 0) << v[0] << " " << v[1] << " " << v[2] << " " << v[3];
    }
}

TEST(Property, EveryTruncatedListRaisesTheArchivesError)
{
    CJOBXPropertyArray list;
    list.Own(Property("name", "value"));
    list.Own(Property("other", "text"));
    const std::string bytes = Stored(list);
    for (std::size_t length = 0; length < bytes.size(); ++length)
    {
        CJOBXPropertyArray loaded;
        EXPECT_FALSE(Load(loaded, bytes.substr(0, length))) << length;
        EXPECT_LT(loaded.GetSize(), 2);
    }
}

TEST(Property, CountInAnArchiveIsNotBelieved)
{
    CJOBXPropertyArray list;
    EXPECT_FALSE(
        Load(list, Bytes({1, 0, 0, 0x80, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 1, 0, 0, 0, 1, 0x41, 0})));
    EXPECT_EQ(list.GetSize(), 1);
}

TEST(Property, AssignmentTakesNameAndValueOnly)
{
    const auto source = Property("A", "B", 1, 2);
    source->m_arrFurtherValues.Add("more");
    const auto target = Property("x", "y", 8, 9);
    *target = *source;
    EXPECT_EQ(target->m_sName, "A");
    EXPECT_EQ(target->m_sValue, "B");
    EXPECT_EQ(target->m_nNumber, 8);
    EXPECT_EQ(target->m_nTextNumber, 9);
    EXPECT_EQ(target->m_arrFurtherValues.GetSize(), 0);
    EXPECT_EQ(*target == *source, 0);
    EXPECT_EQ(*target != *source, 1);
    const CJOBXProperty& self = *target;
    *target = self;
    EXPECT_EQ(target->m_sName, "A");
}

TEST(Property, CloneAndCopyTakeEverything)
{
    const auto source = Property("A", "B", 1, 2);
    source->m_arrFurtherValues.Add("more");
    const std::unique_ptr<CJOBXProperty> clone(source->clone());
    const CJOBXProperty copy(*source);
    for (const CJOBXProperty* const made : {static_cast<const CJOBXProperty*>(clone.get()), &copy})
    {
        EXPECT_EQ(*made == *source, 1);
        ASSERT_EQ(made->m_arrFurtherValues.GetSize(), 1);
        EXPECT_EQ(made->m_arrFurtherValues[0], "more");
    }
}

TEST(Property, EqualityComparesNameValueAndNumbersButNotFurtherValues)
{
    const auto one = Property("A", "B", 1, 2);
    one->m_arrFurtherValues.Add("more");
    EXPECT_EQ(*one == *Property("A", "B", 1, 2), 1);
    EXPECT_EQ(*one == *Property("a", "B", 1, 2), 0);
    EXPECT_EQ(*one == *Property("A", "b", 1, 2), 0);
    EXPECT_EQ(*one == *Property("A", "B", 2, 2), 0);
    EXPECT_EQ(*one == *Property("A", "B", 1, 1), 0);
}

TEST(Property, ListsAreEqualWhenTheirElementsAre)
{
    CJOBXPropertyArray one;
    one.Own(Property("A", "B"));
    CJOBXPropertyArray two(one);
    EXPECT_EQ(one == two, 1);
    two.GetAt(0)->m_nNumber = 3;
    EXPECT_EQ(one == two, 0);
    two = one;
    EXPECT_EQ(one == two, 1);
    two.Own(Property("C", ""));
    EXPECT_EQ(one == two, 0);
    EXPECT_EQ(two == one, 0);
    EXPECT_EQ(one != two, 1);
    one.Add(nullptr);
    EXPECT_EQ(one == two, 0);
    two.DeleteLastElement();
    two.Add(nullptr);
    EXPECT_EQ(one == two, 1);
}

TEST(Property, CloneOfAListHasItsOwnRecordsWithAllMembers)
{
    CJOBXPropertyArray list;
    list.Own(Property("A", "B", 1, 2))->m_arrFurtherValues.Add("more");
    list.Add(nullptr);
    list.Own(Property("C", "D"));
    const std::unique_ptr<CJOBXPropertyArray> clone(list.clone());
    ASSERT_EQ(clone->GetSize(), 2) << "a missing record is left out";
    EXPECT_NE(clone->GetAt(0), list.GetAt(0));
    EXPECT_EQ(*clone->GetAt(0) == *list.GetAt(0), 1);
    ASSERT_EQ(clone->GetAt(0)->m_arrFurtherValues.GetSize(), 1);
    EXPECT_EQ(clone->GetAt(0)->m_arrFurtherValues[0], "more");
    EXPECT_EQ(*clone->GetAt(1) == *list.GetAt(2), 1);
}

TEST(Property, CloneOfAListGoesThroughTheMostDerivedClass)
{
    class CHostList : public CJOBXPropertyArray
    {
    public:
        CHostList* clone() const override { return new CHostList(*this); }
    };
    const CHostList list;
    const CJOBXPropertyArray& base = list;
    const std::unique_ptr<CJOBXPropertyArray> clone(base.clone());
    EXPECT_NE(dynamic_cast<CHostList*>(clone.get()), nullptr);
}

TEST(Property, SameDataIsFoundInAList)
{
    CJOBXPropertyArray list;
    list.Add(nullptr);
    list.Own(Property("A", "B", 1, 2));
    EXPECT_EQ(list.ExistSameData(Property("A", "B", 1, 2).get()), 1);
    EXPECT_EQ(list.ExistSameData(Property("A", "B", 1, 3).get()), 0);
    EXPECT_EQ(list.ExistSameData(nullptr), 0);
}

TEST(Property, InequalityIsTheOppositeOfEquality)
{
    const auto one = Property("A", "B", 1, 2);
    EXPECT_EQ(*one != *Property("A", "B", 1, 2), 0);
    EXPECT_EQ(*one != *Property("A", "B", 1, 3), 1);
    CJOBXPropertyArray list;
    list.Own(Property("A", "B"));
    const CJOBXPropertyArray copy(list);
    EXPECT_EQ(list != copy, 0);
}

TEST(Property, StoringAListPassesOverNullEntriesAndKeepsThem)
{
    CJOBXPropertyArray list;
    list.Add(nullptr);
    CJOBXProperty* const property = list.Own(Property("A", "B"));
    list.Add(nullptr);
    EXPECT_EQ(Stored(list),
              Bytes({1, 0, 0, 0x80, 1, 0, 0, 0, 0, 0, 0, 0}) + Bytes({1, 0, 0, 0, 1, 'A', 1, 'B'})); // a count of one
    ASSERT_EQ(list.GetSize(), 3);
    EXPECT_EQ(list.GetAt(0), nullptr);
    EXPECT_EQ(list.GetAt(1), property);
    EXPECT_EQ(list.GetAt(2), nullptr);
}

TEST(Property, ReportAndPrintingOfAListPassOverNull)
{
    CJOBXPropertyArray list;
    list.Add(nullptr);
    list.Own(Property("A", "B"));
    list.Add(nullptr);
    EXPECT_EQ(list.GetReport_ForPickingProperty(), "A : B");
    EXPECT_EQ(Printed(list, 0), "(PROPERTY\n   (ITEM:\"A\" VALUE:\"B\")\n)\n");
}

TEST(Property, ReportsForPicking)
{
    CJOBXPropertyArray list;
    EXPECT_EQ(list.GetReport_ForPickingProperty(), "");
    list.Own(Property("A", "B"));
    EXPECT_EQ(list.GetAt(0)->GetReport_ForPickingProperty(), "A : B");
    list.Own(Property("C", ""));
    EXPECT_EQ(list.GetReport_ForPickingProperty(), "A : B\r\nC :");
}

TEST(Property, PrintsItselfIndented)
{
    EXPECT_EQ(Printed(*Property("A", "B"), 0), "(ITEM:\"A\" VALUE:\"B\")\n");
    EXPECT_EQ(Printed(*Property("A", "B"), -2), "(ITEM:\"A\" VALUE:\"B\")\n");
    EXPECT_EQ(Printed(*Property("A", "B"), 2), "      (ITEM:\"A\" VALUE:\"B\")\n");
    Property("A", "B")->Write2AsciiFile(nullptr, 1);
}

TEST(Property, PrintsAListAsABlock)
{
    CJOBXPropertyArray list;
    EXPECT_EQ(Printed(list, 1), "");
    list.Own(Property("A", "B"));
    list.Own(Property("C", "D"));
    EXPECT_EQ(Printed(list, 1), "   (PROPERTY\n      (ITEM:\"A\" VALUE:\"B\")\n      (ITEM:\"C\" VALUE:\"D\")\n   )\n");
    list.Write2AsciiFile(nullptr, 1);
}

TEST(Property, ClassLevelTakesTheQuotesOutOfThePropertyToo)
{
    const auto property = Property("\"N\"a\"", "\"X\"");
    const std::unique_ptr<CECadClsLvl> level(property->pGetECadClsLvl());
    EXPECT_EQ(level->m_sLabel, "PROP");
    ASSERT_EQ(level->m_arrItems.GetSize(), 2);
    EXPECT_EQ(level->m_arrItems[0], "Na");
    EXPECT_EQ(level->m_arrItems[1], "X");
    EXPECT_EQ(property->m_sValue, "X");
    EXPECT_EQ(property->m_sName, "Na");
}
