#include "eda/CWordList.h"

#include "foundation/framework/CException.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
using Words = std::vector<std::string>;

Words WordsOf(const CWordList& list)
{
    Words words;
    EXPECT_TRUE(list.ForEach(
        [&words](std::string_view word)
        {
            words.emplace_back(word);
            return true;
        }));
    EXPECT_EQ(list.GetSize(), static_cast<INT_PTR>(words.size()));
    EXPECT_EQ(list.GetCount(), list.GetSize());
    EXPECT_EQ(list.IsEmpty() != FALSE, words.empty());
    for (std::size_t i = 0; i < words.size(); ++i)
        EXPECT_EQ(list.GetAt(static_cast<INT_PTR>(i)).View(), words[i]);
    return words;
}

CWordList Joined(const char* words)
{
    CWordList list;
    list.SetJoined(words);
    return list;
}
} // namespace

TEST(WordList, JoinedTextIsTheListOfItsWords)
{
    EXPECT_EQ(WordsOf(CWordList()), Words());
    EXPECT_EQ(WordsOf(Joined("")), Words());
    EXPECT_EQ(WordsOf(Joined("1")), (Words{"1"}));
    EXPECT_EQ(WordsOf(Joined("-0.5 x,y a\tb")), (Words{"-0.5", "x,y", "a\tb"}));
}

TEST(WordList, IsAnArrayOfTextsForWhoeverUsesItAsOne)
{
    CWordList list = Joined("1 2");
    CStringArray& array = list;
    array.Add("3 4"); // a word of an array may hold a blank
    EXPECT_EQ(WordsOf(list), (Words{"1", "2", "3 4"}));
    list[0] = "a";
    EXPECT_EQ(list.Add("5"), 3);
    const CWordList& fixed = list;
    EXPECT_STREQ(fixed[0], "a");
    const CStringArray& same = fixed;
    EXPECT_EQ(same.GetSize(), 4);
    EXPECT_EQ(WordsOf(list), (Words{"a", "2", "3 4", "5"}));
    list.RemoveAll();
    EXPECT_EQ(WordsOf(list), Words());
    CStringArray texts;
    texts.Add("");
    list = texts;
    EXPECT_EQ(WordsOf(list), (Words{""}));
}

TEST(WordList, CopiesAreDeep)
{
    for (const bool asArray : {false, true})
    {
        CWordList list = Joined("1 2");
        if (asArray)
            list[1] = "2";
        CWordList copy(list);
        CWordList assigned = Joined("other");
        assigned = copy;
        copy[0] = "x";
        const CWordList& self = assigned;
        assigned = self;
        EXPECT_EQ(WordsOf(list), (Words{"1", "2"}));
        EXPECT_EQ(WordsOf(assigned), (Words{"1", "2"}));
        EXPECT_EQ(WordsOf(copy), (Words{"x", "2"}));
    }
}

TEST(WordList, EqualWordsMakeEqualLists)
{
    CWordList array = Joined("1 2");
    array[0] = "1";
    EXPECT_TRUE(Joined("1 2") == Joined("1 2"));
    EXPECT_TRUE(Joined("1 2") == array);
    EXPECT_TRUE(array == Joined("1 2"));
    for (const char* const other : {"", "1", "1 2 3", "1 x", "12"})
    {
        EXPECT_FALSE(Joined("1 2") == Joined(other)) << other;
        EXPECT_FALSE(array == Joined(other)) << other;
    }
    array[0] = "1 2";
    array.RemoveAll();
    array.Add("1 2");
    EXPECT_FALSE(array == Joined("1 2")) << "one word is not two";
}

TEST(WordList, StopsWhereTheVisitorSaysSo)
{
    CWordList list = Joined("1 2 3");
    for (int round = 0; round < 2; ++round)
    {
        int visited = 0;
        EXPECT_FALSE(list.ForEach([&visited](std::string_view) { return ++visited < 2; }));
        EXPECT_EQ(visited, 2);
        list[0] = "1"; // the same as an array
    }
}

TEST(WordList, BadIndexRaisesTheInvalidArgumentException)
{
    const CWordList list = Joined("1 2");
    for (const INT_PTR index : {INT_PTR{-1}, INT_PTR{2}})
    {
        EXPECT_THROW(list.GetAt(index), CInvalidArgException*) << index;
        EXPECT_THROW(static_cast<void>(list[index]), CInvalidArgException*) << index;
    }
}
