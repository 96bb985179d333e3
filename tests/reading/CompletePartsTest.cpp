// Files that classic reading leaves out: attribute lists, drill tools, further netlists, shorts, and all the others.
#include "eda/CJOBXeda.h"
#include "foundation/corekit/LzwEncoder.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "layer/CJOBXtool.h"
#include "netlist/CJOBXnetlist.h"
#include "reading/CompleteRead.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{
constexpr char kStepAttributes[] = "steps/pcb/attrlist";
constexpr char kToolsFile[] = "steps/pcb/layers/top/tools";

const CJOBXstepObj& FirstStep(const CJOBX& job)
{
    return *job.m_pSteps->m_arrSteps.GetAt(0);
}

std::string AttributesOf(const CJOBXattributed& owner)
{
    const CJOBXattributeList* const list = owner.pGetAttributeList();
    return list != nullptr ? TextOf(list->GetAttributes()) : "none";
}

Strings CarriedBy(const CJOBX& job)
{
    Strings files;
    for (const CJOBXcarriedFile& file : job.m_pMisc->GetCarriedFiles()->Records())
        files.push_back(TextOf(file.GetPath()) + ' ' + std::to_string(file.GetSize()));
    return files;
}

TEST(CompleteAttributeLists, OfJobStepLayerAndSymbolAreRead)
{
    const SmallJob files;
    files.Write("misc/attrlist", ".of = job\n");
    files.Write("steps/pcb/layers/top/attrlist", ".of = layer\n");
    files.Write("steps/pcb/layers/comp_+_top/attrlist", ".of=components\n");
    files.Write("symbols/sym/features", "P 0 0 0 P 0 0\n");
    files.Write("symbols/sym/attrlist", ".of = symbol\n");
    const CompleteRead read(files, kStepAttributes, ".of = step\n");
    const CJOBXstepObj& step = FirstStep(*read.job);
    EXPECT_EQ(AttributesOf(*read.job->m_pMisc), ".of/0/job ");
    EXPECT_EQ(AttributesOf(step), ".of/0/step ");
    EXPECT_EQ(AttributesOf(*step.m_arrLayers.GetAt(0)), ".of/0/layer ");
    EXPECT_EQ(AttributesOf(*step.m_arrComponents.GetAt(0)), ".of/0/components ");
    EXPECT_EQ(AttributesOf(*read.job->m_pSpecialSymbols->GetAt(0)->GetLayer()), ".of/0/symbol ");
    EXPECT_EQ(AttributesOf(*step.GetProfile()), "none");
}

TEST(CompleteAttributeLists, OfAComponentLayerWithFeaturesBelongToTheLayer)
{
    const SmallJob files;
    files.Write("steps/pcb/layers/comp_+_top/features", "");
    const CompleteRead read(files, "steps/pcb/layers/comp_+_top/attrlist", ".a = b\n");
    const CJOBXstepObj& step = FirstStep(*read.job);
    ASSERT_EQ(step.m_arrLayers.GetSize(), 2);
    EXPECT_EQ(AttributesOf(*step.m_arrLayers.GetAt(0)), ".a/0/b ");
    EXPECT_EQ(AttributesOf(*step.m_arrComponents.GetAt(0)), "none");
}

TEST(CompleteAttributeLists, HaveKindsFromDefinitionsInAnyLetterCase)
{
    const SmallJob files;
    files.Write("misc/userattr", "OPTION {\nNAME=_FINISH\nOPTIONS=HASL;ENIG\n}\nBOOLEAN {\nNAME=_OLD\n}\n"
                                 "INTEGER {\nNAME=_COUNT\n}\nTEXT {\nNAME=_NOTE\n}\n");
    const CompleteRead read(files, kStepAttributes,
                            "UNITS=INCH\n# a comment\n_finish = enig\n_old = No\n_count = 3\n_note = a = b\n"
                            ".board_thickness = 0.062\n.unheard = \n");
    EXPECT_EQ(read.codes, Strings{});
    const CJOBXattributeList& list = *FirstStep(*read.job).pGetAttributeList();
    EXPECT_EQ(TextOf(list.GetAttributes()),
              "_finish/5/enig _old/1/No _count/2/3 _note/4/a = b .board_thickness/3/0.062 .unheard/0/ ");
    EXPECT_EQ(list.GetUnit(), JOBXunit::Inch) << "the job's is millimetre";
    EXPECT_EQ(list.pGetAttribute("_COUNT")->m_sValue, "3");
    EXPECT_EQ(list.pGetAttribute("_other"), nullptr);
}

