// The lines of all files of whole jobs: what is read from them equals what they were listed from.
#include "job/CJOBX.h"
#include "job/CJOBXmatrixFields.h"
#include "job/CJOBXmiscFields.h"
#include "job/CJOBXsteps.h"
#include "job/InfoLines.h"
#include "job/InfoReader.h"
#include "job/MatrixLines.h"
#include "job/MatrixReader.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "layer/CJOBXfontsFields.h"
#include "layer/CJOBXlayerFields.h"
#include "layer/FeaturesReader.h"
#include "layer/FontLines.h"
#include "layer/FontReader.h"
#include "layer/LayerLines.h"
#include "layer/ToolsLines.h"
#include "layer/ToolsReader.h"
#include "reading/AttributeTypesReader.h"
#include "reading/SystemAttributes.h"
#include "saving/AttributeListLines.h"
#include "saving/ListedFile.h"
#include "step/CJOBXstephdrFields.h"
#include "step/StephdrLines.h"
#include "step/StephdrReader.h"
#include "support/TestPaths.h"

namespace
{
class WholeJob
{
public:
    explicit WholeJob(const std::string& path)
    {
        RecordedMessages sink;
        const CJOBXreading settings = sink.Reading();
        m_job.SetReading(settings);
        m_job.ParseODBOfMFC(CString(std::string_view(path)));
        CReadingJob around{settings, CString(std::string_view(path))};
        CMessageList messages(settings);
        const CSourceFolder misc(CString(std::string_view(path + "/misc")));
        ReadAttributeTypes({around, messages}, misc, m_files.types);
        AddSystemAttributes(m_files.types);
    }

    // How many lines there are.
    std::size_t ExpectAllReadBackEqual()
    {
        Expect(*m_job.m_pMatrix);
        Expect(*m_job.m_pMisc);
        Expect(*m_job.m_pFonts);
        for (const CJOBXSpecialSymbol& symbol : m_job.m_pSpecialSymbols->Records())
            Expect(*symbol.GetLayer());
        for (const CJOBXstepObj& step : m_job.m_pSteps->m_arrSteps.Records())
        {
            Expect(*step.GetHeader());
            Expect(*step.GetProfile());
            for (const CJOBXlayer& layer : step.m_arrLayers.Records())
            {
                Expect(layer);
                if (layer.GetTool()->GetToolDataArray()->GetSize() > 0)
                    Expect(*layer.GetTool());
            }
        }
        return m_count;
    }

private:
    template <class Object>
    void List(const Object& object, CRecordLines& lines) const
    {
        if constexpr (std::is_same_v<Object, CJOBXlayer>)
            ListLines(object, m_files.types, lines);
        else
            ListLines(object, lines);
    }
    template <class Object>
    void Expect(const Object& object)
    {
        CRecordLines lines;
        List(object, lines);
        const auto again =
            m_files.FromText<Object>(lines.WholeText(), [](const CReadingContext& context, CSourceFile& file,
                                                           Object& target) { ReadCompletely(context, file, target); });
        if constexpr (std::is_same_v<Object, CJOBXlayer>)
            again->m_sName = object.m_sName;
        EXPECT_EQ(listed_file::TextOfFields(*again), listed_file::TextOfFields(object));
        CRecordLines linesAgain;
        List(*again, linesAgain);
        EXPECT_EQ(linesAgain.WholeText(), lines.WholeText());
        m_count += lines.Lines().size();
    }

    CJOBX m_job;
    listed_file::CFileReading m_files;
    std::size_t m_count = 0;
};

TEST(WholeJobLines, OfTheSampleAreReadBackEqual)
{
    EXPECT_GT(WholeJob(SamplesDir() + "/blinker").ExpectAllReadBackEqual(), 1000U);
}

TEST(WholeJobLines, OfRealJobsAreReadBackEqual)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    EXPECT_GT(WholeJob(jobs + "/beagleboneblack").ExpectAllReadBackEqual(), 10000U);
    EXPECT_GT(WholeJob(jobs + "/flat_hierarchy").ExpectAllReadBackEqual(), 1000U);
}
} // namespace
