// What attributes become in a file that is saved, and which entries its tables get.
#include "saving/CAttributeTables.h"

#include "foundation/CJOBXtailed.h"
#include "reading/RecordedMessages.h"
#include "reading/Tail.h"

#include <gmock/gmock.h>

#include <memory>

using testing::IsEmpty;

namespace
{
// The tables of a file, as the objects with such tables have them.
struct Tables
{
    CArrayN m_arrAttributeNameNumbers;
    CStringArray m_arrAttributeNames;
    CArrayN m_arrAttributeTextNumbers;
    CStringArray m_arrAttributeTexts;

    void AddName(int number, const char* text)
    {
        m_arrAttributeNameNumbers.Add(number);
        m_arrAttributeNames.Add(text);
    }
    void AddText(int number, const char* text)
    {
        m_arrAttributeTextNumbers.Add(number);
        m_arrAttributeTexts.Add(text);
    }
};

class AttributeTables : public testing::Test
{
protected:
    AttributeTables()
    {
        tables.AddName(0, ".smd");
        tables.AddName(1, ".geometry");
        tables.AddName(2, ".mount");
        tables.AddName(7, ".height");
        tables.AddName(9, ".count");
        tables.AddName(10, ".own");
        tables.AddText(3, "via_600");
        tables.AddText(5, "a text");
        types.Add(".smd", {JOBXattributeKind::Flag, {}});
        types.Add(".geometry", {JOBXattributeKind::Text, {}});
        types.Add(".mount", {JOBXattributeKind::Option, {"other", "smt", "thmt"}});
        types.Add(".height", {JOBXattributeKind::Real, {}});
        types.Add(".count", {JOBXattributeKind::Integer, {}});
    }

    CJOBXPropertyArray Read(std::string_view list)
    {
        CNumberIndex names(tables.m_arrAttributeNameNumbers, tables.m_arrAttributeNames);
        CNumberIndex texts(tables.m_arrAttributeTextNumbers, tables.m_arrAttributeTexts);
        CFileMessages messages(reading, "");
        CJOBXPropertyArray properties;
        CAttributeReader(names, texts, types, messages).Append(list, 1, properties);
        return properties;
    }
    std::string Saved(const CJOBXPropertyArray& properties) const { return Save(properties).list; }
    std::string TablesWith(const CJOBXPropertyArray& properties) const { return Save(properties).tables; }
    static CJOBXProperty& Add(CJOBXPropertyArray& properties, const char* name, const char* value,
                              JOBXattributeKind kind = JOBXattributeKind::Unknown)
    {
        CJOBXProperty& added = *properties.Own(std::make_unique<CJOBXProperty>());
        added.m_sName = name;
        added.m_sValue = value;
        added.SetKind(kind);
        return added;
    }

    struct SavedTexts
    {
        std::string tables;
        std::string list;
    };
    SavedTexts Save(const CJOBXPropertyArray& properties) const
    {
        CAttributeTables saved(tables, types);
        saved.Collect(properties);
        CRecordLines lines;
        saved.ListLines(lines);
        return {lines.WholeText(), saved.TextOf(properties)};
    }