TEST(CompleteAttributeLists, WhatIsWrongIsReportedWithItsLine)
{
    const SmallJob files;
    files.Write("misc/userattr", "OPTION {\nNAME=_FINISH\nOPTIONS=HASL;ENIG\n}\nBOOLEAN {\nNAME=_OLD\n}\n");
    const auto codes = [&](const char* text) { return CompleteRead(files, kStepAttributes, text).codes; };
    EXPECT_EQ(codes(".comment\n= b\n"), (Strings{"1: warning ATL001", "2: warning ATL001"}));
    EXPECT_EQ(codes(".a = 1\n.A = 2\n"), Strings{"2: warning ATL002"});
    EXPECT_EQ(codes(".board_thickness = thin\n"), Strings{"1: warning ATL003"});
    EXPECT_EQ(codes(".board_thickness =\n_finish =\n_old =\n"), Strings{}) << "not set";
    EXPECT_EQ(codes("_finish = wood\n_old = 1\n"), (Strings{"1: warning ATL004", "2: warning ATL004"}));
    EXPECT_EQ(codes("UNITS=CM\n"), Strings{"1: warning UNI001"});
}

TEST(CompleteTools, KeepEveryKey)
{
    const CompleteRead read(kToolsFile,
                            "UNITS=INCH\nTHICKNESS=62\nUSER_PARAMS=u\nNEW=1\nTOOLS {\nNUM=3\nTYPE=VIA\n"
                            "TYPE2=STANDARD\nMIN_TOL=1\nMAX_TOL=2\nBIT=b\nFINISH_SIZE=12\nDRILL_SIZE=13.5\nID=9\n"
                            "SHAPE=round\n}\nTOOLS{\nNUM=4\nTYPE=plated\n}\nSLOTS {\nA=1\n}\n");
    EXPECT_EQ(read.codes, (Strings{"4: note TOO003", "15: note TOO003", "21: note TOO003"}));
    const CJOBXtool& tools = *FirstStep(*read.job).m_arrLayers.GetAt(0)->GetTool();
    EXPECT_EQ(tools.m_sUnits, "INCH");
    EXPECT_EQ(tools.dGetFactorToMM(), 0.0254);
    EXPECT_EQ(tools.m_dThickness, 62.0);
    EXPECT_EQ(tools.m_sUserParams, "u");
    EXPECT_EQ(TextOf(tools.pGetFurtherKeys()), "NEW/0/1 SLOTS.A/0/1 ");
    ASSERT_EQ(tools.GetToolDataArray()->GetSize(), 2);
    const CJOBXtoolData& tool = *tools.GetToolDataArray()->GetAt(0);
    EXPECT_EQ(tool.m_nNum, 3);
    EXPECT_EQ(tool.m_sType, "VIA");
    EXPECT_EQ(tool.m_sType2, "STANDARD");
    EXPECT_EQ(tool.m_dMinTol, 1.0);
    EXPECT_EQ(tool.m_dMaxTol, 2.0);
    EXPECT_EQ(tool.m_sBit, "b");
    EXPECT_EQ(tool.m_dFinishSize, 12.0);
    EXPECT_EQ(tool.m_dDrillSize, 13.5);
    EXPECT_EQ(tool.GetID(), 9);
    EXPECT_EQ(TextOf(tool.pGetFurtherKeys()), "SHAPE/0/round ");
    EXPECT_EQ(tool.GetSourceLine(), 5) << "where its block begins";
    EXPECT_EQ(tools.GetToolDataArray()->GetAt(1)->GetSourceLine(), 17);
    CJOBXtoolData copy(tool);
    EXPECT_EQ(copy.sGetFurtherValue("shape"), "round");
    EXPECT_EQ(copy.GetSourceLine(), 0) << "it comes from no file";
    copy.SetSourceLine(7);
    copy = tool;
    EXPECT_EQ(copy.GetSourceLine(), 7) << "it is still the same record";
}

