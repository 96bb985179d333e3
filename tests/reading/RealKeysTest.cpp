// The keys, attributes and tools of whole jobs, against what a plain walk through their files counts.
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "layer/CJOBXfonts.h"
#include "layer/CJOBXtool.h"
#include "reading/CompleteRead.h"
#include "step/CJOBXstephdr.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

namespace real_keys_test
{
namespace fs = std::filesystem;
using Counts = std::map<std::string, __int64>;

const std::map<std::string, Strings>& Counted()
{
    static const std::map<std::string, Strings> words = {
        {"attrlist", {"="}},          {"tools", {"TOOLS", "NUM="}},   {"matrix", {"LAYER", "STEP", "CU_TOP=", "REF="}},
        {"stephdr", {"STEP-REPEAT"}}, {"standard", {"CHAR", "LINE"}},
    };
    return words;
}

Counts CountFiles(const fs::path& job)
{
    Counts counts;
    for (const auto& entry : fs::recursive_directory_iterator(job))
    {
        const auto words = Counted().find(entry.path().filename().string());
        if (words == Counted().end() || !entry.is_regular_file())
            continue;
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);)
            for (const std::string& word : words->second)
            {
                const std::size_t at = line.find(word);
                const bool isThere = word == "=" ? at != std::string::npos : at == line.find_first_not_of(' ');
                counts[word] += isThere && !line.empty() ? 1 : 0;
            }
    }
    return counts;
}

void CountList(const CJOBXattributed& owner, Counts& counts)
{
    if (const CJOBXattributeList* const list = owner.pGetAttributeList())
        counts["="] += list->GetAttributes()->GetSize();
}

void CountStep(const CJOBXstepObj& step, Counts& counts)
{
    CountList(step, counts);
    counts["STEP-REPEAT"] += step.GetHeader()->m_arrStepRepeats.GetSize();
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        CountList(file, counts);
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
    {
        CountList(layer, counts);
        for (const CJOBXtoolData& tool : layer.GetTool()->GetToolDataArray()->Records())
        {
            ++counts["TOOLS"];
            counts["NUM="] += tool.m_nNum > 0 ? 1 : 0;
        }
    }
}

Counts CountModel(const CJOBX& job)
{
    Counts counts;
    for (const CJOBXmatrixLayer& layer : job.m_pMatrix->m_arrLayers.Records())
    {
        ++counts["LAYER"];
        for (const char* const key : {"CU_TOP", "REF"})
            if (const CJOBXPropertyArray* const keys = layer.pGetFurtherKeys())
                for (const CJOBXProperty& property : keys->Records())
                    counts[std::string(key) + '='] += property.m_sName == key ? 1 : 0;
    }
    counts["STEP"] = job.m_pMatrix->m_arrSteps.GetSize();
    CountList(*job.m_pMisc, counts);
    for (const CJOBXSpecialSymbol& symbol : job.m_pSpecialSymbols->Records())
        CountList(*symbol.GetLayer(), counts);
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        CountStep(step, counts);
    for (const CJOBXfontsStandard& character : job.m_pFonts->m_arrCharacters.Records())
    {
        ++counts["CHAR"];
        counts["LINE"] += character.m_arrStrokes.GetSize();
    }
    return counts;
}

void ExpectAllInTheModel(const fs::path& path)
{
    SCOPED_TRACE(path.string());
    CJOBX job;
    CJOBXreading reading;
    reading.way = JOBXway::Complete;
    job.SetReading(reading);
    ASSERT_EQ(job.ParseODBOfMFC(path.string().c_str()), 1);
    const Counts model = CountModel(job);
    for (const auto& [word, count] : CountFiles(path))
        EXPECT_EQ(model.contains(word) ? model.at(word) : 0, count) << word;
}

TEST(RealKeys, OfTheSampleAreAllInTheModel)
{
    ExpectAllInTheModel(SamplesDir() + "/blinker");
}

TEST(RealKeys, OfRealJobsAreAllInTheModel)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const char* const job : {"/beagleboneblack", "/flat_hierarchy"})
        ExpectAllInTheModel(jobs + job);
}
} // namespace real_keys_test
