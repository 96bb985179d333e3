// Most lines are read in one pass, and any other field by field. A blank at its beginning keeps a line from the fast way.
#include "RunProgram.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace plain_lines_test
{
namespace
{
namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

// A file of the sample that is made of blocks of lines.
struct Kind
{
    const char* file;
    Lines head;
    std::vector<Lines> blocks;
};

class Mixer
{
public:
    explicit Mixer(unsigned seed) : m_random(seed) {}

    // Blocks in any order, in which every sixth line or so is changed.
    Lines Mix(const Kind& kind)
    {
        constexpr int kBlocks = 300;
        Lines lines = kind.head;
        for (int i = 0; i < kBlocks; ++i)
            for (std::string line : kind.blocks[Below(kind.blocks.size())])
            {
                for (std::size_t changes = Below(12); changes < 2; ++changes)
                    Change(line);
                lines.push_back(line + (Below(9) == 0 ? "\r\n" : "\n"));
            }
        return lines;
    }

private:
    std::size_t Below(std::size_t count) { return m_random() % count; }
    void Change(std::string& line)
    {
        static const std::string kCharacters("  ;;\t,-.0123=xTNMI'\r\0\v", 23);
        static const Lines kPieces{
            ";;ID=7", ";ID=8", ";0",  ";1=2;ID=9", " ;0,1=1", "; ;id=3",     ";;ID=x",    "1e5",
            " extra", "''",    " ''", "-1",        "+1",      "99999999999", ";0=1 ID=5", " staggered 1 2 3"};
        const std::size_t at = Below(line.size() + 1);
        switch (Below(4))
        {
        case 0:
            line.erase(at, 1 + Below(3));
            break;
        case 1:
            line.insert(at, kPieces[Below(kPieces.size())]);
            break;
        case 2:
            line += kPieces[Below(kPieces.size())];
            break;
        default:
            line.insert(at, 1, kCharacters[Below(kCharacters.size())]);
        }
    }

    std::mt19937 m_random;
};

// The document and the messages of the sample with that file.
ProgramResult JsonOf(const std::string& job, const Kind& kind, const Lines& lines, const std::string& beforeEach)
{
    const std::string path = job + '/' + kind.file;
    EXPECT_TRUE(fs::exists(path)) << path;
    std::ofstream file(path, std::ios::binary);
    for (const std::string& line : lines)
        file << beforeEach << line;
    file.close();
    return RunJobx({"json", job, "--no-features", "--messages", "all"});
}

void ExpectTheSameFieldByField(const Kind& kind)
{
    TempDir directory;
    const std::string job = CopySample(directory);
    for (unsigned seed = 1; seed <= 4; ++seed)
    {
        const Lines lines = Mixer(seed).Mix(kind);
        const ProgramResult fast = JsonOf(job, kind, lines, "");
        const ProgramResult slow = JsonOf(job, kind, lines, " ");
        ASSERT_EQ(fast.exitCode, 0) << fast.err;
        EXPECT_TRUE(fast.out == slow.out) << "the documents differ, seed " << seed;
        EXPECT_EQ(fast.err, slow.err) << "seed " << seed;
        EXPECT_NE(fast.err, "") << "some lines are bad";
    }
}
} // namespace

TEST(PlainLines, OfEdaDataAreReadAsFieldByField)
{
    ExpectTheSameFieldByField(
        {"steps/pcb/eda/data",
         {"#\n", "HDR made\n", "@0 .name\n", "@1 .other\n", "&1 text\n", "LYR top bottom inner\n"},
         {{"#", "# NET 0", "NET A_1", "SNT TOP T 0 1", "FID C 0 1", "FID L 2 3", "FID H 1 0"},
          {"NET b ;;ID=4", "SNT VIA", "FID C 1 2", "SNT PLN S E 0.5;;ID=5", "SNT TRC ;0=1;ID=6", "FID C 3 1"},
          {"PKG P 0.1 -1 -1 1 1", "RC -1 -1 2 2", "CR 0 0 1;;ID=3", "SQ 0 0 .5", "PRP NAME 'a value'", "PRP N 'x;y' ",
           "PIN 1 S 0.5 -0.5 0 E S", "CT", "OB 0 0 I", "OS 1.5 0", "OC 1 1 0.5 .5 Y", "OS 0 0", "OE", "CE",
           "PRP OF_PIN 'p'", "PIN 2 T 1 1 0.25 U U;0;ID=11"},
          {"# PKG 1", "PKG Q 1 0 0 1 1;", "CT", "OB 0 0 I", "OE", "OB 0 0 H", "CE", "PIN 1 S 0 0 0 E S", "CT",
           "PIN 2 S 0 0 0 E S", "CT", "OB 0 0 I", "PIN 3 S 0 0 0 E S"}}});
}

TEST(PlainLines, OfComponentsAreReadAsFieldByField)
{
    ExpectTheSameFieldByField({"steps/pcb/layers/comp_+_top/components",
                               {"UNITS=MM\n", "@0 .name\n", "@1 .other\n", "&1 text\n"},
                               {{"#", "# CMP 0", "CMP 0 1.5 -2 90.0 N R1 part_name ;0=1,1;ID=5", "PRP VALUE '10k 'x''",
                                 "PRP D ''", "TOP 0 1.5 -2 0 N 0 0 1", "TOP 1 1.5 2 90 M 0 1 2;;ID=8"},
                                {"CMP 1 0 0 0 M U2 longer_part_name", "TOP 0 0 0 0 N 0 0 A1 ;0", "PRP VALUE 'v' 1 2",
                                 "TOP 1 0 0 0 N -1 0 A2"},
                                {"CMP 1 0 0 0 N u2 two words;1=1"}}});
}

TEST(PlainLines, OfANetlistAreReadAsFieldByField)
{
    ExpectTheSameFieldByField(
        {"steps/pcb/netlists/cadnet/netlist",
         {"H optimize y staggered n\n", "$0 GND\n", "$1 VCC ;;ID=2\n", "#\n"},
         {{"0 0.5 1 2 T e c", "0 0 1 -2 B 0.25 0.5 m e staggered 5 6 0.7 v", "1 .5 1 2 D e e v f "},
          {"0 0.5 1 2 T e c v", "1 0.5 1 2 T e c f v", "2 1 1 1 T e e", "1 0.5 1 2 T e s;;ID=9"},
          {"$2 name", "2 1 2 3 I e e staggered 0 0 0 ", "# comment", "1 1 2 3 B e e v  f"}}});
}
} // namespace plain_lines_test