TEST(CompleteTools, AreWrittenAgain)
{
    const SmallJob files;
    const CompleteRead read(files, kToolsFile, "UNITS=INCH\nTOOLS {\nNUM=7\nTYPE=VIA\n}\n");
    read.job->WriteODBData(files.dir.MakeDir("out").c_str(), 0);
    const std::string text = files.dir.Read("out/job/steps/PCB/layers/top/tools");
    EXPECT_NE(text.find("UNITS=INCH\n"), std::string::npos);
    EXPECT_NE(text.find("NUM=7\n"), std::string::npos);
}

TEST(CompleteTools, WithoutAUnitsLineHaveTheUnitOfTheJob)
{
    const CompleteRead read(kToolsFile, "THICKNESS=1\n");
    const CJOBXtool& tools = *FirstStep(*read.job).m_arrLayers.GetAt(0)->GetTool();
    EXPECT_EQ(tools.dGetFactorToMM(), 0.001);
    EXPECT_EQ(tools.m_sUnits, "MM");
}

TEST(CompleteTools, WhatIsWrongIsReportedWithItsLine)
{
    ExpectCodes(kToolsFile, "",
                {{"THICKNESS=\n", {"1: error TOO001"}},
                 {"THICKNESS 3\n", {"1: warning TOO002"}},
                 {"USER_PARAMS=\nuser_params=\n", {"2: warning TOO004"}},
                 {"TOOLS {\nTYPE=VIA\nNUM=1\nTOOLS {\nTYPE=VIA\nNUM=2\n}\n", {"1: error TOO005"}},
                 {"}\n", {"1: warning TOO006"}},
                 {"TOOLS {\nTYPE=VIA\nNUM=1\n}\nTOOLS {\nTYPE=VIA\nNUM=1\n}\n", {"5: warning TOO007"}},
                 {"TOOLS {\nTYPE=GILDED\nNUM=1\n}\n", {"1: warning TOO008"}}});
}

TEST(CompleteSymbols, HaveAFactorToMillimetresForTheNumbersInTheirNames)
{
    const CompleteRead read("steps/pcb/layers/top/features", "$0 r10\n$1 r10 I\n$2 r10 M\nP 1 2 0 P 0 0\n");
    const CJOBXlayer& layer = *FirstStep(*read.job).m_arrLayers.GetAt(0);
    EXPECT_EQ(layer.dGetSymbolFactorToMM(0), 0.001) << "as the job";
    EXPECT_EQ(layer.dGetSymbolFactorToMM(1), 0.0254);
    EXPECT_EQ(layer.dGetSymbolFactorToMM(2), 0.001);
}

TEST(CompleteNetlists, BesideCadnetAreReadUnderTheirNames)
{
    const SmallJob files;
    files.Write("steps/pcb/netlists/CadNet/netlist", "$0 A\n");
    files.Write("steps/pcb/netlists/zebra/netlist.Z", EncodeLzw("$0 Z\n$1 Y\n"));
    files.Write("steps/pcb/netlists/empty/other", "");
    const CompleteRead read(files, "steps/pcb/netlists/refnet/netlist", "UNITS=INCH\n$0 R\n$x S\n0 1 2 3 T e e\n");
    EXPECT_EQ(read.codes, (Strings{"3: error NET003", "3: warning NET006"}));
    const CJOBXstepObj& step = FirstStep(*read.job);
    EXPECT_EQ(step.GetNetlist()->GetName(), "CadNet");
    EXPECT_EQ(step.GetNetlist()->m_arrNets.GetSize(), 1);
    const CJOBXnetlistArray* const further = step.pGetFurtherNetlists();
    ASSERT_NE(further, nullptr);
    ASSERT_EQ(further->GetSize(), 2);
    EXPECT_EQ(further->GetAt(0)->GetName(), "refnet");
    EXPECT_EQ(further->GetAt(0)->GetUnit(), JOBXunit::Inch);
    EXPECT_EQ(further->GetAt(1)->GetName(), "zebra");
    EXPECT_EQ(further->GetAt(1)->m_arrNets.GetSize(), 2);
}

