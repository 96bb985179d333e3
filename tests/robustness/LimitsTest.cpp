// Very large, very deep and very odd jobs. The sizes are moderate; with JOBX_TEST_LARGE set they are what the library
// has to stand, which takes minutes and gigabytes.
#include "JOBXCLSDLL.h"
#include "robustness/SampleJob.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace
{
long Size(long usual, long large)
{
    return std::getenv("JOBX_TEST_LARGE") != nullptr ? large : kIsSlowBuild ? usual / 10 : usual;
}

std::string MatrixWith(const std::string& stepName)
{
    return "STEP {\n    COL=1\n    NAME=" + stepName + "\n}\n";
}

// A job whose only step, PCB, has a profile; its path.
std::string MakeBareJob(const TempDir& dir)
{
    dir.Write("job/matrix/matrix", MatrixWith("PCB"));
    dir.Write("job/steps/pcb/profile", "");
    return dir.Path("job");
}

// Reads the job and answers how long that took; a job that hangs is ended by the test's own time limit.
std::chrono::duration<double> Read(CJOBX& job, const std::string& path)
{
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(job.ParseODBOfMFC(path.c_str()), 1);
    return std::chrono::steady_clock::now() - begin;
}

const CJOBXstepObj& OnlyStep(const CJOBX& job)
{
    return *job.m_pSteps->m_arrSteps.GetAt(0);
}

// A sink that only counts.
class Told : public CKDiagnosticSink
{
public:
    Told() : m_before(CKUtility::GetInstance()->SetDiagnosticSink(this)) {}
    ~Told() override { CKUtility::GetInstance()->SetDiagnosticSink(m_before); }
    void OnDiagnostic(const CKDiagnostic& /*diagnostic*/) override { ++count; }
    int count = 0;

private:
    CKDiagnosticSink* m_before;
};
} // namespace

TEST(Limits, ALineOfAGigabyte)
{
    const auto length = static_cast<std::size_t>(Size(32L << 20U, 1L << 30U));
    const TempDir dir;
    const std::string path = MakeBareJob(dir);
    {
        fs::create_directories(path + "/steps/pcb/layers/top");
        std::ofstream file(path + "/steps/pcb/layers/top/features", std::ios::binary);
        file << "T 0 0 standard P 0 1 1 1 '";
        const std::string block(1U << 20U, 'x');
        for (std::size_t written = 0; written < length; written += block.size())
            file << block.substr(0, length - written);
        file << "' 1\nP 0 0 0 P 0 0\n";
    }
    CJOBX job;
    RecordProperty("seconds", std::to_string(Read(job, path).count()));
    const CJOBXlayObjArray& features = *OnlyStep(job).m_arrLayers.GetAt(0)->GetFeatures();
    ASSERT_EQ(features.GetSize(), 2);
    const auto& text = dynamic_cast<const CJOBXlayObjText&>(*features.GetAt(0));
    EXPECT_EQ(static_cast<std::size_t>(text.GetText().GetLength()), length);
}

TEST(Limits, AHoleOfAGigabyteInAFile)
{
    const auto length = static_cast<std::uintmax_t>(Size(64L << 20U, 4L << 30U));
    const TempDir dir;
    const std::string path = MakeBareJob(dir);
    dir.Write("job/steps/pcb/layers/top/features", "P 0 0 0 P 0 0\nP 1 1 0 P 0 0");
    fs::resize_file(path + "/steps/pcb/layers/top/features", length);
    CJOBX job;
    RecordProperty("seconds", std::to_string(Read(job, path).count()));
    EXPECT_EQ(OnlyStep(job).m_arrLayers.GetAt(0)->GetFeatures()->GetSize(), 2);
}

