// The unified diff of jobx edit --dry-run, against diffs written by hand and against the texts themselves.
#include "edit/LineDiff.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace line_diff_test
{
using Lines = std::vector<std::string>;

std::string Joined(const Lines& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

std::string Numbers(int first, int last)
{
    Lines lines;
    for (int i = first; i <= last; ++i)
        lines.push_back(std::to_string(i));
    return Joined(lines);
}

// Applies hunks to a text of whole lines; reports where they do not fit.
std::string Patched(const std::string& before, const std::string& hunks)
{
    std::istringstream in(before);
    std::istringstream changes(hunks);
    std::string after;
    std::string line;
    int at = 1; // the next line of the text before
    const auto copy = [&](bool keep)
    {
        std::string taken;
        EXPECT_TRUE(static_cast<bool>(std::getline(in, taken)));
        ++at;
        if (keep)
            after += taken + "\n";
        return taken;
    };
    while (std::getline(changes, line))
    {
        if (line.starts_with("@@ -"))
        {
            const int first = std::stoi(line.substr(4));
            const bool isEmpty = line.substr(4, line.find(' ', 4) - 4).ends_with(",0");
            while (at < first + (isEmpty ? 1 : 0))
                copy(true);
        }
        else if (line[0] == '+')
            after += line.substr(1) + "\n";
        else
            EXPECT_EQ(copy(line[0] == ' '), line.substr(1));
    }
    while (std::getline(in, line))
        after += line + "\n";
    return after;
}

TEST(LineDiff, OfEqualTextsIsEmpty)
{
    EXPECT_EQ(UnifiedHunks("", ""), "");
    EXPECT_EQ(UnifiedHunks("a\nb\n", "a\nb\n"), "");
    EXPECT_EQ(UnifiedHunks("a\nb", "a\nb"), "");
}

TEST(LineDiff, ShowsThreeLinesAroundAChange)
{
    std::string after = Numbers(1, 9);
    after.replace(after.find("5\n"), 2, "five\n");
    EXPECT_EQ(UnifiedHunks(Numbers(1, 9), after), "@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+five\n 6\n 7\n 8\n");
}

TEST(LineDiff, ShowsWhatWasAddedAndRemovedAtTheEnds)
{
    EXPECT_EQ(UnifiedHunks("", "a\n"), "@@ -0,0 +1 @@\n+a\n");
    EXPECT_EQ(UnifiedHunks("a\n", ""), "@@ -1 +0,0 @@\n-a\n");
    EXPECT_EQ(UnifiedHunks("b\n", "a\nb\nc\n"), "@@ -1 +1,3 @@\n+a\n b\n+c\n");
    EXPECT_EQ(UnifiedHunks("a\r\n", "b\r\n"), "@@ -1 +1 @@\n-a\r\n+b\r\n");
}

TEST(LineDiff, RemarksALastLineWithoutItsEnd)
{
    EXPECT_EQ(UnifiedHunks("a", "a\n"), "@@ -1 +1 @@\n-a\n\\ No newline at end of file\n+a\n");
    EXPECT_EQ(UnifiedHunks("a\nb", "c\nb"), "@@ -1,2 +1,2 @@\n-a\n+c\n b\n\\ No newline at end of file\n");
}

TEST(LineDiff, JoinsChangesThatAreAtMostSixLinesApart)
{
    const auto hunks = [](int apart)
    {
        const std::string between = Numbers(1, apart);
        const std::string text = UnifiedHunks("a\n" + between + "b\n", "A\n" + between + "B\n");
        std::size_t count = 0;
        for (std::size_t at = text.find("@@ -"); at != std::string::npos; at = text.find("@@ -", at + 1))
            ++count;
        return count;
    };
    EXPECT_EQ(hunks(6), 1U);
    EXPECT_EQ(hunks(7), 2U);
}

TEST(LineDiff, LeadsFromOneTextToTheOtherWithFewLines)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round)
    {
        Lines before;
        for (auto i = random() % 60; i > 0; --i)
            before.push_back(std::to_string(random() % 8));
        Lines after = before;
        const auto edits = random() % 10;
        for (std::size_t i = 0; i < edits; ++i)
        {
            const auto at = static_cast<std::ptrdiff_t>(random() % (after.size() + 1));
            if (random() % 2 == 0 || at == static_cast<std::ptrdiff_t>(after.size()))
                after.insert(after.begin() + at, "new");
            else
                after.erase(after.begin() + at);
        }
        const std::string hunks = UnifiedHunks(Joined(before), Joined(after));
        ASSERT_EQ(Patched(Joined(before), hunks), Joined(after)) << hunks;
        std::size_t changes = 0;
        std::istringstream lines(hunks);
        for (std::string line; std::getline(lines, line);)
            changes += line[0] == '+' || line[0] == '-' ? 1 : 0;
        EXPECT_LE(changes, edits);
    }
}

TEST(LineDiff, OfTextsWithoutAnythingInCommonReplacesAllLines)
{
    const std::string before = Numbers(0, 4999);
    const std::string after = Numbers(5000, 9999);
    const std::string hunks = UnifiedHunks(before, after);
    EXPECT_TRUE(hunks.starts_with("@@ -1,5000 +1,5000 @@\n-0\n"));
    EXPECT_EQ(Patched(before, hunks), after);
}
} // namespace line_diff_test
