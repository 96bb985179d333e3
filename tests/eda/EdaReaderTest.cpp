#include "eda/CJOBXeda.h"
#include "eda/EdaText.h"
#include "foundation/framework/Guarded.h"
#include "support/CommaLocale.h"
#include "support/CountFailedAllocations.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

using std::string_view_literals::operator""sv;

namespace
{
// A line of every kind, each in its place. (A package with attributes is not kept; see the tests of packages.)
constexpr const char* kWholeFile = "# made by hand\n"
                                   "UNITS=MM\n"
                                   "HDR Board A, rev 2\n"
                                   "LYR top inner bottom\n"
                                   "@0 .comp_mount_type\n"
                                   "&0 text\n"
                                   "# NET 7\n"
                                   "NET GND\n"
                                   "SNT TOP T 12 3\n"
                                   "FID C 0 10\n"
                                   "FID H 2 11\n"
                                   "SNT PLN S C 0.01\n"
                                   "FGR 1 2 3\n"
                                   "SNT TRC\n"
                                   "NET VCC\n"
                                   "SNT VIA\n"
                                   "# PKG 3\n"
                                   "PKG R0603 0.05 -0.03 -0.015 0.03 0.015\n"
                                   "CR 0 0 0.5\n"
                                   "PRP NETLIKE 'two words'\n"
                                   "PIN 1 S -0.02 0.5 0.01 E S ID=4\n"
                                   "CT\n"
                                   "OB 0 0 I\n"
                                   "OS 1 0\n"
                                   "OC 0 0 0.5 0 Y\n"
                                   "OE\n"
                                   "CE\n"
                                   "PRP PART 'A1'\n"
                                   "PKG DIP8 2.54 0 0 1 1\n"
                                   "PIN 1 T 0 0 0.8 U U\n"
                                   "RC 0 0 1 1\n"
                                   "#\n";

constexpr const char* kWholeModel = "header [Board A, rev 2]\n"
                                    "layers [top] [inner] [bottom]\n"
                                    "net 7 [GND]\n"
                                    "  subnet @9 [TOP] pin [T] 12 3 plane [] [] 0\n"
                                    "    @10 [C] 0 10 []\n"
                                    "    @11 [H] 2 11 []\n"
                                    "  subnet @12 [PLN] pin [] -1 -1 plane [S] [C] 0.01\n"
                                    "    @13 [FGR] -1 -1 [1 2 3]\n"
                                    "  subnet @14 [TRC] pin [] -1 -1 plane [] [] 0\n"
                                    "net -1 [VCC]\n"
                                    "  property [NETLIKE]=['two] [words'] -1 -1\n"
                                    "  subnet @16 [VIA] pin [] -1 -1 plane [] [] 0\n"
                                    "package 3 [R0603] 0.05 from -0.03,-0.015 to 0.03,0.015\n"
                                    "  property [PART]=['A1'] -1 -1\n"
                                    "  @19 [CR] [0] [0] [0.5]\n"
                                    "  pin [1] [S] -0.02,0.5 hole 0.01 [E] [S ID=4]\n"
                                    "    @22 [CT]\n"
                                    "    @23 [OB] [0] [0] [I]\n"
                                    "    @24 [OS] [1] [0]\n"
                                    "    @25 [OC] [0] [0] [0.5] [0] [Y]\n"
                                    "    @26 [OE]\n"
                                    "    @27 [CE]\n"
                                    "package -1 [DIP8] 2.54 from 0,0 to 1,1\n"
                                    "  pin [1] [T] 0,0 hole 0.8 [U] [U]\n"
                                    "    @31 [RC] [0] [0] [1] [1]\n";

constexpr const char* kNetWithSubnet = "NET A\nSNT TRC\n";
} // namespace

TEST(EdaReader, ReadsEveryKindOfLine)
{
    EXPECT_EQ(Described(kWholeFile), kWholeModel);
}

TEST(EdaReader, LeavesTheMembersAloneThatTheFileDoesNotFill)
{
    const auto data = ReadEda(kWholeFile);
    EXPECT_STREQ(data->m_sUnits, "INCH");
    EXPECT_EQ(data->m_arrAttributeNames.GetSize(), 0);
    EXPECT_EQ(data->m_arrAttributeTexts.GetSize(), 0);
    EXPECT_EQ(data->m_arrProperties.GetSize(), 0);
    EXPECT_EQ(data->m_arrPkgs.GetAt(0)->m_arrAttributes.GetSize(), 0);
}

TEST(EdaReader, CommentsUnitsAndTablesAloneGiveAnEmptyModel)
{
    EXPECT_EQ(Described("# NETS\n#\n#NET 3\nUNITS=MM\n@0 .name\n&0 text\nU MM\nF 3\n"), "");
    EXPECT_EQ(Described(""), "");
    EXPECT_EQ(Described("\n \n\t\n"), "");
}