TEST(Limits, TenMillionFeatures)
{
    const long count = Size(200'000, 10'000'000);
    const TempDir dir;
    const std::string path = MakeBareJob(dir);
    {
        fs::create_directories(path + "/steps/pcb/layers/top");
        std::ofstream file(path + "/steps/pcb/layers/top/features", std::ios::binary);
        for (long i = 0; i < count; ++i)
            file << "P " << i << " 1.5 0 P 0 0 ;0=1\n";
    }
    CJOBX job;
    RecordProperty("seconds", std::to_string(Read(job, path).count()));
    EXPECT_EQ(OnlyStep(job).m_arrLayers.GetAt(0)->GetFeatures()->GetSize(), count);
}

TEST(Limits, AHundredThousandLayers)
{
    const long count = Size(1'000, 100'000);
    const TempDir dir;
    const std::string path = MakeBareJob(dir);
    for (long i = 0; i < count; ++i)
    {
        const std::string layer = path + "/steps/pcb/layers/l" + std::to_string(i);
        fs::create_directories(layer);
        std::ofstream(layer + "/features") << "P 0 0 0 P 0 0\n";
    }
    CJOBX job;
    RecordProperty("seconds", std::to_string(Read(job, path).count()));
    EXPECT_EQ(OnlyStep(job).m_arrLayers.GetSize(), count);
}

TEST(Limits, AMillionAttributeTexts)
{
    const long count = Size(50'000, 1'000'000);
    const TempDir dir;
    const std::string path = MakeBareJob(dir);
    {
        fs::create_directories(path + "/steps/pcb/layers/top");
        std::ofstream file(path + "/steps/pcb/layers/top/features", std::ios::binary);
        file << "@0 .geometry\n";
        for (long i = 0; i < count; ++i)
            file << "&" << i << " text " << i << "\n";
        for (long i = 0; i < count; ++i)
            file << "P 0 0 0 P 0 0;0=" << i << "\n";
    }
    CJOBX job;
    RecordProperty("seconds", std::to_string(Read(job, path).count()));
    const CJOBXlayer& layer = *OnlyStep(job).m_arrLayers.GetAt(0);
    ASSERT_EQ(layer.m_arrAttributeTexts.GetSize(), count);
    ASSERT_EQ(layer.GetFeatures()->GetSize(), count);
    EXPECT_EQ(layer.GetFeatures()->GetAt(count - 1)->nGetPropertyCount(), 1);
}

TEST(Limits, NamesOf64KilobytesEverywhere)
{
    const std::string name(65536, 'N');
    const TempDir dir;
    const std::string path = MakeBareJob(dir);
    dir.Write("job/matrix/matrix", MatrixWith("PCB") + MatrixWith(name) + "LAYER {\n    NAME=" + name + "\n}\n");
    const std::string step = "job/steps/pcb/";
    dir.Write(step + "stephdr", "STEP-REPEAT {\n    NAME=" + name + "\n}\n");
    dir.Write(step + "layers/top/features", "$0 " + name + "\n@0 " + name + "\n&0 " + name + "\nP 0 0 0 P 0 0;0=0\n");
    dir.Write(step + "layers/top/components", "# CMP 0\nCMP 0 0 0 0 N " + name + " " + name + "\n");
    dir.Write(step + "eda/data", "# NET 0\nNET " + name + "\n# PKG 0\nPKG " + name + " 1 0 0 1 1\n");
    dir.Write(step + "netlists/cadnet/netlist", "$0 " + name + "\n");
    dir.Write("job/misc/info", "JOB_NAME=" + name + "\n");
    dir.Write("job/fonts/standard", "CHAR " + name + "\nLINE 0 0 1 1 P R 1\nECHAR\n");
    const Told told;
    CJOBX job;
    Read(job, path);
    EXPECT_EQ(job.m_pMatrix->m_arrSteps.GetAt(1)->m_sName, name.c_str());
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetSize(), 1) << "no directory can have the other name";
    EXPECT_GT(told.count, 0) << "the system refused to look for it";
    EXPECT_EQ(OnlyStep(job).m_arrComponents.GetAt(0)->m_arrCmps.GetAt(0)->m_sName, name.c_str());
    EXPECT_EQ(job.m_pMisc->m_sJobName, name.c_str());
    job.UnitConvert(25.4);
    job.RebuildStepObj();
    dir.MakeDir("out");
    job.WriteODBData(dir.Path("out").c_str(), 1);
    CJOBX again;
    Read(again, dir.Path("out/job"));
    EXPECT_EQ(OnlyStep(again).m_arrComponents.GetAt(0)->m_arrCmps.GetAt(0)->m_sName, name.c_str());
}

TEST(Limits, StepsNestedAThousandDeepAreOrdered)
{
    const int depth = kIsSlowBuild ? 200 : 1000;
    const TempDir dir;
    std::string matrix;
    for (int i = 0; i < depth; ++i)
    {
        const std::string name = "s" + std::to_string(i);
        matrix += MatrixWith(name);
        dir.Write("job/steps/" + name + "/profile", "");
        if (i + 1 < depth)
            dir.Write("job/steps/" + name + "/stephdr",
                      "STEP-REPEAT {\n    NAME=s" + std::to_string(i + 1) + "\n    NX=2\n    NY=2\n}\n");
    }
    dir.Write("job/matrix/matrix", matrix);
    CJOBX job;
    RecordProperty("seconds", std::to_string(Read(job, dir.Path("job")).count()));
    job.RebuildStepObj();
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetSize(), depth);
}

