#include "change/ModelValues.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace
{
constexpr auto kInch = JOBXunit::Inch;
constexpr auto kMetric = JOBXunit::Millimetre;

std::string Sample()
{
    return SamplesDir() + "/blinker";
}

void Convert(CJOBX& job, JOBXunit unit)
{
    const CJOBXresult result = ConvertJobUnits(job, unit);
    EXPECT_TRUE(result.IsDone()) << result.GetReason();
}

bool IsScaled(const ModelValue& value)
{
    const bool isFont = value.place.starts_with("font.");
    const bool isLength = (value.kind == jobx::FieldKind::Length && !value.place.ends_with(".widthFactor")) ||
                          value.kind == jobx::FieldKind::Coordinate || value.place.ends_with(".resizeFactor");
    return isLength && !isFont;
}

// A small job in inch with a record of every kind whose text has lengths.
void WriteJob(const TempDir& dir)
{
    dir.Write("matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\n"
                               "LAYER {\nROW=1\nCONTEXT=BOARD\nTYPE=SIGNAL\nNAME=TOP\nPOLARITY=POSITIVE\n}\n"
                               "LAYER {\nROW=2\nCONTEXT=BOARD\nTYPE=DRILL\nNAME=DRILL\nPOLARITY=POSITIVE\n}\n");
    dir.Write("misc/userattr", "FLOAT {\nNAME=gap\nUNITS=MIL_MICRON\n}\nFLOAT {\nNAME=.depth\nUNITS=NONE\n}\n"
                               "INTEGER {\nNAME=whole\nUNITS=INCH_MM\n}\nFLOAT {\nNAME=ratio\n}\n");
    dir.Write("misc/attrlist", ".board_thickness = 0.062\n.depth = 0.5\ngap = 10\nratio = 0.5\n");
    dir.Write("symbols/r33/features", "$0 r10\nP 0.1 0 0 P 0 0\n");
    dir.Write("steps/pcb/profile", "S P 0\nOB 0 0 I\nOS 0 1\nOC 1 0 0 0 Y\nOE\nSE\n");
    dir.Write("steps/pcb/stephdr", "X_DATUM=0.5\nTOP_ACTIVE=0.25\nLEFT_ACTIVE=x\nSTEP-REPEAT {\nNAME=PCB\nX=1\nY=2\n"
                                   "DX=3\nDY=4\nNX=1\nNY=1\nANGLE=90\nMIRROR=NO\n}\n");
    dir.Write("steps/pcb/attrlist", "UNITS=MM\n.comp_height_max = 2.54\n");
    dir.Write("steps/pcb/layers/top/features",
              "$0 r10\n$1 r10 M\n$2 r10 I\n$3 r33\n$4 mine\n@0 .comp_height\n@1 whole\n&0 text\n"
              "P 1 1 0 P 0 0;0=0.1\nP 2 1 0 P 0 0;0=0.1\nP 1 3 -1 0 2.5 P 0 8 30;1=2\n"
              "T 1 2 standard P 0 0.1 0.2 1.5 'hello' 1\n");
    dir.Write("steps/pcb/layers/drill/features", "UNITS=MM\n$0 r254\nP 25.4 25.4 0 P 0 0\n");
    dir.Write("steps/pcb/layers/drill/tools", "UNITS=INCH\nTHICKNESS=62\nTOOLS {\nNUM=1\nTYPE=VIA\nMIN_TOL=1\n"
                                              "MAX_TOL=2\nFINISH_SIZE=10\nDRILL_SIZE=12\n}\n");
    dir.Write("steps/pcb/eda/data",
              "LYR top\nNET A\nSNT PLN S E 0.5\nPKG P 0.1 -1 -1 1 1\nPRP H '0.1'\nRC 0 0 0.1 0.2\n"
              "CT\nOB 0 0 I\nOS 1 0\nOC 0 0 0.5 0 Y\nOE\nCE\nPIN 1 S 0.5 0.5 0.01 E S\n"
              "CR 0.5 0.5 0.1\n");
    dir.Write("steps/pcb/layers/comp_+_top/components",
              "@0 .comp_height\nCMP 0 1 2 90 N R1 P ;0=0.1\nPRP SIZE '0.1'\nTOP 0 1.5 2.5 90 N 0 0 1\n");
    dir.Write("steps/pcb/netlists/cadnet/netlist", "$0 A\n0 0.01 1 2 T e e staggered 3 4 0.5\n0 0 1 2 T 0.1 0.2 e e\n");
    dir.Write("steps/pcb/netlists/refnet/netlist", "$0 A\n0 0.01 1 2 T e e\n");
    dir.Write("fonts/standard", "XSIZE 0.302\nYSIZE 0.302\nCHAR A\nLINE 0 0 0.1 0.1 P R 0.012\nECHAR\n");
}

// Zeros at the end of the numbers in names, and the units text of a layer whose file names no unit.
void ForgetSpellings(ModelValues& values)
{
    for (ModelValue& value : values)
    {
        if (value.place.ends_with(".units") && !value.text.empty())
            value.text = "MM";
        if (value.place.find("symbolNames[") != std::string::npos)
            value.text = std::regex_replace(value.text, std::regex(R"((\.\d*?)0+(?=x|$))"), "$1");
        if (value.place.find("symbolNames[") != std::string::npos)
            value.text = std::regex_replace(value.text, std::regex(R"(\.(?=x|$))"), "");
    }
}

struct InBothUnits
{
    std::string inch;
    std::string metric;
};

std::map<std::string, std::string> TextsOf(const CJOBX& job)
{
    std::map<std::string, std::string> texts;
    for (const ModelValue& value : ValuesOf(job))
        texts[value.place] =
            value.text.empty() ? CString(std::to_string(value.number).c_str()).GetString() : value.text;
    return texts;
}
} // namespace