    Tables tables;
    CAttributeTypes types;
    RecordedMessages sink;
    CJOBXreading reading = sink.Reading();
};

constexpr char kTableLines[] = "@0 .smd\n@1 .geometry\n@2 .mount\n@7 .height\n@9 .count\n@10 .own\n&3 via_600\n"
                               "&5 a text\n";

TEST_F(AttributeTables, AttributesOfEveryKindAreWrittenAsTheyWereRead)
{
    for (const char* const list : {"0",   "1=3",   "2=1",  "7=0.50", "9=12",    "0,1=5,2=2,7=-1,9=3",
                                   "10",  "10=3",  "10=4", "10=0.5", "10=word", "10=two words",
                                   "10=", "0=yes", "1=4",  "2=9",    "7=tall",  "9=1.5",
                                   "20",  "20=1",  "20=3"})
    {
        const CJOBXPropertyArray properties = Read(list);
        EXPECT_EQ(Saved(properties), list);
        EXPECT_EQ(TablesWith(properties), kTableLines) << list;
    }
}

TEST_F(AttributeTables, NewNamesAndTextsGetTheNextNumbers)
{
    CJOBXPropertyArray properties;
    Add(properties, ".new", "", JOBXattributeKind::Flag);
    Add(properties, ".geometry", "new text", JOBXattributeKind::Text);
    Add(properties, ".other", "other text", JOBXattributeKind::Text);
    Add(properties, ".own", "new text", JOBXattributeKind::Text);
    EXPECT_EQ(Saved(properties), "11,1=6,12=7,10=6");
    EXPECT_EQ(TablesWith(properties), "@0 .smd\n@1 .geometry\n@2 .mount\n@7 .height\n@9 .count\n@10 .own\n@11 .new\n"
                                      "@12 .other\n&3 via_600\n&5 a text\n&6 new text\n&7 other text\n");
}

TEST_F(AttributeTables, TheNameAndTheValueCountAndNotTheirNumbers)
{
    CJOBXPropertyArray properties = Read("1=3,2=1");
    properties.GetAt(0)->m_sValue = "a text";
    properties.GetAt(1)->m_sValue = "THMT";
    EXPECT_EQ(Saved(properties), "1=5,2=2");
    properties.GetAt(0)->m_sName = ".own";
    EXPECT_EQ(Saved(properties), "10=5,2=2");
    EXPECT_EQ(TablesWith(properties), kTableLines);
}

TEST_F(AttributeTables, AnAttributeThatAHostMadeNeedsNoKind)
{
    CJOBXPropertyArray properties;
    Add(properties, ".smd", "");
    Add(properties, ".geometry", "via_600");
    Add(properties, ".mount", "smt");
    Add(properties, ".height", "0.5");
    Add(properties, ".own", "3").m_nNumber = 10;
    Add(properties, ".own", "1,2");
    EXPECT_EQ(Saved(properties), "0,1=3,2=1,7=0.5,10=6,10=7") << "a value that looks like a text's number is a text";
    EXPECT_NE(TablesWith(properties).find("&6 3\n&7 1,2\n"), std::string::npos);
}

TEST_F(AttributeTables, NoNewTextGetsTheNumberOfAValue)
{
    CJOBXPropertyArray properties = Read("10=6,1=7,20=8,21");
    Add(properties, ".geometry", "new", JOBXattributeKind::Text);
    Add(properties, ".new", "", JOBXattributeKind::Flag);
    tables.AddName(19, ".last");
    EXPECT_EQ(Saved(properties), "10=6,1=7,20=8,21,1=9,22");
}

TEST_F(AttributeTables, TheFirstEntryOfANumberCounts)
{
    tables.AddName(0, ".shadowed");
    tables.AddName(30, ".smd");
    CJOBXPropertyArray properties = Read("0,30");
    EXPECT_EQ(Saved(properties), "0,30") << "each keeps the number that it has";
    Add(properties, ".shadowed", "", JOBXattributeKind::Flag);
    Add(properties, ".smd", "", JOBXattributeKind::Flag);
    EXPECT_EQ(Saved(properties), "0,30,31,0");
}

TEST_F(AttributeTables, WhatWasSavedIsReadEqual)
{
    CJOBXPropertyArray properties = Read("0,1=5,2=2,7=-1,9=3,10=0.5");
    Add(properties, ".geometry", "new text", JOBXattributeKind::Text).m_nTextNumber = 6;
    properties.GetAt(6)->m_nNumber = 1;
    const std::string list = Saved(properties);
    tables.AddText(6, "new text");
    EXPECT_EQ(Read(list), properties);
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(AttributeTables, TheLargestNumberIsFollowedByTheSmallestFreeOne)
{
    tables.AddText(0, "zero");
    tables.AddText(2147483647, "last");
    CJOBXPropertyArray properties;
    Add(properties, ".geometry", "new", JOBXattributeKind::Text);
    EXPECT_EQ(Saved(properties), "1=1");
}

TEST(TailOfALine, HasAttributesAndTheNumber)
{
    const auto tail = [](std::string_view attributes, __int64 id)
    {
        CRecordLines lines;
        lines.Begin(0, 1);
        lines.Word("S");
        GlueTail(attributes, id, lines);
        return lines.WholeText();
    };
    EXPECT_EQ(tail("", CJOBXtailed::kNoID), "S\n");
    EXPECT_EQ(tail("0=1,2", CJOBXtailed::kNoID), "S;0=1,2\n");
    EXPECT_EQ(tail("", 0), "S;;ID=0\n");
    EXPECT_EQ(tail("0", 9), "S;0;ID=9\n");
}
} // namespace