TEST(Limits, StepsThatRepeatEachOtherOrThemselvesAreOrdered)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", MatrixWith("a") + MatrixWith("b") + MatrixWith("c") + MatrixWith("self"));
    const std::string repeats[][2] = {{"a", "b"}, {"b", "c"}, {"c", "a"}, {"self", "SELF"}};
    for (const auto& [step, child] : repeats)
    {
        dir.Write("job/steps/" + step + "/profile", "");
        dir.Write("job/steps/" + step + "/stephdr",
                  "STEP-REPEAT {\n    NAME=" + child + "\n    NX=1000000000\n    NY=1000000000\n}\n");
    }
    CJOBX job;
    Read(job, dir.Path("job"));
    job.RebuildStepObj();
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetSize(), 4);
    dir.MakeDir("out");
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_TRUE(dir.Exists("out/job/steps/self/stephdr"));
}

TEST(Limits, LinksToThemselvesAndToTheRootLeadNowhere)
{
    const TempDir dir;
    const std::string path = MakeBareJob(dir);
    const std::string layers = path + "/steps/pcb/layers/";
    dir.Write("job/steps/pcb/layers/top/features", "P 0 0 0 P 0 0\n");
    fs::create_symlink("loop", layers + "loop");
    fs::create_directory_symlink("/", layers + "root");
    fs::create_directory_symlink(".", layers + "here");
    fs::create_directory_symlink("..", layers + "up");
    fs::create_directory(layers + "bottom");
    fs::create_symlink("features", layers + "bottom/features");
    fs::create_directories(path + "/symbols/s");
    fs::create_directory_symlink("/", path + "/symbols/root");
    fs::create_directory_symlink("..", path + "/symbols/up");
    fs::create_symlink("features", path + "/symbols/s/features");
    fs::create_directory(path + "/misc");
    fs::create_symlink("info", path + "/misc/info");
    CJOBX job;
    Read(job, path);
    EXPECT_EQ(OnlyStep(job).m_arrLayers.GetSize(), 1);
    EXPECT_EQ(job.m_pSpecialSymbols->GetSize(), 0);
}

TEST(Limits, PipesAndDevicesAreNeverOpened)
{
    const TempDir dir;
    const std::string path = MakeBareJob(dir);
    const std::string step = path + "/steps/pcb/";
    for (const std::string directory :
         {"layers/pipe", "layers/zero", "layers/tty", "layers/socket", "eda", "netlists/cadnet"})
        fs::create_directories(step + directory);
    for (const std::string directory : {"symbols/pipe", "symbols/zero", "fonts", "misc"})
        fs::create_directories(path + "/" + directory);
    const auto pipe = [](const std::string& place) { ASSERT_EQ(::mkfifo(place.c_str(), 0600), 0) << place; };
    pipe(step + "layers/pipe/features");
    pipe(step + "layers/pipe/components");
    pipe(step + "stephdr");
    pipe(path + "/symbols/pipe/features");
    pipe(path + "/symbols/pipe/features.Z");
    pipe(path + "/misc/info");
    fs::create_symlink("/dev/zero", step + "layers/zero/features");
    fs::create_symlink("/dev/zero", step + "layers/zero/components");
    fs::create_symlink("/dev/tty", step + "layers/tty/features");
    fs::create_symlink("/dev/random", step + "eda/data");
    fs::create_symlink("/dev/zero", step + "netlists/cadnet/netlist");
    fs::create_symlink("/dev/zero", path + "/symbols/zero/features");
    fs::create_symlink("/dev/zero", path + "/fonts/standard");
    CJOBX job;
    Read(job, path);
    EXPECT_EQ(OnlyStep(job).m_arrLayers.GetSize(), 0);
    EXPECT_EQ(OnlyStep(job).m_arrComponents.GetSize(), 0);
    EXPECT_EQ(job.m_pSpecialSymbols->GetSize(), 0);
    EXPECT_EQ(job.m_pFonts->m_arrCharacters.GetSize(), 0);
    fs::remove(step + "profile");
    pipe(step + "profile");
    CJOBX withoutProfile;
    Read(withoutProfile, path);
    fs::remove(path + "/matrix/matrix");
    pipe(path + "/matrix/matrix");
    const JobxMessageBoxHandler before = SetMessageBoxHandler([](CWnd*, LPCSTR, LPCSTR, UINT) { return 1; });
    CJOBX withoutMatrix;
    EXPECT_EQ(withoutMatrix.ParseODBOfMFC(path.c_str()), 0);
    SetMessageBoxHandler(before);
}