TEST(CompleteNetlists, AreAllConvertedToAnotherUnit)
{
    const CompleteRead read("steps/pcb/netlists/refnet/netlist", "$0 R\n0 1 2 3 T e e\n");
    read.job->UnitConvert(2.0);
    const CJOBXnetlist& netlist = *FirstStep(*read.job).pGetFurtherNetlists()->GetAt(0);
    EXPECT_EQ(netlist.m_arrNets.GetAt(0)->m_arrPts.GetAt(0)->m_ptPosition, CPointD(4, 6));
}

TEST(CompleteEda, KeepsTheRecordsOfIntendedShorts)
{
    const CompleteRead read("steps/pcb/eda/shortf", "# comment\nSF 1 2\n\nother\n");
    const CStringArray& shorts = FirstStep(*read.job).GetEda()->GetShorts();
    ASSERT_EQ(shorts.GetSize(), 2);
    EXPECT_EQ(shorts[0], "SF 1 2");
    EXPECT_EQ(shorts[1], "other");
}

TEST(CompleteJobFiles, WithNamesThatDifferOnlyInLetterCaseAreReported)
{
    const SmallJob files;
    files.Write("steps/pcb/layers/TOP/features", "");
    files.Write("steps/other/profile", "");
    files.Write("steps/Other/profile", "");
    files.Write("symbols/a/features", "");
    files.Write("symbols/A/features", "");
    EXPECT_EQ(files.Messages(), (Strings{"symbols: warning FIL008 Another folder is also called \"a\".",
                                         "steps: warning FIL008 Another folder is also called \"other\".",
                                         "steps: warning MAT002 The matrix names no step \"Other\".",
                                         "steps/pcb/layers: warning FIL008 Another folder is also called \"top\"."}));
}

TEST(CompleteNetlists, HaveAsManyNetsAsTheEdaData)
{
    const SmallJob files;
    files.Write("steps/pcb/eda/data", "NET A\nNET B\n");
    const std::string netlist = "steps/pcb/netlists/cadnet/netlist";
    EXPECT_EQ(CompleteRead(files, netlist, "$0 A\n").messages,
              Strings{netlist + ": warning NET008 The netlist has 1 nets, the EDA data have 2."});
    EXPECT_EQ(CompleteRead(files, netlist, "$0 A\n$1 B\n").messages, Strings{});
    EXPECT_EQ(CompleteRead(files, netlist, "").messages, Strings{});
}

TEST(CompleteEda, NamesOfLayersAreThoseOfTheStepOrTheMatrix)
{
    EXPECT_EQ(CompleteRead("steps/pcb/eda/data", "LYR top comp_+_top Top gone\n").messages,
              Strings{"steps/pcb/eda/data: warning EDA013 There is no layer \"gone\"."});
}

TEST(CompleteJobFiles, ThatNoReaderTakesAreCarriedInTheOrderOfTheirPaths)
{
    const SmallJob files;
    EXPECT_EQ(CarriedBy(*files.Read(RecordedMessages().Reading())), Strings{});
    files.Write("user/readme", "12345");
    files.Write("misc/last_save", "");
    files.Write("misc/sysattr.x", "");
    files.Write("matrix/matrix.Z", "123");
    files.Write("steps/old/profile", "1");
    files.Write("steps/pcb/layers/bare/attrlist", ".a = b\n");
    files.Write("steps/pcb/layers/bare/tools", "");
    std::filesystem::create_directory_symlink("..", files.Path("user/loop"));
    EXPECT_EQ(CarriedBy(*files.Read(RecordedMessages().Reading())),
              (Strings{"matrix/matrix.Z 3", "misc/last_save 0", "steps/old/profile 1",
                       "steps/pcb/layers/bare/attrlist 7", "steps/pcb/layers/bare/tools 0", "user/readme 5"}));
    EXPECT_EQ(CarriedBy(*files.Read(CJOBXreading())), Strings{});
}

TEST(CompleteJobFiles, ThatCannotBeReadAreCarried)
{
    const CompleteRead read("steps/pcb/layers/top/tools", std::string(100, '\x02'));
    EXPECT_EQ(CarriedBy(*read.job), Strings{"steps/pcb/layers/top/tools 100"});
}
} // namespace
