// docs/messages.md and what brings each message about.
#include "foundation/corekit/LzwEncoder.h"
#include "reading/SmallJob.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>

namespace fs = std::filesystem;

namespace
{
constexpr char kListBegins[] = "\n## The messages\n";

const std::string& Document()
{
    static const std::string path = std::string(JOBX_SOURCE_DIR) + "/docs/messages.md";
    return path;
}

// The list as the document has it.
std::string List()
{
    std::string text = kListBegins;
    for (int i = 0; const CJOBXmessageKind* const kind = pGetJOBXmessageKind(i); ++i)
        text += std::string("\n### ") + kind->code + " (" + JOBXseverityName(kind->severity) + ")\n\n" + kind->meaning +
                "\n\n- For example: " + kind->example + "\n- What to do: " + kind->advice + '\n';
    return text;
}

// With the environment variable JOBX_WRITE_GOLDEN set, the list in the document is replaced, and the test fails to say
// so.
TEST(MessageList, OfTheDocumentIsTheOneOfTheLibrary)
{
    const std::string text = FileBytes(Document());
    const std::size_t begin = text.find(kListBegins);
    ASSERT_NE(begin, std::string::npos);
    EXPECT_EQ(text.substr(begin), List());
    if (std::getenv("JOBX_WRITE_GOLDEN") != nullptr)
        std::ofstream(Document(), std::ios::binary) << text.substr(0, begin) << List();
}

using Change = std::function<void(const SmallJob&)>;

Change Write(const char* name, std::string text)
{
    return [name, text = std::move(text)](const SmallJob& job) { job.Write(name, text); };
}

Change Remove(const char* name)
{
    return [name](const SmallJob& job) { fs::remove_all(job.Path(name)); };
}

Change InsteadOfFeatures(const char* name, std::string text)
{
    return [name, text = std::move(text)](const SmallJob& job)
    {
        Remove("steps/pcb/layers/top/features")(job);
        job.Write(name, text);
    };
}

// What to do to a sound job so that the message comes.
// These components, beside EDA data with one package and one net.
Change WithEda(const char* components)
{
    return [components](const SmallJob& job)
    {
        job.Write("steps/pcb/eda/data", "NET A\nSNT VIA\nPKG P 0 0 0 0 0\n");
        job.Write("steps/pcb/layers/comp_+_top/components", components);
    };
}

const std::map<std::string, Change>& Triggers()
{
    static const char kFeatures[] = "steps/pcb/layers/top/features";
    static const char kComponents[] = "steps/pcb/layers/comp_+_top/components";
    static const char kMatrix[] = "matrix/matrix";
    static const char kHeader[] = "steps/pcb/stephdr";
    static const char kTools[] = "steps/pcb/layers/top/tools";
    static const char kFont[] = "fonts/standard";
    static const char kEda[] = "steps/pcb/eda/data";
    static const char kNetlist[] = "steps/pcb/netlists/cadnet/netlist";
    static const char kCompressed[] = "steps/pcb/layers/top/features.Z";
    static const char kAttributes[] = "UNITS=MM\nOPTION {\nNAME=.mount\nOPTIONS=a;b\n}\nINTEGER {\nNAME=.count\n}\n"
                                      "TEXT {\nNAME=.string\n}\n";
    const auto tail = [](const char* text)
    {
        return [text](const SmallJob& job)
        {
            job.Write("misc/userattr", kAttributes);
            job.Write(kFeatures, std::string("$0 r1\n@0 .mount\n@1 .count\n@2 .string\nP 1 2 0 P 0 0") + text + '\n');
        };
    };
    static const std::map<std::string, Change> triggers = {
        {"ATL001", Write("misc/attrlist", ".comment\n")},
        {"ATL002", Write("misc/attrlist", ".a = 1\n.a = 2\n")},
        {"ATL003", Write("misc/attrlist", ".board_thickness = thin\n")},
        {"ATL004", Write("misc/attrlist", ".drill = wood\n")},
        {"ATR001", tail(";9")},
        {"ATR002", tail(";2=9")},
        {"ATR003", tail(";x=1")},
        {"ATR004", tail(";0=2")},
        {"ATR005", tail(";1=abc")},
        {"ATR006", tail(";;ID=x")},
        {"ATR007", tail(";1=1;COLOR=red")},
        {"FEA001", Write(kFeatures, "P 1 2 0\n")},
        {"FEA002", Write(kFeatures, "$0 r1\nL 1 2 3 4 0 P 0 9\n")},
        {"FEA003", Write(kFeatures, "$0 r1\nL 1 2 3 x 0 P 0\n")},
        {"FEA004", Write(kFeatures, "P 1 2 7 P 0 0\n")},
        {"FEA005", Write(kFeatures, "$0 r1\nL 1 2 3 4 0 Q 0\n")},
        {"FEA006", Write(kFeatures, "$x r10\n")},
        {"FEA007", Write(kFeatures, "$0 r10\n$0 r20\n")},
        {"FEA008", Write(kFeatures, "$0 r10 X\n")},
        {"FEA009", Write(kFeatures, "S P 0\n")},
        {"FEA010", Write(kFeatures, "S P 0\nOB 0 0 I\nSE\n")},
        {"FEA011", Write(kFeatures, "OS 1 2\n")},
        {"FEA012", Write(kFeatures, "T 1 2 standard P 0 0.1 0.1 1 'abc\n")},
        {"FEA013", Write(kFeatures, "F 5\n")},
        {"FEA014", Write(kFeatures, "X 1 2 3\n")},
        {"CMP001", Write(kComponents, "CMP 0 1 2\n")},
        {"CMP002", Write(kComponents, "CMP 0 1 2 0 N A p\nPRP A 'b' 1\n")},
        {"CMP003", Write(kComponents, "CMP 0 left 2 0 N A p\n")},
        {"CMP004", Write(kComponents, "TOP 0 1 2 0 N 0 0 1\n")},
        {"CMP005", Write(kComponents, "DSC x\n")},
        {"CMP006", Write(kComponents, "CMP 0 1 2 0 X A p\n")},
        {"CMP007", Write(kComponents, "# CMP 3\n")},
        {"CMP008", Write(kComponents, "CMP 0 1 2 0 N A p\nCMP 0 1 2 0 N a p\n")},
        {"CMP009", WithEda("CMP 1 1 2 0 N A p\n")},
        {"CMP010", WithEda("CMP 0 1 2 0 N A p\nTOP 0 1 2 0 N 0 0 1\n")},
        {"CMP011", WithEda("CMP 0 1 2 0 N A p\nTOP 0 1 2 0 N 1 0 1\n")},
        {"DEF001", Write("misc/userattr", "OPTION {\nNAME=.a\n")},
        {"DEF002", Write("misc/userattr", "INTEGER {\n}\n")},
        {"DEF003", Write("misc/sysattr", "COLOR {\nNAME=.a\n}\n")},
        {"EDA001", Write(kEda, "PKG A 1 2\n")},
        {"EDA002", Write(kEda, "FGR TEXT x\n")},
        {"EDA003", Write(kEda, "PKG A one 2 3 4 5\n")},
        {"EDA004", Write(kEda, "SNT VIA\n")},
        {"EDA005", Write(kEda, "XYZ\n")},
        {"EDA006", Write(kEda, "LYR top\nFGR TEXT\nFID C 1 0\n")},
        {"EDA007", Write(kEda, "#NET 5\n")},
        {"EDA008", Write(kEda, "PKG A 1 2 3 4 5\nCT\n")},
        {"EDA009", Write(kEda, "PKG A 1 2 3 4 5\nCE\n")},
        {"EDA010", Write(kEda, "NET a\nNET A\n")},
        {"EDA011", Write(kEda, "LYR top\nFGR TEXT\nFID C 0 1\n")},
        {"EDA012", Write(kEda, "NET a\nSNT TOP T 0 0\n")},
        {"EDA013", Write(kEda, "LYR gone\n")},
        {"FIL001", Remove(kFeatures)},
        {"FIL002",
         [](const SmallJob& job)
         {
             Remove(kFeatures)(job);
             fs::create_directory(job.Path(kFeatures));
         }},
        {"FIL003", InsteadOfFeatures(kCompressed, "\x1F\x9D\x90\x01")},
        {"FIL004", InsteadOfFeatures(kCompressed, "\x1F\x8B packed")},
        {"FIL005", InsteadOfFeatures(kCompressed, EncodeLzw(std::string(100'000, ' ')))},
        {"FIL006", Write(kFeatures, std::string(100, '\x02'))},
        {"FIL007", Write(kCompressed, EncodeLzw("#\n"))},
        {"FIL008", Write("steps/pcb/layers/TOP/features", "")},
        {"FIL009", Write(kFeatures, std::string("# a comment of more than twenty bytes, a") + '\0' + "b\n")},
        {"FNT001", Write(kFont, "XSIZE\n")},
        {"FNT002", Write(kFont, "XSIZE 1 2\n")},
        {"FNT003", Write(kFont, "XSIZE wide\n")},
        {"FNT004", Write(kFont, "ECHAR\n")},
        {"FNT005", Write(kFont, "CHAR A\n")},
        {"FNT006", Write(kFont, "ARC 1\n")},
        {"FNT007", Write(kFont, "CHAR A\nECHAR\nCHAR A\nECHAR\n")},
        {"FNT008", Write(kFont, "CHAR A\nLINE 0 0 1 1 X R 1\nECHAR\n")},
        {"HDR001", Write(kHeader, "X_DATUM=left\n")},
        {"HDR002", Write(kHeader, "X_DATUM 0\n")},
        {"HDR003", Write(kHeader, "THICKNESS=3\n")},
        {"HDR004", Write(kHeader, "X_DATUM=0\nX_DATUM=1\n")},
        {"HDR005", Write(kHeader, "STEP-REPEAT {\n")},
        {"HDR006", Write(kHeader, "}\n")},
        {"HDR007", Write(kHeader, "STEP-REPEAT {\nNAME=BOARD\n}\n")},
        {"HDR008", Write(kHeader, "STEP-REPEAT {\nNAME=PCB\nNX=0\nNY=1\n}\n")},
        {"HDR009", Write(kHeader, "STEP-REPEAT {\nNAME=PCB\nNX=1\nNY=1\nMIRROR=X\n}\n")},
        {"INF001", Write("misc/info", "ODB_VERSION_MAJOR=eight\n")},
        {"INF002", Write("misc/info", "JOB_NAME job\n")},
        {"INF003", Write("misc/info", "COLOR=red\n")},
        {"INF004", Write("misc/info", "JOB_NAME=a\nJOB_NAME=b\n")},
        {"MAT001", Write(kMatrix, "STEP {\nNAME=PCB\n}\nSTEP {\nNAME=GONE\n}\n")},
        {"MAT002", Write("steps/old/profile", "")},
        {"MAT003", Remove("steps/pcb/layers/top")},
        {"MAT004", Write("steps/pcb/layers/old/features", "")},
        {"MAT005", Write(kMatrix, "LAYER {\nNAME=A\nROW=first\n}\n")},
        {"MAT006", Write(kMatrix, "LAYER\n")},
        {"MAT007", Write(kMatrix, "LAYER {\nNAME=A\nTHICKNESS=3\n}\n")},
        {"MAT008", Write(kMatrix, "LAYER {\nNAME=A\nROW=1\nROW=2\n}\n")},
        {"MAT009", Write(kMatrix, "LAYER {\nNAME=A\n")},
        {"MAT010", Write(kMatrix, "}\n")},
        {"MAT011", Write(kMatrix, "LAYER {\nNAME=TOP\n}\nLAYER {\nNAME=top\n}\n")},
        {"MAT012", Write(kMatrix, "LAYER {\n}\n")},
        {"MAT013", Write(kMatrix, "LAYER {\nNAME=A\nSTART_NAME=TOP\n}\n")},
        {"MAT014", Write(kMatrix, "LAYER {\nNAME=A\nPOLARITY=INVERSE\n}\n")},
        {"MAT015", Write(kMatrix, "LAYER {\nNAME=A\nROW=3\n}\nLAYER {\nNAME=B\nROW=3\n}\n")},
        {"NET001", Write(kNetlist, "$0\n")},
        {"NET002", Write(kNetlist, "H optimize n staggered n x\n")},
        {"NET003", Write(kNetlist, "$x A\n")},
        {"NET004", Write(kNetlist, "0 0.5 1 2 T e e\n")},
        {"NET005", Write(kNetlist, "XYZ\n")},
        {"NET006", Write(kNetlist, "$0 A\n$0 B\n")},
        {"NET007", Write(kNetlist, "$0 a\n$1 A\n")},
        {"TOO001", Write(kTools, "THICKNESS=thin\n")},
        {"TOO002", Write(kTools, "TOOLS\n")},
        {"TOO003", Write(kTools, "SPEED=3\n")},
        {"TOO004", Write(kTools, "THICKNESS=1\nTHICKNESS=2\n")},
        {"TOO005", Write(kTools, "TOOLS {\n")},
        {"TOO006", Write(kTools, "}\n")},
        {"TOO007", Write(kTools, "TOOLS {\nNUM=1\n}\nTOOLS {\nNUM=1\n}\n")},
        {"TOO008", Write(kTools, "TOOLS {\nTYPE=GILDED\n}\n")},
        {"NET008",
         [](const SmallJob& job)
         {
             job.Write(kNetlist, "$0 A\n");
             job.Write(kEda, "NET A\nNET B\n");
         }},
        {"UNI001", Write("misc/info", "UNITS=CM\n")},
        {"UNI002", Write("misc/info", "UNITS=INCH\nUNITS=MM\n")},
    };
    return triggers;
}

// The codes that a reading of the job gives.
std::set<std::string> Codes(const SmallJob& job)
{
    class Sink : public CJOBXmessageSink
    {
    public:
        void OnMessage(const CJOBXmessage& message) override { codes.insert(message.kind->code); }
        std::set<std::string> codes;
    } sink;
    CJOBXreading reading;
    reading.way = JOBXway::Complete;
    reading.pSink = &sink;
    reading.nExpansionLimit = 50'000;
    job.Read(reading);
    return sink.codes;
}

TEST(MessageList, HasNothingThatNoJobBringsAbout)
{
    EXPECT_EQ(Codes(SmallJob()), std::set<std::string>());
    for (int i = 0; const CJOBXmessageKind* const kind = pGetJOBXmessageKind(i); ++i)
    {
        if (std::string_view(kind->code).starts_with("SAV"))
            continue; // no reading brings it about; the tests of saving do
        ASSERT_TRUE(Triggers().contains(kind->code)) << kind->code;
        const SmallJob job;
        Triggers().at(kind->code)(job);
        EXPECT_TRUE(Codes(job).contains(kind->code)) << kind->code;
    }
}
} // namespace
