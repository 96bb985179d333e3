#include "saving/LineWeaver.h"

#include "foundation/base/NumberText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace
{
struct Item
{
    int depth;
    int line; // of the source
    std::string text;
};

constexpr int kAbove = -2; // a comment above the next record

CRecordLines Listed(const std::vector<Item>& items)
{
    CRecordLines lines;
    for (const Item& item : items)
    {
        if (item.line == kAbove)
            lines.BeginAbove(item.depth);
        else
            lines.Begin(item.depth, item.line);
        std::istringstream words(item.text);
        for (std::string word; words >> word;)
        {
            lines.Word(word);
            if (item.line == kAbove && word != "#" && !number_text::IsDigit(word.front()))
                lines.EndKey();
        }
    }
    return lines;
}

std::string Woven(const std::string& source, const std::vector<Item>& before, const std::vector<Item>& now)
{
    return WeaveLines(source, Listed(before), Listed(now));
}

constexpr int kFind = CRecordLines::kUnknownLine;

const std::string kNets = "# nets\n"
                          "NET  A\n"    // 2
                          "SNT 1.0\n"   // 3
                          "PRP x 'a'\n" // 4
                          "\n"          // 5
                          "# NET 1\n"   // 6
                          "NET  B\n"    // 7
                          "STRANGE\n"   // 8
                          "SNT 2.0\n"   // 9
                          "SNT 3.0\n"   // 10
                          "NET C\n";    // 11
const std::vector<Item> kBefore = {{0, 2, "NET A"}, {1, kFind, "PRP x 'a'"}, {1, 3, "SNT 1"}, {0, 7, "NET B"},
                                   {1, 9, "SNT 2"}, {1, 10, "SNT 3"},        {0, 11, "NET C"}};

TEST(WeaveLines, KeepsEveryByteIfNothingChanged)
{
    EXPECT_EQ(Woven(kNets, kBefore, kBefore), kNets);
    const std::string odd = "\xEF\xBB\xBFNET  A \t\r\n\r\n  NET B";
    const std::vector<Item> lines = {{0, 1, "NET A"}, {0, 3, "NET B"}};
    EXPECT_EQ(Woven(odd, lines, lines), odd);
}

TEST(WeaveLines, ChangesOneLineForOneRecord)
{
    std::vector<Item> now = kBefore;
    now[4].text = "SNT 2.5";
    std::string wanted = kNets;
    wanted.replace(wanted.find("SNT 2.0"), 7, "SNT 2.5");
    EXPECT_EQ(Woven(kNets, kBefore, now), wanted);
}

TEST(WeaveLines, FindsLinesWithoutARecordByTheirKey)
{
    std::vector<Item> now = kBefore;
    now[1].text = "PRP x 'b'";
    std::string wanted = kNets;
    wanted.replace(wanted.find("'a'"), 3, "'b'");
    EXPECT_EQ(Woven(kNets, kBefore, now), wanted);
}

TEST(WeaveLines, LeavesOutLinesOfDeletedRecordsAndKeepsComments)
{
    std::vector<Item> now = kBefore;
    now.erase(now.begin() + 3, now.begin() + 6);
    EXPECT_EQ(Woven(kNets, kBefore, now), "# nets\nNET  A\nSNT 1.0\nPRP x 'a'\n\n# NET 1\nSTRANGE\nNET C\n");
}

TEST(WeaveLines, InsertsBehindTheSiblingBefore)
{
    std::vector<Item> now = kBefore;
    now.insert(now.begin() + 3, {0, 0, "NET D"});
    now.insert(now.begin() + 3, {1, 0, "SNT 9"});
    EXPECT_EQ(
        Woven(kNets, kBefore, now),
        "# nets\nNET  A\nSNT 1.0\nSNT 9\nPRP x 'a'\nNET D\n\n# NET 1\nNET  B\nSTRANGE\nSNT 2.0\nSNT 3.0\nNET C\n");
}

TEST(WeaveLines, InsertsAFirstChildBehindItsParent)
{
    std::vector<Item> now = kBefore;
    now.push_back({1, 0, "SNT 7"});
    EXPECT_EQ(Woven(kNets, kBefore, now), kNets + "SNT 7\n");
    now = kBefore;
    now.insert(now.begin() + 1, {1, 0, "PIN 7"});
    std::string wanted = kNets;
    wanted.insert(wanted.find("SNT 1.0"), "PIN 7\n");
    EXPECT_EQ(Woven(kNets, kBefore, now), wanted);
}

TEST(WeaveLines, MovesRecordsWithTheUnknownLinesBehindThem)
{
    std::vector<Item> now = {kBefore[3], kBefore[4], kBefore[5], kBefore[0], kBefore[1], kBefore[2], kBefore[6]};
    EXPECT_EQ(Woven(kNets, kBefore, now),
              "NET  B\nSTRANGE\nSNT 2.0\nSNT 3.0\n# nets\nNET  A\nSNT 1.0\nPRP x 'a'\n\n# NET 1\nNET C\n");
}

TEST(WeaveLines, WritesADefaultOnlyIfItChanges)
{
    const std::string source = "A\nB\n";
    const std::vector<Item> before = {{0, 1, "A"}, {0, kFind, "D 0"}, {0, 2, "B"}};
    std::vector<Item> now = before;
    EXPECT_EQ(Woven(source, before, now), source);
    now[1].text = "D 1";
    EXPECT_EQ(Woven(source, before, now), "A\nD 1\nB\n");
}

TEST(WeaveLines, CommentsGoWithTheRecordBelowThem)
{
    const std::string source = "# NET list\n#\n# NET 0\nNET A\n#\n#NET 1\n\nNET B\n#\n# net 2\nNET C\nNET D\n";
    const std::vector<Item> before = {{0, kAbove, "# NET 0"}, {0, 4, "NET A"},        {0, kAbove, "# NET 1"},
                                      {0, 8, "NET B"},        {0, kAbove, "# NET 2"}, {0, 11, "NET C"},
                                      {0, kAbove, "# NET 3"}, {0, 12, "NET D"}};
    EXPECT_EQ(Woven(source, before, before), source);
    std::vector<Item> now = before;
    now.erase(now.begin() + 2, now.begin() + 4);
    now[2].text = "# NET 1";
    now[4].text = "# NET 2";
    EXPECT_EQ(Woven(source, before, now), "# NET list\n#\n# NET 0\nNET A\n#\n\n#\n# net 1\nNET C\nNET D\n");
    now = before;
    now.insert(now.begin() + 4, {{0, kAbove, "# NET 2"}, {0, 0, "NET N"}});
    now[6].text = "# NET 3";
    now[8].text = "# NET 4";
    EXPECT_EQ(Woven(source, before, now), "# NET list\n#\n# NET 0\nNET A\n#\n#NET 1\n\nNET B\n# NET 2\nNET N\n#\n"
                                          "# net 3\nNET C\nNET D\n");
}

TEST(WeaveLines, AFileWithoutCommentsAboveItsRecordsGetsNone)
{
    const std::string source = "NET A\nNET B\n";
    const std::vector<Item> before = {{0, kAbove, "# NET 0"}, {0, 1, "NET A"}, {0, kAbove, "# NET 1"}, {0, 2, "NET B"}};
    const std::vector<Item> now = {{0, kAbove, "# NET 0"}, {0, 2, "NET B"}, {0, kAbove, "# NET 1"}, {0, 0, "NET C"},
                                   {0, kAbove, "# NET 2"}, {0, 0, "NET D"}, {0, kAbove, "# PKG 0"}, {0, 0, "PKG P"}};
    EXPECT_EQ(Woven(source, before, now), "NET B\nNET C\nNET D\nPKG P\n");
}

TEST(WeaveLines, FindsTablesThatAreComments)
{
    const std::string source = "#@0 .a\n# &1 text\n# &2  more\nNET A\n";
    const std::vector<Item> before = {
        {0, kFind, "@0 .a"}, {0, kFind, "&1 text"}, {0, kFind, "&2 more"}, {0, 4, "NET A"}};
    const std::vector<Item> now = {{0, kFind, "@0 .b"},    {0, kFind, "@1 .c"}, {0, kFind, "&1 text"},
                                   {0, kFind, "&2 other"}, {0, kFind, "&3 x"},  {0, 4, "NET A"}};
    EXPECT_EQ(Woven(source, before, now), "#@0 .b\n#@1 .c\n# &1 text\n# &2  other\n#&3 x\nNET A\n");
}

TEST(WeaveLines, KeepsLineEnds)
{
    const std::vector<Item> before = {{0, 1, "A"}, {0, 2, "B"}};
    const std::vector<Item> now = {{0, 1, "A"}, {0, 0, "N"}, {0, 2, "C"}, {0, 0, "M"}};
    EXPECT_EQ(Woven("A\r\nB\r\n", before, now), "A\r\nN\r\nC\r\nM\r\n");
    EXPECT_EQ(Woven("A\r\nB", before, now), "A\r\nN\r\nC\r\nM");
    EXPECT_EQ(Woven("A\rB\r", before, now), "A\rN\rC\rM\r");
    EXPECT_EQ(Woven("A\nB", before, now), "A\nN\nC\nM");
}

TEST(WeaveLines, IndentsNewLinesLikeTheirNeighbours)
{
    CRecordLines before;
    before.Begin(0, 1);
    before.Word("STEP").Word("{");
    before.KeyValue(1, "COL", "1");
    before.KeyValue(1, "NAME", "pcb");
    CRecordLines now = before;
    now.KeyValue(1, "TYPE", "x");
    EXPECT_EQ(WeaveLines("STEP {\n\tCOL = 1\n\tNAME = pcb\n}\n", before, now),
              "STEP {\n\tCOL = 1\n\tNAME = pcb\n\tTYPE=x\n}\n");
}

TEST(WeaveLines, ReplacesUnitsLinesOfOldFiles)
{
    CRecordLines before;
    before.KeyValue(0, "UNITS", "INCH");
    CRecordLines now;
    now.KeyValue(0, "UNITS", "MM");
    for (const char* const source : {"UNITS=INCH\n", "UNITS INCH\n", "U INCH\n"})
        EXPECT_EQ(WeaveLines(source, before, now), "UNITS=MM\n") << source;
}

TEST(WeaveLines, ListsAllOfANewFile)
{
    EXPECT_EQ(Woven("", {}, {{0, 0, "A"}, {1, 0, "B"}}), "A\nB\n");
}

TEST(WeaveLines, TakesTheUnchangedOfTwoRecordsThatComeFromOneLine)
{
    const std::vector<Item> before = {{0, 1, "P 1"}, {0, 2, "P 2"}};
    const std::vector<Item> now = {{0, 2, "P 5"}, {0, 1, "P 1"}, {0, 2, "P 2"}};
    EXPECT_EQ(Woven("P 1.0\nP 2.0\n", before, now), "P 5\nP 1.0\nP 2.0\n");
}

CRecordLines Numbered(const std::vector<Item>& records)
{
    CRecordLines lines;
    int number = 0;
    for (const Item& item : records)
    {
        lines.BeginAbove(0);
        lines.Word("# NET").EndKey().Integer(number++);
        lines.Begin(item.depth, item.line);
        lines.Word(item.text);
    }
    return lines;
}

TEST(WeaveLines, CountsCommentsAboveRecordsThrough)
{
    const std::string source = "#\n#NET 0\nA\n#\n#NET 1\n#\nB\n#NET 2\nC\n";
    const std::vector<Item> before = {{0, 3, "A"}, {0, 7, "B"}, {0, 9, "C"}};
    EXPECT_EQ(WeaveLines(source, Numbered(before), Numbered(before)), source);
    EXPECT_EQ(WeaveLines(source, Numbered(before), Numbered({before[0], before[2]})),
              "#\n#NET 0\nA\n#\n#\n#NET 1\nC\n");
    EXPECT_EQ(WeaveLines(source, Numbered(before), Numbered({before[0], {0, 0, "N"}, before[1], before[2]})),
              "#\n#NET 0\nA\n# NET 1\nN\n#\n#NET 2\n#\nB\n#NET 3\nC\n");
}

TEST(WeaveLines, AddsNoCommentsToAFileWithoutThem)
{
    const std::vector<Item> before = {{0, 1, "A"}, {0, 2, "B"}};
    EXPECT_EQ(WeaveLines("A\nB\n", Numbered(before), Numbered({before[0], {0, 0, "N"}, before[1]})), "A\nN\nB\n");
}

TEST(WeaveLines, AddsNoOptionalLineToAFileWithoutIt)
{
    const auto listed = [](int count)
    {
        CRecordLines lines;
        lines.Begin(0, kFind);
        lines.Word("F").Integer(count).Optional();
        lines.Begin(0, 0);
        lines.Word("P");
        return lines;
    };
    CRecordLines before;
    before.Begin(0, kFind);
    before.Word("F").Integer(1).Optional();
    EXPECT_EQ(WeaveLines("F 1\n", before, listed(2)), "F 2\nP\n");
    EXPECT_EQ(WeaveLines("# none\n", before, listed(2)), "P\n# none\n");
    EXPECT_EQ(WeaveLines("", {}, listed(2)), "F 2\nP\n");
}

// Whatever is changed, the records of the woven text are those of the changed list, in its order.
TEST(WeaveLines, HasTheRecordsOfTheModelAfterRandomChanges)
{
    std::mt19937 random(20261122);
    const auto below = [&random](std::size_t limit) { return static_cast<std::size_t>(random()) % limit; };
    for (int round = 0; round < 500; ++round)
    {
        std::string source;
        std::vector<Item> before;
        int line = 0;
        for (std::size_t i = 0; i < 12; ++i)
        {
            if (below(4) == 0)
            {
                source += below(2) == 0 ? "# comment\n" : "\n";
                ++line;
            }
            const std::string text = "R " + std::to_string(below(5));
            source += text + "\n";
            before.push_back({below(3) == 0 && i > 0 ? 1 : 0, ++line, text});
        }
        std::vector<Item> now = before;
        for (std::size_t change = below(5); change > 0; --change)
        {
            const auto at = now.begin() + static_cast<std::ptrdiff_t>(below(now.size()));
            switch (below(4))
            {
            case 0:
                now.erase(at);
                break;
            case 1:
                now.insert(at, {0, 0, "N " + std::to_string(below(5))});
                break;
            case 2:
                at->text = "R " + std::to_string(below(50));
                break;
            default:
                std::rotate(now.begin(), at, now.end());
            }
        }
        now.front().depth = 0;
        std::istringstream woven(Woven(source, before, now));
        std::vector<std::string> records;
        for (std::string text; std::getline(woven, text);)
            if (!text.empty() && text.front() != '#')
                records.push_back(text);
        std::vector<std::string> wanted;
        for (const Item& item : now)
            wanted.push_back(item.text);
        ASSERT_EQ(records, wanted) << "round " << round << "\n" << source;
    }
}
} // namespace