TEST(JobUnits, ScaleEveryLengthOfTheFieldListsOnceAndNothingElse)
{
    const auto job = ReadCompletely(Sample());
    const ModelValues before = ValuesOf(*job);
    Convert(*job, kMetric);
    const ModelValues after = ValuesOf(*job);
    ASSERT_EQ(before.size(), after.size());
    std::size_t scaled = 0;
    for (std::size_t i = 0; i < before.size(); ++i)
    {
        const double factor = IsScaled(before[i]) ? 25.4 : 1.0;
        ASSERT_NEAR(after[i].number, before[i].number * factor, 1e-9) << before[i].place;
        scaled += IsScaled(before[i]) && before[i].number != 0.0 ? 1 : 0;
        const bool isAboutUnits = before[i].kind == jobx::FieldKind::Unit || before[i].place.ends_with("units");
        const bool isConvertedText = before[i].kind == jobx::FieldKind::Parameters ||
                                     before[i].place.find("symbolNames[") != std::string::npos ||
                                     before[i].place.ends_with(".value");
        if (!isAboutUnits && !isConvertedText)
        {
            ASSERT_EQ(after[i].text, before[i].text) << before[i].place;
        }
    }
    EXPECT_GT(scaled, 3000U);
}

TEST(JobUnits, LeaveNoRecordInTheOtherUnitButTheFontAndToolsThatAreNotThere)
{
    const auto job = ReadCompletely(Sample());
    Convert(*job, kMetric);
    std::set<std::string> inches;
    for (const ModelValue& value : ValuesOf(*job))
        if (value.kind == jobx::FieldKind::Unit && value.text == "0")
            inches.insert(value.place.substr(value.place.rfind('.', value.place.size() - 6) + 1));
    EXPECT_EQ(inches, (std::set<std::string>{"font.unit", "tools.unit"}));
    for (const CJOBXstepObj& step : job->m_pSteps->m_arrSteps.Records())
        for (const CJOBXlayer& layer : step.m_arrLayers.Records())
            EXPECT_EQ(layer.GetTool()->GetUnit() == kMetric, layer.GetTool()->m_arrToolData.GetSize() > 0);
}

