// The lines of files of keys, of attribute lists and of the font.
#include "saving/KeyedLines.h"

#include "foundation/CommonFields.h"
#include "job/CJOBXmatrixFields.h"
#include "job/CJOBXmiscFields.h"
#include "job/InfoLines.h"
#include "job/InfoReader.h"
#include "job/MatrixLines.h"
#include "job/MatrixReader.h"
#include "layer/CJOBXfontsFields.h"
#include "layer/CJOBXtoolFields.h"
#include "layer/FontLines.h"
#include "layer/FontReader.h"
#include "layer/ToolsLines.h"
#include "layer/ToolsReader.h"
#include "reading/AttributeListReader.h"
#include "saving/AttributeListLines.h"
#include "saving/ListedFile.h"
#include "step/CJOBXstephdrFields.h"
#include "step/StephdrLines.h"
#include "step/StephdrReader.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
// One file of that kind.
template <class Object>
struct KeyedFile
{
    listed_file::CFileReading reading;

    std::unique_ptr<Object> Read(const std::string& text)
    {
        return reading.FromText<Object>(text, [](const CReadingContext& context, CSourceFile& file, Object& object)
                                        { ReadCompletely(context, file, object); });
    }
    static std::string Text(const Object& object)
    {
        CRecordLines lines;
        ListLines(object, lines);
        return lines.WholeText();
    }
    // What is listed, and whether an equal object is read from it.
    std::string Listed(const std::string& text)
    {
        const auto object = Read(text);
        const std::string listed = Text(*object);
        const auto again = Read(listed);
        EXPECT_EQ(listed_file::TextOfFields(*again), listed_file::TextOfFields(*object)) << listed;
        return listed;
    }
    std::vector<std::string> Unlisted(const std::string& text)
    {
        const auto object = Read(text);
        return listed_file::UnlistedFields(*object, [](const Object& one) { return Text(one); });
    }
    // Each line that knows where it came from.
    void ExpectSourceLines(const std::string& text)
    {
        const auto object = Read(text);
        CRecordLines lines;
        ListLines(*object, lines);
        listed_file::ExpectOwnLines(lines, text);
    }
};

constexpr char kSavedMatrix[] = "MAX=3\nEXTRA {\nA=1\nB=\n}\nNEW=4\nSTEP {\nCOL=1\nID=5\nNAME=PCB\nDCODE=7\n}\n"
                                "STEP {\nCOL=2\nNAME=PANEL\n}\nLAYER {\nROW=1\nCONTEXT=BOARD\nTYPE=DRILL\nID=6\n"
                                "NAME=DRILL\nPOLARITY=POSITIVE\nSTART_NAME=TOP\nEND_NAME=BOT\nOLD_NAME=x\n"
                                "ADD_TYPE=y\nCOLOR=12\nCU_TOP=a b\n}\n";
constexpr char kSavedInfo[] =
    "JOB_NAME=blinker\nUNITS=MM\nODB_VERSION_MAJOR=8\nODB_VERSION_MINOR=1\nODB_SOURCE=a tool\n"
    "CREATION_DATE=20260105.090000\nSAVE_DATE=20260106.090000\nSAVE_APP=app 1\n"
    "SAVE_USER=u\nMAX_UID=99\n";
constexpr char kSavedHeader[] =
    "UNITS=MM\nX_DATUM=0.5\nY_DATUM=-1\nID=3\nX_ORIGIN=1.25\nY_ORIGIN=2\n"
    "STEP-REPEAT {\nNAME=PCB\nX=0.4\nY=0.5\nDX=1.75\nDY=1.15\nNX=2\nNY=3\nANGLE=90.5\nMIRROR=YES\nFLIP=NO\nID=4\n"
    "SPIN=1\n}\n"
    "STEP-REPEAT {\nNAME=PCB\nX=3.9\nY=2.275\nDX=0\nDY=0\nNX=1\nNY=1\nANGLE=0\nMIRROR=NO\nFLIP=\n}\n"
    "TOP_ACTIVE=1\nBOTTOM_ACTIVE=2\nRIGHT_ACTIVE=3\nLEFT_ACTIVE=4\nONLINE_DRC_NAME=n\nONLINE_DRC_MODE=DISABLED\n"
    "ONLINE_DRC_STAT=GREEN\nONLINE_DRC_TIME=0\nONLINE_DRC_BEEP_VOL=2\nONLINE_DRC_BEEP_TONE=500\n"
    "ONLINE_NET_MODE=DISABLED\nONLINE_NET_STAT=RED\nONLINE_NET_TIME=0\nONLINE_NET_BEEP_VOL=2\n"
    "ONLINE_NET_BEEP_TONE=1000\nAFFECTING_BOM=b\nAFFECTING_BOM_CHANGED=0\nOWN=1\nOTHER {\nA=1\n}\n";