TEST(EdaReader, MissingFileAnswersZeroAndChangesNothing)
{
    const TempDir dir;
    CJOBXdata data;
    data.m_sHeader = "kept";
    EXPECT_EQ(data.ParseODBOfMFC(dir.Path("data").c_str()), 0);
    EXPECT_EQ(data.ParseODBOfMFC(""), 0);
    EXPECT_EQ(data.ParseODBOfMFC(dir.Path().c_str()), 0) << "a directory is no file";
    EXPECT_EQ(Describe(data), "header [kept]\n");
}

TEST(EdaReader, ReadingTwiceDoublesEveryRecord)
{
    const TempDir dir;
    const std::string path = dir.Write("data", "HDR h\nLYR a b\nNET A\nPKG P 1 0 0 1 1\n");
    CJOBXdata data;
    EXPECT_EQ(data.ParseODBOfMFC(path.c_str()), 1);
    EXPECT_EQ(data.ParseODBOfMFC(path.c_str()), 1);
    EXPECT_EQ(Describe(data), "header [h]\nlayers [a] [b] [a] [b]\nnet -1 [A]\nnet -1 [A]\n"
                              "package -1 [P] 1 from 0,0 to 1,1\npackage -1 [P] 1 from 0,0 to 1,1\n");
}

TEST(EdaReader, NothingStaysOpenFromOneReadToTheNext)
{
    const TempDir dir;
    CJOBXdata data;
    EXPECT_EQ(data.ParseODBOfMFC(dir.Write("1", "NET A\nSNT TRC\nPKG P 1 0 0 1 1\nPIN 1 S 0 0 0 E S\n").c_str()), 1);
    const std::string before = Describe(data);
    EXPECT_EQ(
        data.ParseODBOfMFC(
            dir.Write("2", "SNT VIA\nFID C 0 0\nFGR x\nCR 0 0 1\nPRP a b\nPIN 2 S 0 0 0 E S\nCR 0 0 1\n").c_str()),
        1);
    EXPECT_EQ(Describe(data), before);
}

TEST(EdaReader, HeaderWithoutTextIsTheKeywordItself)
{
    EXPECT_EQ(Described("HDR\n"), "header [HDR]\n");
    EXPECT_EQ(Described("HDR \n"), "header [HDR]\n");
    EXPECT_EQ(Described("HDR one\nHDR  two  three \n"), "header [two  three]\n");
}

TEST(EdaReader, LayerLineWithoutNamesGivesTheKeywordAsLayer)
{
    EXPECT_EQ(Described("LYR\n"), "layers [LYR]\n");
    EXPECT_EQ(Described("LYR a  b\tc   d\nLYR e\n"), "layers [a] [b\tc] [d] [e]\n");
}

TEST(EdaReader, NumberedNetKeepsAttributesInItsName)
{
    EXPECT_EQ(Described("# NET 7\nNET GND;0\n"), "net 7 [GND;0]\n");
    EXPECT_EQ(Described("# NET 7\nNET GND ; 0, 1\n"), "net 7 [GND ; 0, 1]\n");
}

TEST(EdaReader, PlainNetHasNoNumberAndIsIgnoredWithAttributes)
{
    EXPECT_EQ(Described("NET GND\n"), "net -1 [GND]\n");
    EXPECT_EQ(Described("NET GND;0\n"), "");
    EXPECT_EQ(Described("NET A\nNET B;0\nSNT TRC\n"), "net -1 [A]\n  subnet @3 [TRC] pin [] -1 -1 plane [] [] 0\n")
        << "the net before the ignored one stays current";
    EXPECT_EQ(Described("NET\n"), "net -1 [NET]\n");
    EXPECT_EQ(Described("NET a b\n"), "net -1 [a b]\n");
}

TEST(EdaReader, NetNumberMayStandAnywhereAmongTheKeywordsOfItsComment)
{
    const struct
    {
        const char* comment;
        int number;
    } cases[] = {{"# NET 7", 7},        {"# NET7", 7},      {"# net 7", 7},       {"# NET", 0},
                 {"# NET x", 0},        {"# NET -4 5", -4}, {"# NET # NET 9", 9}, {"# NET 1# NET2", 12},
                 {"# NET +3", 3},       {"# NET \t8", 8},   {"# NETS: 5", 0},     {"# NET 99999999999", 2147483647},
                 {"# NET 5 # PKG 6", 5}};
    for (const auto& c : cases)
        EXPECT_EQ(Described(std::string(c.comment) + "\nNET A\n"), "net " + std::to_string(c.number) + " [A]\n")
            << c.comment;
}