TEST(JobUnits, GiveTheSampleBackFromMillimetres)
{
    const auto job = ReadCompletely(Sample());
    const ModelValues before = ValuesOf(*job);
    Convert(*job, kMetric);
    Convert(*job, kInch);
    ExpectSameValues(ValuesOf(*job), before, 1e-9);
}

TEST(JobUnits, GiveRealJobsBackFromTheOtherUnit)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const auto& entry : std::filesystem::directory_iterator(jobs))
    {
        if (!entry.is_directory() || (kIsSlowBuild && entry.path().filename() == "beagleboneblack"))
            continue;
        SCOPED_TRACE(entry.path().filename().string());
        const auto job = ReadCompletely(entry.path().string());
        const JOBXunit unit = job->m_pMisc->GetUnit();
        const auto values =
            unit == kMetric ? static_cast<ModelValues (*)(const CJOBX&)>(ValuesOf) : ValuesWithoutPlaces;
        ModelValues before = values(*job);
        Convert(*job, unit == kInch ? kMetric : kInch);
        EXPECT_NE(job->m_pMisc->GetUnit(), unit);
        Convert(*job, unit);
        ModelValues after = values(*job);
        ForgetSpellings(before);
        ForgetSpellings(after);
        ExpectSameValues(after, before, unit == kInch ? 1e-9 : 2.54e-8);
    }
}

TEST(JobUnits, LeaveAJobThatIsInTheUnitAsItIs)
{
    const auto job = ReadCompletely(Sample());
    const ModelValues before = ValuesOf(*job);
    Convert(*job, kInch);
    ExpectSameValues(ValuesOf(*job), before);
}

TEST(JobUnits, ConvertWhatTextsSayByTheUnitOfTheirFile)
{
    const TempDir dir;
    WriteJob(dir);
    const auto job = ReadCompletely(dir.Path());
    const ModelValues before = ValuesOf(*job);
    const std::map<std::string, InBothUnits> expected = {
        {"misc.attributeList.attributes[0].value", {"0.062", "1.5748"}},
        {"misc.attributeList.attributes[1].value", {"0.5", "0.5"}}, // its definition says that it is no length
        {"misc.attributeList.attributes[2].value", {"10", "254"}},
        {"misc.attributeList.attributes[3].value", {"0.5", "0.5"}},
        {"steps[0].attributeList.attributes[0].value", {"2.54", "2.54"}}, // in mm before
        {"steps[0].header.topActive", {"0.25", "6.35"}},
        {"steps[0].header.leftActive", {"x", "x"}},
        {"steps[0].header.stepRepeats[0].pitch.y", {"4.000000", "101.600000"}},
        {"steps[0].layers[1].symbolNames[0]", {"r10", "r254"}},
        {"steps[0].layers[1].symbolNames[1]", {"r10", "r10"}}, // microns
        {"steps[0].layers[1].symbolNames[2]", {"r10", "r254"}},
        {"steps[0].layers[1].symbolNames[3]", {"r33", "r33"}}, // a user symbol
        {"steps[0].layers[1].symbolNames[4]", {"mine", "mine"}},
        {"steps[0].layers[1].symbolSecondFields[1]", {"M", "M"}},
        {"steps[0].layers[1].symbolSecondFields[2]", {"I", "M"}},
        {"steps[0].layers[1].features[0].properties[0].value", {"0.1", "2.54"}},
        {"steps[0].layers[1].features[1].properties[0].value", {"0.1", "2.54"}}, // shared with the one before
        {"steps[0].layers[1].features[2].properties[0].value", {"2", "51"}},     // a whole number
        {"steps[0].layers[1].features[2].resizeFactor", {"2.500000", "63.500000"}},
        {"steps[0].layers[1].features[2].angle", {"30.000000", "30.000000"}},
        {"steps[0].layers[1].features[3].widthFactor", {"1.500000", "1.500000"}},
        {"steps[0].layers[0].symbolNames[0]", {"r254", "r254"}}, // in mm before
        {"steps[0].layers[0].features[0].centre.x", {"25.400000", "25.400000"}},
        {"steps[0].layers[0].tools.thickness", {"62.000000", "1574.800000"}},
        {"steps[0].layers[0].tools.tools[0].drillSize", {"12.000000", "304.800000"}},
        {"steps[0].layers[0].tools.units", {"INCH", "MM"}},
        {"steps[0].eda.packages[0].properties[0].value", {"0.1", "0.1"}}, // a property
        {"steps[0].eda.packages[0].outlines[0].params[3]", {"0.2", "5.08"}},
        {"steps[0].eda.packages[0].outlines[2].params[2]", {"I", "I"}},
        {"steps[0].eda.packages[0].outlines[4].params[2]", {"0.5", "12.7"}},
        {"steps[0].eda.packages[0].pins[0].outlines[0].params[2]", {"0.1", "2.54"}},
        {"steps[0].eda.units", {"INCH", "MM"}},
        {"steps[0].components[0].components[0].attributes[0].value", {"0.1", "2.54"}},
        {"steps[0].components[0].components[0].properties[0].value", {"0.1", "0.1"}},
        {"steps[0].components[0].components[0].toeprints[0].rotation", {"90.000000", "90.000000"}},
        {"steps[0].netlist.nets[0].points[0].staggeredRadius", {"0.500000", "12.700000"}},
        {"steps[0].furtherNetlists[0].nets[0].points[0].radius", {"0.010000", "0.254000"}},
        {"symbols[0].layer.symbolNames[0]", {"r10", "r254"}},
        {"symbols[0].layer.features[0].centre.x", {"0.100000", "2.540000"}},
        {"font.xSize", {"0.302000", "0.302000"}},
    };
    for (const auto& [place, texts] : expected)
        EXPECT_EQ(TextsOf(*job)[place], texts.inch) << place;
    Convert(*job, kMetric);
    for (const auto& [place, texts] : expected)
        EXPECT_EQ(TextsOf(*job)[place], texts.metric) << place;
}