constexpr char kSavedTools[] = "UNITS=MM\nTHICKNESS=1.6\nUSER_PARAMS=p\nNEW=1\nSLOTS {\nA=1\n}\n"
                               "TOOLS {\nNUM=1\nID=2\nTYPE=VIA\nTYPE2=STANDARD\nMIN_TOL=3\nMAX_TOL=3.5\nBIT=b\n"
                               "FINISH_SIZE=12\nDRILL_SIZE=13.25\nSHAPE=round\n}\n";
constexpr char kSavedFont[] = "UNITS=MM\nXSIZE 0.302\nYSIZE 0.4\nOFFSET -0.1\nCHAR !\nLINE 0 0.2 0 0 P R 0.012\n"
                              "LINE 0 -0.1 0.5 -0.1 N S 0.012\nECHAR\nCHAR \"\nECHAR\n";

TEST(MatrixLines, OfAFileThatIsWrittenAsUsualAreItsOwn)
{
    KeyedFile<CJOBXmatrix> file;
    EXPECT_EQ(file.Listed(kSavedMatrix), kSavedMatrix);
    file.ExpectSourceLines(kSavedMatrix);
}

TEST(MatrixLines, ChangeWithEveryField)
{
    EXPECT_THAT(KeyedFile<CJOBXmatrix>().Unlisted(kSavedMatrix), IsEmpty());
}

TEST(MatrixLines, HaveWhatTheFileLeftOut)
{
    EXPECT_EQ(KeyedFile<CJOBXmatrix>().Listed("layer{\n name = top\n"),
              "LAYER {\nROW=0\nCONTEXT=\nTYPE=\nNAME=top\nPOLARITY=\nSTART_NAME=\nEND_NAME=\nOLD_NAME=\nADD_TYPE=\n"
              "COLOR=0\n}\n");
    EXPECT_EQ(KeyedFile<CJOBXmatrix>().Listed(""), "");
}

TEST(MatrixLines, KeysOfUnknownBlocksStandInThem)
{
    EXPECT_EQ(KeyedFile<CJOBXmatrix>().Listed("A {\nX=1\n}\nB {\nX=1\nY=2\n}\nZ=1\n{\nQ=2\n}\n"),
              "A {\nX=1\n}\nB {\nX=1\nY=2\n}\nZ=1\n{\nQ=2\n}\n");
}

// How deep each line is, its key, and its line in the source.
TEST(MatrixLines, KnowTheirPlaceAndTheirKey)
{
    KeyedFile<CJOBXmatrix> file;
    const auto matrix = file.Read("\nSTEP {\nCOL=1\nNAME=A\n}\n\nSTEP {\nNAME=B\n}\n");
    CRecordLines lines;
    ListLines(*matrix, lines);
    std::vector<std::string> places;
    for (const CRecordLines::Line& line : lines.Lines())
        places.push_back(std::to_string(line.depth) + ' ' + std::string(lines.KeyOf(line)) + ' ' +
                         std::to_string(line.sourceLine) + (line.isKeyValue ? " =" : ""));
    EXPECT_THAT(places, ElementsAre("0 STEP 2", "1 COL -1 =", "1 NAME -1 =", "1 } -1", "0 STEP 7",
                                    "1 COL -1 =", "1 NAME -1 =", "1 } -1"));
}

TEST(InfoLines, OfAFileThatIsWrittenAsUsualAreItsOwn)
{
    EXPECT_EQ(KeyedFile<CJOBXmisc>().Listed(kSavedInfo), kSavedInfo);
}

TEST(InfoLines, ChangeWithEveryField)
{
    EXPECT_THAT(KeyedFile<CJOBXmisc>().Unlisted(kSavedInfo), IsEmpty());
}