TEST(EdaReader, NetCommentWithoutANetTakesTheNextLineAndClosesTheNet)
{
    EXPECT_EQ(Described("NET A\n# NET 1\n\nSNT TRC\n"), "net -1 [A]\n") << "an empty line counts as the next line";
    EXPECT_EQ(Described("NET A\n# NET 1\nSNT TRC\nSNT VIA\n"), "net -1 [A]\n");
    EXPECT_EQ(Described("# NET 1\n# NET 2\nNET A\n"), "net -1 [A]\n") << "the second comment was taken";
    EXPECT_EQ(Described("# NET 1\nHDR x\n"), "");
    EXPECT_EQ(Described("NET A\n# NET 1\n"), "net -1 [A]\n");
    EXPECT_EQ(Described("NET A\n# NET 1"), "net -1 [A]\n");
}

TEST(EdaReader, NetCommentWithoutANetLeavesOpenWhatWasOpen)
{
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\n# NET 1\nHDR x\nCR 0 0 1\n"),
              "package -1 [P] 1 from 0,0 to 1,1\n  @4 [CR] [0] [0] [1]\n");
}

TEST(EdaReader, LinesTakenWithACommentCount)
{
    EXPECT_EQ(Described("# NET 1\nNET A\n\nSNT TRC\n# PKG 1\nPKG P 1 0 0 1 1\nCR 1\n"),
              "net 1 [A]\n  subnet @4 [TRC] pin [] -1 -1 plane [] [] 0\n"
              "package 1 [P] 1 from 0,0 to 1,1\n  @7 [CR] [1]\n");
}

TEST(EdaReader, NumberedNetClosesThePackageAndAPlainNetDoesNot)
{
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\n# NET 1\nNET A\nCR 1\nPRP a b\n"),
              "net 1 [A]\npackage -1 [P] 1 from 0,0 to 1,1\n");
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\nNET A\nCR 1\nPRP a b\n"),
              "net -1 [A]\n  property [a]=[b] -1 -1\npackage -1 [P] 1 from 0,0 to 1,1\n  @3 [CR] [1]\n");
}

TEST(EdaReader, NewNetDoesNotCloseTheSubnet)
{
    EXPECT_EQ(Described("NET A\nSNT TRC\nNET B\nFID C 1 2\n"),
              "net -1 [A]\n  subnet @2 [TRC] pin [] -1 -1 plane [] [] 0\n    @4 [C] 1 2 []\nnet -1 [B]\n");
}

TEST(EdaReader, PackageWithAttributesIsIgnoredAndItsPinsGoToThePackageBefore)
{
    EXPECT_EQ(Described("PKG A 1 0 0 1 1\n# PKG 3\nPKG R0603 0.05 -0.03 -0.015 0.03 0.015;\nPIN 1 S 0 0 0 E S\n"),
              "package -1 [A] 1 from 0,0 to 1,1\n  pin [1] [S] 0,0 hole 0 [E] [S]\n");
    EXPECT_EQ(Described("PKG A 1 0 0 1 1\nPKG B 1 0 0 1 1 ;0=1\nPIN 1 S 0 0 0 E S\n"),
              "package -1 [A] 1 from 0,0 to 1,1\n  pin [1] [S] 0,0 hole 0 [E] [S]\n");
}

TEST(EdaReader, IgnoredPackageStillCountsAsInAPackage)
{
    for (const char* const ignored : {"PKG B 1 0 0 1 1 ;\n", "# PKG 4\nPKG B 1 0 0 1 1 ;\n"})
    {
        const std::string text =
            Described("NET N\nPKG A 1 0 0 1 1\nPIN 1 S 0 0 0 E S\nHDR x\n" + std::string(ignored) + "CR 1\nPRP a b\n");
        EXPECT_NE(text.find("  property [a]=[b] -1 -1\npackage"), std::string::npos) << "to the net: " << text;
        EXPECT_NE(text.find("1,1\n  @"), std::string::npos) << "to the package, not the pin: " << text;
    }
}

TEST(EdaReader, PackageCommentWithoutAPackageDropsTheNextLineOnly)
{
    EXPECT_EQ(Described("PKG A 1 0 0 1 1\n# PKG 3\nPIN 1 S 0 0 0 E S\nCR 1\n"),
              "package -1 [A] 1 from 0,0 to 1,1\n  @4 [CR] [1]\n");
    EXPECT_EQ(Described("PKG A 1 0 0 1 1\nPIN 1 S 0 0 0 E S\n# PKG 3\n\nCR 1\n# PKG 4"),
              "package -1 [A] 1 from 0,0 to 1,1\n  pin [1] [S] 0,0 hole 0 [E] [S]\n    @5 [CR] [1]\n");
}

