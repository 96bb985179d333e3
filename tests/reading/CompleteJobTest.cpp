// What complete reading makes of a whole job.
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "foundation/corekit/LzwEncoder.h"
#include "foundation/framework/CWnd.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "layer/CJOBXfonts.h"
#include "netlist/CJOBXnetlist.h"
#include "reading/SmallJob.h"
#include "robustness/Threads.h"
#include "step/CJOBXstephdr.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
const CJOBXstepObj& StepOf(const CJOBX& job)
{
    return *job.m_pSteps->m_arrSteps.GetAt(0);
}

// The names of all files below the directory, sorted.
std::vector<std::string> FilesBelow(const std::string& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory))
        names.push_back(entry.path().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(CompleteJob, IsReadClassicallyUnlessTheHostChooses)
{
    EXPECT_EQ(CJOBX().GetReading().way, JOBXway::Classic);
    const SmallJob files;
    std::filesystem::remove(files.Path("steps/pcb/layers/top/features"));
    RecordedMessages sink;
    CJOBXreading reading = sink.Reading();
    reading.way = JOBXway::Classic;
    files.Read(reading);
    EXPECT_THAT(sink.lines, IsEmpty());
    reading.way = JOBXway::Complete;
    files.Read(reading);
    EXPECT_EQ(sink.lines.size(), 1U);
}

TEST(CompleteJob, OfASoundJobSaysNothing)
{
    EXPECT_THAT(SmallJob().Messages(), IsEmpty());
}

TEST(CompleteJob, HasAllKindsOfFilesWhetherPlainOrCompressed)
{
    const SmallJob files;
    const std::pair<const char*, const char*> texts[] = {
        {"matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\nLAYER {\nROW=1\nTYPE=SIGNAL\nNAME=TOP\n}\n"},
        {"misc/info", "SAVE_APP=me\nUNITS=MM\n"},
        {"fonts/standard", "XSIZE 0.5\n"},
        {"symbols/sym/features", "$0 r10\nP 1 2 0 P 0 0\n"},
        {"steps/pcb/profile", "S P 0\nOB 0 0 I\nOS 1 0\nOE\nSE\n"},
        {"steps/pcb/stephdr", "X_DATUM=5\n"},
        {"steps/pcb/layers/top/features", "$0 r10\nP 1 2 0 P 0 0\n"},
        {"steps/pcb/layers/top/components", "# CMP 0\nCMP 0 1 2 0 N R1 PART\n"},
        {"steps/pcb/eda/data", "NET A\nPKG P 0 0 0 0 0\n"},
        {"steps/pcb/netlists/cadnet/netlist", "$0 A\n"},
    };
    for (const char* const ending : {"", ".Z"})
    {
        for (const auto& [name, text] : texts)
        {
            std::filesystem::remove(files.Path(name));
            files.Write(std::string(name) + ending, *ending == '\0' ? text : EncodeLzw(text));
        }
        std::filesystem::remove_all(files.Path("steps/pcb/layers/comp_+_top"));
        const std::vector<std::string> before = FilesBelow(files.Path(""));
        RecordedMessages sink;
        const std::unique_ptr<CJOBX> job = files.Read(sink.Reading());
        EXPECT_THAT(sink.lines, IsEmpty());
        EXPECT_EQ(FilesBelow(files.Path("")), before) << "nothing is written";
        EXPECT_EQ(job->m_pMatrix->m_arrLayers.GetSize(), 1);
        EXPECT_EQ(job->m_pMisc->m_sSaveApp, "me");
        EXPECT_EQ(job->m_pFonts->m_dXSize, 0.5);
        ASSERT_EQ(job->m_pSpecialSymbols->GetSize(), 1);
        EXPECT_EQ(job->m_pSpecialSymbols->GetAt(0)->m_sName, "sym");
        EXPECT_EQ(job->m_pSpecialSymbols->GetAt(0)->GetLayer()->GetFeatures()->GetSize(), 1);
        const CJOBXstepObj& step = StepOf(*job);
        EXPECT_EQ(step.GetProfile()->GetFeatures()->GetSize(), 1);
        EXPECT_EQ(step.GetHeader()->m_ptDatum.x, 5.0);
        ASSERT_EQ(step.m_arrLayers.GetSize(), 1);
        EXPECT_EQ(step.m_arrLayers.GetAt(0)->m_sName, "top");
        EXPECT_EQ(step.m_arrLayers.GetAt(0)->GetFeatures()->GetSize(), 1);
        EXPECT_EQ(step.m_arrLayers.GetAt(0)->GetUnit(), JOBXunit::Millimetre);
        ASSERT_EQ(step.m_arrComponents.GetSize(), 1);
        EXPECT_EQ(step.m_arrComponents.GetAt(0)->m_arrCmps.GetSize(), 1);
        EXPECT_EQ(step.GetEda()->m_pData->m_arrNets.GetSize(), 1);
        EXPECT_EQ(step.GetNetlist()->m_arrNets.GetSize(), 1);
    }
}

TEST(CompleteJob, SaysWhichPartsThatTheMatrixNamesAreMissing)
{
    const SmallJob files;
    files.Write("matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\nSTEP {\nCOL=2\nNAME=GONE\n}\n"
                                 "LAYER {\nROW=1\nTYPE=COMPONENT\nNAME=COMP_+_TOP\n}\n"
                                 "LAYER {\nROW=2\nTYPE=SIGNAL\nNAME=TOP\n}\nLAYER {\nROW=3\nNAME=BOTTOM\n}\n");
    files.Write("steps/pcb/layers/extra/features", "");
    files.dir.MakeDir("job/steps/old");
    for (const char* const name : {"profile", "layers/comp_+_top/components", "layers/top/features"})
        std::filesystem::remove(files.Path(std::string("steps/pcb/") + name));
    EXPECT_THAT(files.Messages(),
                ElementsAre("steps: error MAT001 The step \"GONE\" has no folder.",
                            "steps: warning MAT002 The matrix names no step \"old\".",
                            "steps/pcb/profile: error FIL001 The file is not there.",
                            "steps/pcb/layers: warning MAT004 No row of the matrix names the folder \"extra\".",
                            "steps/pcb/layers: error MAT003 The layer \"BOTTOM\" has no folder.",
                            "steps/pcb/layers/comp_+_top/components: error FIL001 The file is not there.",
                            "steps/pcb/layers/top/features: error FIL001 The file is not there."));
}

// Without a definition a number that is in the table of texts would be taken for a text.
TEST(CompleteJob, TellsOptionsOfSystemAttributesFromTexts)
{
    const SmallJob files;
    files.Write("steps/pcb/layers/top/features", "$0 r10\n@0 .drill\n&0 text\nP 1 2 0 P 0 0;0=0\n");
    const std::unique_ptr<CJOBX> job = files.Read(RecordedMessages().Reading());
    const CJOBXProperty& property = *StepOf(*job).m_arrLayers.GetAt(0)->GetFeatures()->GetAt(0)->pGetProperty(0);
    EXPECT_EQ(property.GetKind(), JOBXattributeKind::Option);
    EXPECT_EQ(property.m_sValue, "plated");
}

TEST(CompleteJob, AllowsAStepThatRepeatsOthersToHaveFewerLayers)
{
    const SmallJob files;
    std::filesystem::remove_all(files.Path("steps/pcb/layers"));
    EXPECT_EQ(files.Messages().size(), 2U);
    files.Write("steps/pcb/stephdr", "STEP-REPEAT {\nNAME=PCB\nNX=1\nNY=1\n}\n");
    EXPECT_THAT(files.Messages(), IsEmpty());
}

TEST(CompleteJob, CannotBeReadWithoutMatrixOrSteps)
{
    const SmallJob files;
    std::filesystem::remove_all(files.Path("steps"));
    std::filesystem::remove_all(files.Path("matrix"));
    const auto before = SetMessageBoxHandler([](CWnd*, LPCSTR, LPCSTR, UINT) { return 1; });
    RecordedMessages sink;
    CJOBX job;
    job.SetReading(sink.Reading());
    EXPECT_EQ(job.ParseODBOfMFC(files.JobPath()), 0);
    SetMessageBoxHandler(before);
    EXPECT_THAT(sink.lines, ElementsAre("matrix/matrix: error FIL001 The file is not there.",
                                        "steps: error FIL001 The folder is not there."));
}

TEST(CompleteJob, OfChosenStepsReadsTheMatrixOnceAndThoseSteps)
{
    const SmallJob files;
    RecordedMessages sink;
    CJOBX job;
    job.SetReading(sink.Reading());
    CStringArray names;
    ASSERT_EQ(job.ParseMatrixInODBOfMFC(files.JobPath(), names), 1);
    ASSERT_EQ(names.GetSize(), 1);
    EXPECT_EQ(job.ParseODBOfMFC(files.JobPath(), names), 1);
    EXPECT_THAT(sink.lines, IsEmpty());
    EXPECT_EQ(job.m_pMatrix->m_arrLayers.GetSize(), 2);
    EXPECT_EQ(StepOf(job).m_arrLayers.GetSize(), 1);
}

TEST(CompleteJob, SaysTheSameInTheSameOrderOnAnyNumberOfThreads)
{
    const SmallJob files;
    for (int i = 0; i < 40; ++i)
        files.Write("steps/pcb/layers/l" + std::to_string(i) + "/features", std::string(100, '\x01'));
    std::vector<std::string> first;
    for (const int count : {1, 2, 7})
    {
        const Threads threads(count);
        const std::vector<std::string> said = files.Messages();
        EXPECT_EQ(said.size(), 51U) << "ten folders and forty files that are not text";
        EXPECT_TRUE(first.empty() || said == first);
        first = said;
    }
}

TEST(CompleteJob, AndAClassicOneAreReadByTwoThreadsAtOnce)
{
    const SmallJob files;
    files.Write("symbols/sym/features", "P 1 2 0 P 0 0\n");
    for (int round = 0; round < 20; ++round)
    {
        RecordedMessages sink;
        std::unique_ptr<CJOBX> complete;
        std::thread other([&] { complete = files.Read(sink.Reading()); });
        const std::unique_ptr<CJOBX> classic = files.Read({});
        other.join();
        EXPECT_EQ(complete->m_pSpecialSymbols->GetAt(0)->m_sName, "sym");
        EXPECT_NE(classic->m_pSpecialSymbols->GetAt(0)->m_sName, "sym");
        EXPECT_EQ(StepOf(*classic).m_arrLayers.GetAt(0)->GetUnit(), JOBXunit::Inch);
        EXPECT_EQ(StepOf(*complete).m_arrLayers.GetAt(0)->GetUnit(), JOBXunit::Millimetre);
    }
}

TEST(CompleteJob, EndsWithWhatTheSinkRaises)
{
    class Refusing : public CJOBXmessageSink
    {
        void OnMessage(const CJOBXmessage& /*message*/) override { throw 5; }
    } sink;
    const SmallJob files;
    files.Write("steps/pcb/layers/top/features", std::string(100, '\x01'));
    CJOBXreading reading;
    reading.way = JOBXway::Complete;
    reading.pSink = &sink;
    EXPECT_THROW(files.Read(reading), int);
}
} // namespace
