#include "reading/Tail.h"

#include "reading/RecordedMessages.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
TEST(Tail, IsCutIntoRecordAttributesAndNumber)
{
    struct Case
    {
        const char* line;
        const char* record;
        const char* attributes;
        const char* id;
        const char* rest;
    };
    for (const Case& one : {
             Case{"P 1 2 0 P 0 0", "P 1 2 0 P 0 0", "", "", ""},
             Case{"P 1 2 0 P 0 0;0,2=1;ID=61417", "P 1 2 0 P 0 0", "0,2=1", "61417", ""},
             Case{"NET POWER\\N1500 ;;ID=1246", "NET POWER\\N1500", "", "1246", ""},
             Case{"CMP 0 A ;0=2", "CMP 0 A", "0=2", "", ""},
             Case{"CMP 0 A;ID=5", "CMP 0 A", "", "5", ""},
             Case{"CMP 0 A; 1 ; id = 5", "CMP 0 A", "1", "", "id = 5"},
             Case{"CMP 0 A;;;x;ID=7;", "CMP 0 A", "", "7", "x"},
             Case{";", "", "", "", ""},
         })
    {
        const CTailText tail = CutTail(one.line);
        EXPECT_EQ(tail.record, one.record) << one.line;
        EXPECT_EQ(tail.attributes, one.attributes) << one.line;
        EXPECT_EQ(tail.id, one.id) << one.line;
        EXPECT_EQ(tail.rest, one.rest) << one.line;
    }
}

class TailOfAFile : public testing::Test
{
protected:
    TailOfAFile()
    {
        const auto add = [](CArrayN& numbers, CStringArray& texts, int number, const char* text)
        {
            numbers.Add(number);
            texts.Add(text);
        };
        add(m_nameNumbers, m_names, 0, ".smd");
        add(m_nameNumbers, m_names, 1, ".geometry");
        add(m_nameNumbers, m_names, 2, ".comp_mount_type");
        add(m_nameNumbers, m_names, 3, ".height");
        add(m_textNumbers, m_texts, 4, "via_600");
        types.Add(".comp_mount_type", {JOBXattributeKind::Option, {"other", "smt", "thmt"}});
        types.Add(".height", {JOBXattributeKind::Real, {}});
        types.Add(".geometry", {JOBXattributeKind::Text, {}});
    }

    // "name kind value" of each attribute of the list, at line 5.
    std::vector<std::string> Attributes(std::string_view list)
    {
        CJOBXPropertyArray properties;
        reader.Append(list, 5, properties);
        std::vector<std::string> described;
        constexpr const char* kKinds[] = {"unknown", "flag", "integer", "real", "text", "option"};
        for (__int64 i = 0; i < properties.GetSize(); ++i)
        {
            const CJOBXProperty& property = *properties.GetAt(i);
            described.push_back(std::string(property.m_sName.View()) + ' ' +
                                kKinds[static_cast<int>(property.GetKind())] + ' ' +
                                std::string(property.m_sValue.View()));
        }
        messages.Deliver();
        return described;
    }

    CArrayN m_nameNumbers;
    CStringArray m_names;
    CArrayN m_textNumbers;
    CStringArray m_texts;
    CNumberIndex nameIndex{m_nameNumbers, m_names};
    CNumberIndex textIndex{m_textNumbers, m_texts};
    CAttributeTypes types;
    RecordedMessages sink;
    CJOBXreading reading = sink.Reading();
    CFileMessages messages{reading, "f"};
    CAttributeReader reader{nameIndex, textIndex, types, messages};
};

TEST_F(TailOfAFile, TellsFlagsTextsOptionsAndNumbersApart)
{
    EXPECT_THAT(Attributes("0,1=4,2=1,3=0.25"), ElementsAre(".smd flag ", ".geometry text via_600",
                                                            ".comp_mount_type option smt", ".height real 0.25"));
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(TailOfAFile, GuessesTheKindOfAnAttributeWithoutDefinition)
{
    EXPECT_THAT(Attributes("0=4,0=5,0=1.5,0=x"),
                ElementsAre(".smd text via_600", ".smd integer 5", ".smd real 1.5", ".smd unknown x"));
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(TailOfAFile, SaysWhatLeadsNowhere)
{
    EXPECT_THAT(Attributes("9,1=8,2=3,3=x,y"),
                ElementsAre(" flag ", ".geometry text 8", ".comp_mount_type option 3", ".height text x"));
    EXPECT_THAT(sink.lines, ElementsAre("f:5: warning ATR001 No attribute name has the number 9.",
                                        "f:5: warning ATR002 No attribute text has the number \"8\".",
                                        "f:5: warning ATR004 The attribute \".comp_mount_type\" has no option \"3\".",
                                        "f:5: warning ATR005 The value \"x\" of the attribute \".height\" is not a "
                                        "number.",
                                        "f:5: warning ATR003 The attribute \"y\" does not begin with a number."));
}

TEST_F(TailOfAFile, GivesARecordItsAttributesAndItsNumber)
{
    struct TailedRecord : CJOBXtailed
    {
    } record;
    reader.Take(CutTail("NET A;0;ID=12"), 3, record);
    EXPECT_EQ(record.GetID(), 12);
    ASSERT_NE(record.pGetTailAttributes(), nullptr);
    EXPECT_EQ(record.pGetTailAttributes()->GetAt(0)->m_sName, ".smd");
}

TEST_F(TailOfAFile, SaysWhenTheNumberIsNoneOrSomethingElseFollows)
{
    for (const char* const tail : {";;ID=x", ";;ID=", ";;ID=-4", ";;ID=1234567890123456789"})
        EXPECT_EQ(ReadTailID(CutTail(tail), 2, messages), CJOBXtailed::kNoID) << tail;
    EXPECT_EQ(ReadTailID(CutTail(";;ID=8;COLOR=red"), 2, messages), 8);
    messages.Deliver();
    EXPECT_THAT(sink.lines, ElementsAre("f:2: warning ATR006 The unique number \"x\" is not a whole number.",
                                        "f:2: warning ATR006 The unique number \"\" is not a whole number.",
                                        "f:2: warning ATR006 The unique number \"-4\" is not a whole number.",
                                        "f:2: warning ATR006 The unique number \"1234567890123456789\" is not a whole "
                                        "number.",
                                        "f:2: note ATR007 What follows the attributes, \"COLOR=red\", is not "
                                        "known."));
}
} // namespace