TEST(EdaReader, PackageNumberComesFromItsComment)
{
    EXPECT_EQ(Described("# PKG 3\nPKG A 1 0 0 1 1\n"), "package 3 [A] 1 from 0,0 to 1,1\n");
    EXPECT_EQ(Described("# pkg# PKG 4\npkg a 1 0 0 1 1\n"), "package 4 [a] 1 from 0,0 to 1,1\n");
}

TEST(EdaReader, LastFieldOfAPackageTakesTheRest)
{
    const struct
    {
        const char* line;
        const char* model;
    } cases[] = {
        {"PKG", "package -1 [] 0 from 0,0 to 0,0\n"},
        {"PKG R", "package -1 [] 0 from 0,0 to 0,0\n"},
        {"PKG 8", "package -1 [] 0 from 0,0 to 0,8\n"},
        {"PKG R 8", "package -1 [R] 0 from 0,0 to 0,8\n"},
        {"PKG R 1 8", "package -1 [R] 1 from 0,0 to 0,8\n"},
        {"PKG R 1 2 8", "package -1 [R] 1 from 2,0 to 0,8\n"},
        {"PKG R 1 2 3 8", "package -1 [R] 1 from 2,3 to 0,8\n"},
        {"PKG R 1 2 3 4 8", "package -1 [R] 1 from 2,3 to 4,8\n"},
        {"PKG R 1 2 3 4 8 9", "package -1 [R] 1 from 2,3 to 4,8\n"},
        {"PKG  R   1  2 3 4  8", "package -1 [R] 1 from 2,3 to 4,8\n"},
        {"PKG R x 2mm . -1e1 0x10", "package -1 [R] 0 from 2,0 to -10,16\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Described(c.line), c.model) << c.line;
}

TEST(EdaReader, LastFieldOfAPinTakesTheRest)
{
    const struct
    {
        const char* line;
        const char* pin;
    } cases[] = {
        {"PIN", "[] [] 0,0 hole 0 [] [PIN]"},
        {"PIN 1", "[] [] 0,0 hole 0 [] [1]"},
        {"PIN 1 S", "[1] [] 0,0 hole 0 [] [S]"},
        {"PIN 1 S 2", "[1] [S] 0,0 hole 0 [] [2]"},
        {"PIN 1 S 2 3", "[1] [S] 2,0 hole 0 [] [3]"},
        {"PIN 1 S 2 3 4", "[1] [S] 2,3 hole 0 [] [4]"},
        {"PIN 1 S 2 3 4 E", "[1] [S] 2,3 hole 4 [] [E]"},
        {"PIN 1 S 2 3 4 E S", "[1] [S] 2,3 hole 4 [E] [S]"},
        {"PIN 1 S 2 3 4 E S ID=5  x", "[1] [S] 2,3 hole 4 [E] [S ID=5  x]"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Described(std::string("PKG P 1 0 0 1 1\n") + c.line),
                  std::string("package -1 [P] 1 from 0,0 to 1,1\n  pin ") + c.pin + "\n")
            << c.line;
}

TEST(EdaReader, PropertyBehindAPackageGoesToTheNetReadBefore)
{
    EXPECT_EQ(Described("NET A\nNET B\nPKG P 1 0 0 1 1\nPRP name value\n"),
              "net -1 [A]\nnet -1 [B]\n  property [name]=[value] -1 -1\npackage -1 [P] 1 from 0,0 to 1,1\n");
}

TEST(EdaReader, PropertyBehindAPinGoesToThePackage)
{
    EXPECT_EQ(Described("NET A\nPKG P 1 0 0 1 1\nPIN 1 S 0 0 0 E S\nPRP name value\n"),
              "net -1 [A]\npackage -1 [P] 1 from 0,0 to 1,1\n  property [name]=[value] -1 -1\n"
              "  pin [1] [S] 0,0 hole 0 [E] [S]\n");
}

TEST(EdaReader, PropertyOutsidePackagesAndPinsIsDropped)
{
    EXPECT_EQ(Described("NET A\nPRP a b\n"), "net -1 [A]\n");
    EXPECT_EQ(Described("# NET 0\nNET A\nPRP a b\n"), "net 0 [A]\n");
    EXPECT_EQ(Described("NET A\nPKG P 1 0 0 1 1\nHDR h\nPRP a b\n"),
              "header [h]\nnet -1 [A]\npackage -1 [P] 1 from 0,0 to 1,1\n");
    EXPECT_EQ(Described("NET A\nPKG P 1 0 0 1 1\nLYR l\nPRP a b\n"),
              "layers [l]\nnet -1 [A]\npackage -1 [P] 1 from 0,0 to 1,1\n");
}

TEST(EdaReader, PropertyWordsAreSplitAtBlanksAndKeepTheirQuotes)
{
    const struct
    {
        const char* line;
        const char* property;
    } cases[] = {
        {"PRP", "[]=[PRP]"},
        {"PRP x", "[]=[x]"},
        {"PRP x y", "[x]=[y]"},
        {"PRP x 'y'", "[x]=['y']"},
        {"PRP x 'y z'  w;1", "[x]=['y] [z'] [w;1]"},
        {"PRP x y\tz", "[x]=[y\tz]"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Described(std::string("NET A\nPKG P 1 0 0 1 1\n") + c.line),
                  std::string("net -1 [A]\n  property ") + c.property + " -1 -1\npackage -1 [P] 1 from 0,0 to 1,1\n")
            << c.line;
}

TEST(EdaReader, SubnetFieldsDependOnTheKind)
{
    const struct
    {
        const char* line;
        const char* subnet;
    } cases[] = {
        {"SNT TOP T 12 3", "[TOP] pin [T] 12 3 plane [] [] 0"},
        {"SNT TOP T 12 3 4", "[TOP] pin [T] 12 3 plane [] [] 0"},
        {"SNT TOP T 12", "[TOP] pin [T] 12 -1 plane [] [] 0"},
        {"SNT TOP T", "[TOP] pin [T] -1 -1 plane [] [] 0"},
        {"SNT TOP", "[TOP] pin [] -1 -1 plane [] [] 0"},
        {"SNT TOP T x 3y", "[TOP] pin [T] 0 3 plane [] [] 0"},
        {"SNT top T 12 3", "[top] pin [] -1 -1 plane [] [] 0"},
        {"snt TOP B 1 2", "[TOP] pin [B] 1 2 plane [] [] 0"},
        {"SNT PLN S C 0.01", "[PLN] pin [] -1 -1 plane [S] [C] 0.01"},
        {"SNT PLN S C", "[PLN] pin [] -1 -1 plane [S] [C] 0"},
        {"SNT PLN S", "[PLN] pin [] -1 -1 plane [S] [] 0"},
        {"SNT PLN", "[PLN] pin [] -1 -1 plane [] [] 0"},
        {"SNT PLN S C inch", "[PLN] pin [] -1 -1 plane [S] [C] 0"},
        {"SNT pln S C 0.01", "[pln] pin [] -1 -1 plane [] [] 0"},
        {"SNT TRC", "[TRC] pin [] -1 -1 plane [] [] 0"},
        {"SNT TRC T 1 2", "[TRC] pin [] -1 -1 plane [] [] 0"},
        {"SNT VIA", "[VIA] pin [] -1 -1 plane [] [] 0"},
        {"SNT TOPX T 1 2", "[TOPX] pin [] -1 -1 plane [] [] 0"},
        {"SNT TO T 1 2", "[TO] pin [] -1 -1 plane [] [] 0"},
        {"SNT PLNX S C 0.01", "[PLNX] pin [] -1 -1 plane [] [] 0"},
        {"SNT WHATEVER x", "[WHATEVER] pin [] -1 -1 plane [] [] 0"},
        {"SNT", "[SNT] pin [] -1 -1 plane [] [] 0"},
        {"SNT\tTOP", "[SNT\tTOP] pin [] -1 -1 plane [] [] 0"},
        {"SNT \tTOP T 1 2", "[TOP] pin [T] 1 2 plane [] [] 0"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Described(std::string("NET A\n") + c.line), std::string("net -1 [A]\n  subnet @2 ") + c.subnet + "\n")
            << c.line;
}

TEST(EdaReader, FeatureFieldsThatAreMissingKeepTheirDefaults)
{
    const struct
    {
        const char* line;
        const char* object;
    } cases[] = {
        {"FID C 2 10", "[C] 2 10 []"},
        {"FID C 2 10 11", "[C] 2 10 []"},
        {"FID C 2", "[C] 2 -1 []"},
        {"FID C", "[C] -1 -1 []"},
        {"FID", "[FID] -1 -1 []"},
        {"FID c x 7z", "[c] 0 7 []"},
        {"FID C -5 99999999999", "[C] -5 2147483647 []"},
        {"FID C  2   10", "[C] 2 10 []"},
        {"FGR 1 2", "[FGR] -1 -1 [1 2]"},
        {"fgr Some  Text", "[FGR] -1 -1 [Some  Text]"},
        {"FGR", "[FGR] -1 -1 [FGR]"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Described(std::string(kNetWithSubnet) + c.line),
                  std::string("net -1 [A]\n  subnet @2 [TRC] pin [] -1 -1 plane [] [] 0\n    @3 ") + c.object + "\n")
            << c.line;
}

TEST(EdaReader, FeatureDoesNotChangeWhatIsOpen)
{
    EXPECT_EQ(Described("NET A\nSNT TRC\nPKG P 1 0 0 1 1\nFID C 0 1\nFGR x\nSNT VIA\nCR 1\n"),
              "net -1 [A]\n  subnet @2 [TRC] pin [] -1 -1 plane [] [] 0\n    @4 [C] 0 1 []\n    @5 [FGR] -1 -1 [x]\n"
              "  subnet @6 [VIA] pin [] -1 -1 plane [] [] 0\n"
              "package -1 [P] 1 from 0,0 to 1,1\n  @7 [CR] [1]\n");
}

TEST(EdaReader, OutlinesBeforeTheFirstPinAreThePackages)
{
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\nRC 0 0 1 1\nPIN 1 S 0 0 0 E S\nCR 0 0 1\nPIN 2 S 0 0 0 E S\nSQ 0 0 1\nOB\n"
                        "PKG Q 1 0 0 1 1\nCR 2\n"),
              "package -1 [P] 1 from 0,0 to 1,1\n  @2 [RC] [0] [0] [1] [1]\n"
              "  pin [1] [S] 0,0 hole 0 [E] [S]\n    @4 [CR] [0] [0] [1]\n"
              "  pin [2] [S] 0,0 hole 0 [E] [S]\n    @6 [SQ] [0] [0] [1]\n    @7 [OB]\n"
              "package -1 [Q] 1 from 0,0 to 1,1\n  @9 [CR] [2]\n");
}

TEST(EdaReader, UnknownLinesBecomeOutlinesInsidePackagesAndPinsOnly)
{
    EXPECT_EQ(Described("UNITS=MM\n@0 a\n# NET 0\nNET A\n@1 b\nID=5\n"), "net 0 [A]\n");
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\nUNITS=MM\n@0 a  b\n&1 c;d\n"),
              "package -1 [P] 1 from 0,0 to 1,1\n  @2 [UNITS=MM]\n  @3 [@0] [a] [b]\n  @4 [&1] [c;d]\n");
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\nHDR h\nCR 1\n"), "header [h]\npackage -1 [P] 1 from 0,0 to 1,1\n");
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\nLYR l\nCR 1\n"), "layers [l]\npackage -1 [P] 1 from 0,0 to 1,1\n");
}

TEST(EdaReader, OutlineKeepsEveryFieldHoweverManyThereAre)
{
    for (const int count : {7, 8, 9, 31, 33, 500})
    {
        std::string line = "XY";
        std::string expected = "package -1 [P] 1 from 0,0 to 1,1\n  @2 [XY]";
        for (int i = 0; i < count; ++i)
        {
            const std::string field = std::to_string(10'000'000 * (i % 3) + i);
            line += ' ' + field;
            expected += " [" + field + ']';
        }
        EXPECT_EQ(Described("PKG P 1 0 0 1 1\n" + line + '\n'), expected + '\n') << count;
    }
}

TEST(EdaReader, CommentThatHoldsANumberWithoutBeginningWithItIsAnOutline)
{
    EXPECT_EQ(Described("#note # PKG 5\n"), "");
    EXPECT_EQ(Described("# NET 0\nNET A\n#note # PKG 5\n"), "net 0 [A]\n");
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\n#note # PKG 5\nPIN 1 S 0 0 0 E S\n#Note # net 5\n#note #PKG 5\n# note\n"),
              "package -1 [P] 1 from 0,0 to 1,1\n  @2 [#note] [#] [PKG] [5]\n"
              "  pin [1] [S] 0,0 hole 0 [E] [S]\n    @4 [#Note] [#] [net] [5]\n");
}

TEST(EdaReader, KeywordOnlyHasToBeginTheLine)
{
    EXPECT_EQ(Described("HDRX h\nLYRX l\nNETX A\nSNTX TRC\nFIDX C 1 2\nFGRX x\nPKGX P 1 0 0 1 1\nPRPX a b\n"
                        "PINX 1 S 0 0 0 E S\n"),
              "header [h]\nlayers [l]\nnet -1 [A]\n  property [a]=[b] -1 -1\n"
              "  subnet @4 [TRC] pin [] -1 -1 plane [] [] 0\n    @5 [C] 1 2 []\n    @6 [FGR] -1 -1 [x]\n"
              "package -1 [P] 1 from 0,0 to 1,1\n  pin [1] [S] 0,0 hole 0 [E] [S]\n");
    EXPECT_EQ(Described("# NETX 4\nNETX A\n# PKGX 5\nPKGX P 1 0 0 1 1\n"),
              "net 0 [A]\npackage 0 [P] 1 from 0,0 to 1,1\n")
        << "the letter stands before the number";
    EXPECT_EQ(Described("XHDR h\nXNET A\n"), "");
}

TEST(EdaReader, FirstKeywordOfACommentDecides)
{
    EXPECT_EQ(Described("# NET 1 # PKG 2\nNET A\n"), "net 1 [A]\n");
    EXPECT_EQ(Described("# PKG 2 # NET 1\nPKG P 1 0 0 1 1\n"), "package 2 [P] 1 from 0,0 to 1,1\n");
    EXPECT_EQ(Described("# PKG 2 # NET 1\nNET A\n"), "");
}

TEST(EdaReader, KeywordsAreFoundInAnyCaseAndValuesKeepTheirs)
{
    EXPECT_EQ(Described("hdr Head\nlyr Top bot\n# net 1\nnet Gnd\nsnt Trc\nfid c 1 2\nfgr Abc\n# pkg 2\n"
                        "pkg Pack 1 0 0 1 1\nprp Name Value\npin a1 s 0 0 0 e s\ncr 1 x\n"),
              "header [Head]\nlayers [Top] [bot]\nnet 1 [Gnd]\n  property [Name]=[Value] -1 -1\n"
              "  subnet @5 [Trc] pin [] -1 -1 plane [] [] 0\n    @6 [c] 1 2 []\n    @7 [FGR] -1 -1 [Abc]\n"
              "package 2 [Pack] 1 from 0,0 to 1,1\n  pin [a1] [s] 0,0 hole 0 [e] [s]\n    @12 [cr] [1] [x]\n");
}

TEST(EdaReader, TabSeparatesNoFields)
{
    EXPECT_EQ(Described("NET\tA B\n"), "net -1 [B]\n");
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\nCR\t1 2\t3\n\tCR 4\t\n"),
              "package -1 [P] 1 from 0,0 to 1,1\n  @2 [CR\t1] [2\t3]\n  @3 [CR] [4]\n");
}

TEST(EdaReader, SubnetWithoutANetIsIgnored)
{
    EXPECT_EQ(Described("SNT TOP T 1 2\nNET A\n"), "net -1 [A]\n");
    EXPECT_EQ(Described("NET A\nSNT TRC\n# NET 1\nHDR x\nSNT VIA\n"),
              "net -1 [A]\n  subnet @2 [TRC] pin [] -1 -1 plane [] [] 0\n")
        << "a comment without a net closes the net";
}

TEST(EdaReader, NetObjectWithoutASubnetIsIgnored)
{
    EXPECT_EQ(Described("FID C 0 1\nFGR x\nNET A\nFID C 0 1\nFGR x\n"), "net -1 [A]\n");
}

TEST(EdaReader, PinWithoutAPackageIsIgnoredAndStillCountsAsInAPin)
{
    EXPECT_EQ(Described("PIN 1 S 0 0 0 E S\nCR 1\nPRP a b\n"), "");
    EXPECT_EQ(Described("NET A\nPKG P 1 0 0 1 1 ;\nPRP a b\n"), "net -1 [A]\n  property [a]=[b] -1 -1\n");
    EXPECT_EQ(Described("NET A\nPKG P 1 0 0 1 1 ;\nPIN 1 S 0 0 0 E S\nPRP a b\n"), "net -1 [A]\n")
        << "behind a pin a property no longer goes to the net";
}

TEST(EdaReader, OutlineAndPropertyWithoutAnOwnerAreIgnored)
{
    EXPECT_EQ(Described("PKG P 1 0 0 1 1 ;\nCR 1\nPRP a b\n"), "");
    EXPECT_EQ(Described("PKG P 1 0 0 1 1\nPRP a b\n"), "package -1 [P] 1 from 0,0 to 1,1\n");
}

TEST(EdaReader, LineEndsMayBeCrLfAndTheLastOneMayBeMissing)
{
    std::string crlf;
    for (const char* c = kWholeFile; *c != '\0'; ++c)
        crlf += *c == '\n' ? std::string("\r\n") : std::string(1, *c);
    EXPECT_EQ(Described(crlf), kWholeModel);
    EXPECT_EQ(Described("NET A\nSNT TOP T 1 2"), "net -1 [A]\n  subnet @2 [TOP] pin [T] 1 2 plane [] [] 0\n");
    EXPECT_EQ(Described("NET A\rNET B\n"), "net -1 [A\rNET B]\n") << "a CR alone is data";
}

TEST(EdaReader, NulByteEndsItsLine)
{
    EXPECT_EQ(Described("NET A\0B;\nNET C\n"sv), "net -1 [A]\nnet -1 [C]\n");
    EXPECT_EQ(Described("\0NET A\nNET B\0"sv), "net -1 [B]\n");
    EXPECT_EQ(Described("NET A\n# NET 1\0\n\0NET X\nSNT TRC\n"sv), "net -1 [A]\n");
}

TEST(EdaReader, OtherBytesPassThrough)
{
    EXPECT_EQ(Described("NET \xC4\xA0\x85\xFF\x01\n"), "net -1 [\xC4\xA0\x85\xFF\x01]\n");
    EXPECT_EQ(Described("\xA0NET A\n"), "") << "no white space, so the line begins with no keyword";
    std::string all = "NET ";
    for (int c = 1; c < 256; ++c)
        if (c != '\n' && c != ';')
            all += static_cast<char>(c);
    EXPECT_EQ(Described(all), "net -1 [" + all.substr(4) + "]\n") << "control characters inside stay";
}

TEST(EdaReader, DecimalPointDoesNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(locale);
    EXPECT_EQ(Described(kWholeFile), kWholeModel);
}

TEST(EdaReader, FileCutAtEveryByteIsReadConvertedAndWritten)
{
    const std::string whole = kWholeFile;
    __int64 nets = 0;
    __int64 packages = 0;
    for (std::size_t size = 0; size <= whole.size(); ++size)
    {
        const auto data = ReadEda(std::string_view(whole).substr(0, size));
        EXPECT_GE(data->m_arrNets.GetSize(), nets) << size;
        EXPECT_GE(data->m_arrPkgs.GetSize(), packages) << size;
        nets = data->m_arrNets.GetSize();
        packages = data->m_arrPkgs.GetSize();
        data->UnitConvert(2.0);
        EXPECT_EQ(WrittenFile(*data).substr(0, 12), "#\nUNITS=INCH") << size;
        if (size == 0 || whole[size - 1] != '\n')
            continue;
        // A whole line more never changes what the lines before it gave: the model only grows.
        const std::string model = Described(std::string_view(whole).substr(0, size));
        EXPECT_EQ(Described(std::string_view(whole).substr(0, size - 1)), model) << size;
    }
    EXPECT_EQ(nets, 2);
    EXPECT_EQ(packages, 2);
}

TEST(EdaReader, EveryKeywordAloneAndCutIsHarmlessBehindEveryOther)
{
    const char* const keywords[] = {"HDR h",  "LYR l",   "# NET 1", "NET A",   "# PKG 1",   "PKG P 1 0 0 1 1", "PKG P;",
                                    "NET A;", "PIN 1 S", "FGR x",   "PRP a b", "SNT TOP T", "FID C 1",         "CT"};
    std::size_t read = 0;
    for (const char* const a : keywords)
        for (const char* const b : keywords)
            for (const char* const c : keywords)
            {
                const auto data = ReadEda(std::string(a) + "\n" + b + "\n" + c + "\n");
                read += static_cast<std::size_t>(data->m_arrNets.GetSize() <= 3 && data->m_arrPkgs.GetSize() <= 3);
            }
    EXPECT_EQ(read, std::size(keywords) * std::size(keywords) * std::size(keywords));
}

TEST(EdaReader, ExhaustedMemoryRaisesTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    dir.Write("eda/data", kWholeFile);
    const CString directory = dir.Path("eda").c_str();
    const auto read = [&] { Guarded([&] { CJOBXeda().ParseODBOfMFC(directory); }); }; // making one takes memory too
    EXPECT_GT(CountFailedAllocations(read), kRecordsHaveOwnBlocks ? 20 : 3) << "every record is allocated";
}

TEST(EdaDirectory, MissingDirectoryOrFileAnswersZero)
{
    const TempDir dir;
    CJOBXeda eda;
    EXPECT_EQ(eda.ParseODBOfMFC(dir.Path("eda").c_str()), 0);
    EXPECT_EQ(eda.ParseODBOfMFC(dir.MakeDir("eda").c_str()), 0);
    EXPECT_EQ(Describe(*eda.m_pData), "");
}

TEST(EdaDirectory, ReadsTheDataFileInAnyLetterCase)
{
    const TempDir dir;
    dir.Write("upper/DATA", "NET A\n");
    dir.Write("both/DATA", "NET A\n");
    dir.Write("both/data", "NET B\n");
    CJOBXeda upper;
    EXPECT_EQ(upper.ParseODBOfMFC(dir.Path("upper").c_str()), 1);
    EXPECT_EQ(Describe(*upper.m_pData), "net -1 [A]\n");
    CJOBXeda both;
    EXPECT_EQ(both.ParseODBOfMFC(dir.Path("both").c_str()), 1);
    EXPECT_EQ(Describe(*both.m_pData), "net -1 [B]\n") << "the exact spelling wins";
}