TEST(StephdrLines, OfAFileThatIsWrittenAsUsualAreItsOwn)
{
    KeyedFile<CJOBXstephdr> file;
    EXPECT_EQ(file.Listed(kSavedHeader), kSavedHeader);
    file.ExpectSourceLines(kSavedHeader);
}

TEST(StephdrLines, ChangeWithEveryField)
{
    EXPECT_THAT(KeyedFile<CJOBXstephdr>().Unlisted(kSavedHeader), IsEmpty());
}

TEST(ToolsLines, OfAFileThatIsWrittenAsUsualAreItsOwn)
{
    KeyedFile<CJOBXtool> file;
    EXPECT_EQ(file.Listed(kSavedTools), kSavedTools);
    file.ExpectSourceLines(kSavedTools);
}

TEST(ToolsLines, ChangeWithEveryField)
{
    EXPECT_THAT(KeyedFile<CJOBXtool>().Unlisted(kSavedTools), ElementsAre("tools.units")) << "the unit decides";
}

TEST(FontLines, OfAFileThatIsWrittenAsUsualAreItsOwn)
{
    EXPECT_EQ(KeyedFile<CJOBXfonts>().Listed(kSavedFont), kSavedFont);
}

TEST(FontLines, ChangeWithEveryField)
{
    EXPECT_THAT(KeyedFile<CJOBXfonts>().Unlisted(kSavedFont), IsEmpty());
}

TEST(FontLines, AreSpelledAsUsual)
{
    EXPECT_EQ(KeyedFile<CJOBXfonts>().Listed("XSIZE  0.302000\n\nCHAR #\nLINE 0.000000 0.2 -0 1e1 p r 0.0120\nECHAR\n"),
              "UNITS=INCH\nXSIZE 0.302\nYSIZE 0\nOFFSET 0\nCHAR #\nLINE 0 0.2 0 10 p r 0.012\nECHAR\n");
}

class Listing : public CJOBXattributed
{
};

std::unique_ptr<Listing> ReadList(const std::string& text)
{
    listed_file::CFileReading reading;
    reading.types.Add(".weight", {JOBXattributeKind::Real, {}});
    const TempDir dir;
    dir.Write("attrlist", text);
    RecordedMessages sink;
    const CJOBXreading settings = sink.Reading();
    CReadingJob job{settings, CString(dir.Path("").c_str())};
    job.types = reading.types;
    CMessageList messages(settings);
    const CReadingContext context{job, messages};
    auto owner = std::make_unique<Listing>();
    ReadAttributeList(context, CSourceFolder(CString(dir.Path("").c_str())), *owner);
    return owner;
}

TEST(AttributeListLines, GiveAnEqualListWhenTheyAreRead)
{
    const auto owner = ReadList(".comment = a = b \n.weight=0.50\n\nUNITS=MM\n.empty =\n");
    CJOBXattributeList& list = *owner->pMakeAttributeList();
    const auto text = [](const CJOBXattributeList& one)
    {
        CRecordLines lines;
        ListLines(one, lines);
        return lines.WholeText();
    };
    EXPECT_EQ(text(list), "UNITS=MM\n.comment=a = b\n.weight=0.50\n.empty=\n");
    const auto again = ReadList(text(list));
    EXPECT_EQ(listed_file::TextOfFields(*again->pGetAttributeList()), listed_file::TextOfFields(list));
    // The file has no numbers, and the definition decides the kind.
    EXPECT_THAT(listed_file::UnlistedFields(list, text), ElementsAre("property.number", "property.textNumber"));
}

TEST(FurtherKeys, ChangeTheirLines)
{
    KeyedFile<CJOBXmatrix> file;
    const auto matrix = file.Read(kSavedMatrix);
    CJOBXPropertyArray& ofStep = *matrix->m_arrSteps.GetAt(0)->pMakeFurtherKeys();
    ofStep.GetAt(0)->m_sValue = "8";
    matrix->pMakeFurtherKeys()->GetAt(1)->m_sName = "EXTRA.C";
    const std::string text = file.Text(*matrix);
    EXPECT_NE(text.find("\nDCODE=8\n"), std::string::npos) << text;
    EXPECT_NE(text.find("EXTRA {\nC=1\nB=\n}\n"), std::string::npos) << text;
}
} // namespace
