// What complete reading says about damaged files of each kind, and that it says nothing about sound ones.
#include "foundation/corekit/LzwEncoder.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXsteps.h"
#include "reading/SmallJob.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <utility>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace damaged_files_messages_test
{
constexpr char kMatrix[] = "matrix/matrix";
constexpr char kInfo[] = "misc/info";
constexpr char kProfile[] = "steps/pcb/profile";
constexpr char kHeader[] = "steps/pcb/stephdr";
constexpr char kFeatures[] = "steps/pcb/layers/top/features";
constexpr char kTools[] = "steps/pcb/layers/top/tools";
constexpr char kComponents[] = "steps/pcb/layers/comp_+_top/components";
constexpr char kEda[] = "steps/pcb/eda/data";
constexpr char kNetlist[] = "steps/pcb/netlists/cadnet/netlist";
constexpr char kAttributes[] = "steps/pcb/attrlist";
constexpr char kFont[] = "fonts/standard";
constexpr char kSymbol[] = "symbols/mark/features";

using Files = std::vector<std::pair<const char*, std::string>>;

// A sound file of each kind.
const Files& SoundFiles()
{
    static const Files files = {
        {kMatrix, "STEP {\nCOL=1\nNAME=PCB\n}\nLAYER {\nROW=1\nTYPE=COMPONENT\nNAME=COMP_+_TOP\n}\n"
                  "LAYER {\nROW=2\nTYPE=SIGNAL\nNAME=TOP\n}\n"},
        {kInfo, "JOB_NAME=job\nUNITS=MM\n"},
        {kProfile, "S P 0\nOB 0 0 I\nOS 1 0\nOS 1 1\nOS 0 0\nOE\nSE\n"},
        {kHeader, "X_DATUM=0\nY_DATUM=1\n"},
        {kFeatures, "$0 r10\n@0 .string\n&0 a\nP 1 2 0 P 0 0;0=0;ID=3\nL 1 2 3 4 0 P 0\n"},
        {kTools, "THICKNESS=0\nTOOLS {\nNUM=1\nTYPE=VIA\n}\n"},
        {kComponents, "CMP 0 1 2 0 N R1 R\nPRP A 'b'\nTOP 0 1 2 0 N 0 0 1\n"},
        {kEda, "HDR x\nLYR top\nNET A\nSNT TOP T 0 0\nFID C 0 0\nPKG R 1 0 0 1 1\nRC 0 0 1 1\nPIN 1 S 0 0 0 E S\n"
               "CR 0 0 1\n"},
        {kNetlist, "H optimize n staggered n\n$0 A\n0 0.5 1 2 T e e\n"},
        {kAttributes, ".a = 1\n.b = 2\n"},
        {kFont, "XSIZE 1\nYSIZE 1\nOFFSET 0\nCHAR A\nLINE 0 0 1 1 P R 0.1\nECHAR\n"},
        {kSymbol, "$0 r10\nP 0 0 0 P 0 0\n"},
    };
    return files;
}

void WriteAll(const SmallJob& job)
{
    for (const auto& [name, text] : SoundFiles())
        job.Write(name, text);
}

// What a reading says about a job of these files in which one has another text.
std::vector<std::string> MessagesWith(const char* name, const std::string& text)
{
    const SmallJob job;
    WriteAll(job);
    job.Write(name, text);
    return job.Messages();
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

const std::string& SoundText(const char* wanted)
{
    for (const auto& [name, text] : SoundFiles())
        if (std::string_view(name) == wanted)
            return text;
    throw std::invalid_argument(wanted);
}

// The number of records of the job, so that a test sees whether a file was read.
std::string CountsOf(const CJOBX& job)
{
    std::string counts;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        for (const CJOBXlayer& layer : step.m_arrLayers.Records())
            counts += std::string(layer.m_sName.View()) + ' ' + std::to_string(layer.GetFeatures()->GetSize()) + ' ';
    return counts + std::to_string(job.m_pMatrix->m_arrLayers.GetSize());
}

TEST(DamagedFiles, SoundFilesHaveNoMessagesInAnyFormOfTheirLines)
{
    using Form = std::pair<const char*, std::function<std::string(const std::string&)>>;
    const std::vector<Form> forms = {
        {"as they are", [](const std::string& text) { return text; }},
        {"lines with CRLF", [](const std::string& text) { return Replaced(text, "\n", "\r\n"); }},
        {"lines with CR", [](const std::string& text) { return Replaced(text, "\n", "\r"); }},
        {"a byte order mark", [](const std::string& text) { return "\xEF\xBB\xBF" + text; }},
        {"no end of the last line", [](const std::string& text) { return text.substr(0, text.size() - 1); }},
        {"blanks around lines", [](const std::string& text) { return "  " + Replaced(text, "\n", " \t \n  "); }},
        {"empty lines", [](const std::string& text) { return "\n\n" + Replaced(text, "\n", "\n\n\n"); }},
        {"comments", [](const std::string& text) { return "# a\n" + text + "#b\n"; }},
        {"a zero byte behind a line",
         [](const std::string& text) { return text + "# a comment of more than twenty bytes" + '\0' + '\n'; }},
        {"an end-of-file character", [](const std::string& text) { return text + "# \x1A"; }},
    };
    for (const auto& [name, text] : SoundFiles())
        for (const auto& [form, change] : forms)
        {
            SCOPED_TRACE(std::string(name) + ": " + form);
            const SmallJob job;
            WriteAll(job);
            job.Write(name, change(text));
            RecordedMessages sink;
            EXPECT_EQ(CountsOf(*job.Read(sink.Reading())), "top 2 2");
            EXPECT_THAT(sink.lines, IsEmpty());
        }
}

TEST(DamagedFiles, ANulByteThatTakesTextAwayIsAnErrorInEachKindOfFile)
{
    for (const auto& [name, text] : SoundFiles())
    {
        SCOPED_TRACE(name);
        std::string damaged = text + "# a comment of more than twenty bytes\n";
        damaged.insert(1, 1, '\0');
        EXPECT_THAT(MessagesWith(name, damaged), Contains(HasSubstr(std::string(name) + ":1: error FIL009 ")));
    }
}

TEST(DamagedFiles, AFileOfManyNulBytesIsNotText)
{
    for (const auto& [name, text] : SoundFiles())
        EXPECT_THAT(MessagesWith(name, text + std::string(200, '\0')),
                    Contains(HasSubstr(std::string(name) + ": error FIL006 ")))
            << name;
}

TEST(DamagedFiles, AFolderInThePlaceOfAFileIsAnError)
{
    for (const auto& [name, text] : SoundFiles())
    {
        SCOPED_TRACE(name);
        const SmallJob job;
        WriteAll(job);
        std::filesystem::remove(job.Path(name));
        std::filesystem::create_directory(job.Path(name));
        EXPECT_THAT(job.Messages(), Contains(HasSubstr(std::string(name) + ": error FIL002 ")));
    }
}

TEST(DamagedFiles, AFileThatEndsInTheMiddleOfABlockOrRecordHasAMessage)
{
    const std::vector<std::pair<const char*, const char*>> ends = {
        {kMatrix, "MAT009"},     {kProfile, "FEA010"}, {kFeatures, "FEA001"},  {kTools, "TOO005"},
        {kComponents, "CMP001"}, {kEda, "EDA001"},     {kNetlist, "NET001"},   {kFont, "FNT005"},
        {kHeader, "HDR002"},     {kInfo, "INF002"},    {kAttributes, "ATL001"}};
    for (const auto& [name, code] : ends)
    {
        SCOPED_TRACE(name);
        std::string text = SoundText(name);
        text.resize(text.size() - (std::string_view(name) == kAttributes ? 5 : 7));
        EXPECT_THAT(MessagesWith(name, text), Contains(HasSubstr(code)));
    }
}

struct Damage
{
    const char* file;
    const char* from;
    const char* to;
    const char* message; // part of the only one
};

TEST(DamagedFiles, EachFaultHasOneMessageThatNamesItsCause)
{
    const std::vector<Damage> damages = {
        {kFeatures, "L 1 2", "L nan 2", "features:5: error FEA003 The field \"nan\" is not a number."},
        {kFeatures, "L 1 2", "L inf 2", "features:5: error FEA003 The field \"inf\" is not a number."},
        {kFeatures, "L 1 2", "L 1 1e999", "features:5: error FEA003 The field \"1e999\" is not a number."},
        {kFeatures, "0=0;ID=3", "0=7;ID=3", "features:4: warning ATR002 "},
        {kEda, "SNT TOP T", "SNT TOP X", "data:4: error EDA012 The side \"X\" is neither T nor B."},
        {kEda, "SNT TOP T 0 0", "SNT WIRE 1 2", "data:4: note EDA005 The subnet type \"WIRE\" is not known."},
        {kEda, "FID C", "FID X", "data:5: note EDA005 The feature type \"X\" is not known."},
        {kEda, "FID C", "FID CL", "data:5: note EDA005 The feature type \"CL\" is not known."},
        {kEda, "RC 0 0 1 1\n", "PRP\nRC 0 0 1 1\n", "data:7: error EDA001 The record \"PRP\" has too few fields."},
        {kComponents, "PRP A 'b'", "PRP", "components:2: error CMP001 The record \"PRP\" has too few fields."},
        {kHeader, "X_DATUM", "STEP-REPEAT {\nNAME=PCB\nNX=1\nNY=-1\n}\nX_DATUM",
         "stephdr:1: warning HDR008 The entry has 1 columns and -1 rows."},
    };
    for (const Damage& damage : damages)
    {
        SCOPED_TRACE(std::string(damage.from) + " -> " + damage.to);
        const std::vector<std::string> messages =
            MessagesWith(damage.file, Replaced(SoundText(damage.file), damage.from, damage.to));
        EXPECT_THAT(messages, ElementsAre(HasSubstr(damage.message)));
    }
}

TEST(DamagedFiles, AStepWithoutANameIsReportedOnce)
{
    EXPECT_THAT(MessagesWith(kMatrix, SoundText(kMatrix) + "STEP {\nCOL=2\n}\n"),
                ElementsAre("matrix/matrix:15: error MAT012 The step has no name."));
}

TEST(DamagedFiles, ACompressedFileBesideAPlainOneIsReportedOnlyIfItHasOtherContents)
{
    const std::string packed = std::string(kFeatures) + ".Z";
    const auto messagesBeside = [&](const std::string& bytes) { return MessagesWith(packed.c_str(), bytes); };
    const std::string& text = SoundText(kFeatures);
    EXPECT_THAT(messagesBeside(EncodeLzw(text)), IsEmpty());
    const auto isOneWarning = ElementsAre(
        std::string(kFeatures) + ": warning FIL007 The file is also there as \"features.Z\", which is not read "
                                 "and has other contents.");
    EXPECT_THAT(messagesBeside(EncodeLzw(text + "#\n")), isOneWarning);
    EXPECT_THAT(messagesBeside(EncodeLzw(text.substr(1))), isOneWarning);
    EXPECT_THAT(messagesBeside(EncodeLzw(text).substr(0, 20)), isOneWarning);
    EXPECT_THAT(messagesBeside("\x1F\x8B packed"), isOneWarning);
    EXPECT_THAT(messagesBeside(text), isOneWarning);
}

TEST(DamagedFiles, OfTwoFilesThatDifferInLetterCaseTheOtherIsReported)
{
    EXPECT_THAT(MessagesWith("steps/pcb/layers/top/FEATURES", "#\n"),
                ElementsAre("steps/pcb/layers/top/FEATURES: warning FIL008 The file "
                            "\"steps/pcb/layers/top/features\" is read instead."));
    EXPECT_THAT(MessagesWith("steps/pcb/layers/top/features.txt", "#\n"), IsEmpty());
}

TEST(DamagedFiles, DefinitionsOfAttributesThatCannotBeUsedAreReported)
{
    EXPECT_THAT(MessagesWith("misc/userattr", "OPTION {\nNAME=.a\nOPTIONS=x;y\nINTEGER {\n}\nCOLOR {\nNAME=.b\n}\n"),
                ElementsAre("misc/userattr:1: warning DEF001 The definition that begins here is not closed.",
                            "misc/userattr:4: warning DEF002 The definition that begins here has no name.",
                            "misc/userattr:6: note DEF003 The type \"COLOR\" is not known."));
    EXPECT_THAT(MessagesWith("misc/sysattr.fab", "OPTION {\nNAME=.q\nOPTIONS=x;y\n}\n\nFLOAT {\nNAME=.c\n}\n"),
                IsEmpty());
}
} // namespace damaged_files_messages_test