TEST(JobUnits, ScaleContoursThatSurfacesShareOnce)
{
    const TempDir dir;
    WriteJob(dir);
    const auto job = ReadCompletely(dir.Path());
    CJOBXlayer& profile = *job->m_pSteps->m_arrSteps.GetAt(0)->GetProfile();
    auto& surface = dynamic_cast<CJOBXlayObjSurface&>(*profile.GetFeatures()->GetAt(0));
    auto copy = std::make_unique<CJOBXlayObjSurface>();
    copy->SetType("S");
    copy->GetContours()->Own(std::make_unique<CJOBXlayObjSurfaceOB>(*surface.GetContours()->GetAt(0)));
    profile.GetFeatures()->Own(std::move(copy));
    Convert(*job, kMetric);
    EXPECT_EQ(surface.GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetAt(1)->GetPoint().y, 25.4);
}

TEST(JobUnits, ConvertAFontThatSaysItIsInMillimetres)
{
    const TempDir dir;
    WriteJob(dir);
    dir.Write("fonts/standard", "UNITS=MM\nXSIZE 2.54\nYSIZE 2.54\nCHAR A\nLINE 0 0 2.54 0 P R 0.254\nECHAR\n");
    const auto job = ReadCompletely(dir.Path());
    Convert(*job, kMetric);
    EXPECT_EQ(job->m_pFonts->m_dXSize, 2.54);
    Convert(*job, kInch);
    EXPECT_EQ(job->m_pFonts->m_dXSize, 0.1);
    EXPECT_EQ(job->m_pFonts->m_arrCharacters.GetAt(0)->m_arrStrokes.GetAt(0)->m_dWidth, 0.01);
    EXPECT_EQ(job->m_pFonts->GetUnit(), kInch);
}

TEST(JobUnits, AreRefusedAfterClassicReadingAndNothingChanges)
{
    const TempDir dir;
    WriteJob(dir);
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(dir.Path().c_str()), 1);
    const ModelValues before = ValuesOf(job);
    const CJOBXresult result = ConvertJobUnits(job, kMetric);
    EXPECT_FALSE(result.IsDone());
    EXPECT_EQ(result.GetReason(), "the job was not read completely");
    ExpectSameValues(ValuesOf(job), before);
}
