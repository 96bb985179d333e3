#include "Works.h"

#include "FeaturesText.h"
#include "Floor.h"
#include "JOBXCLSDLL.h"
#include "JobGenerator.h"
#include "Random.h"
#include "StepFilesText.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace
{
namespace fs = std::filesystem;

// Bytes of the files for each net or component, and components for each net, in jobs of the generator.
constexpr double kEdaBytesOfNet = 1295.0;
constexpr double kComponentBytes = 233.0;
constexpr double kNetlistBytesOfNet = 339.0;
constexpr double kComponentsOfNet = 1.08;
constexpr double kSymbolBytes = 2850.0;
constexpr std::uint64_t kSeed = 1;

void Restored(const fs::path&) {}

void Save(const fs::path& path, const std::string& bytes)
{
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path.string());
}

void MakeFeatures(const fs::path& directory, double megabytes)
{
    Random random(kSeed);
    JobCounts counts;
    WriteLayerFeatures(directory / "input" / "features", static_cast<std::uint64_t>(megabytes * 1e6), {}, random,
                       counts);
}

StepPlan PlanOfNets(double nets)
{
    StepPlan plan;
    plan.nets = static_cast<std::int64_t>(nets);
    plan.components = static_cast<std::int64_t>(nets * kComponentsOfNet);
    plan.layers = 12;
    plan.featuresOfLayer = 30'000;
    return plan;
}

void MakeEda(const fs::path& directory, double megabytes)
{
    Random random(kSeed);
    JobCounts counts;
    WriteEda(directory / "input" / "data", PlanOfNets(megabytes * 1e6 / kEdaBytesOfNet), random, counts);
}

void MakeComponents(const fs::path& directory, double megabytes)
{
    Random random(kSeed);
    JobCounts counts;
    const StepPlan plan = PlanOfNets(megabytes * 1e6 / kComponentBytes / kComponentsOfNet);
    WriteComponents(directory / "input" / "components", plan, 0, plan.components, random, counts);
}

void MakeNetlist(const fs::path& directory, double megabytes)
{
    Random random(kSeed);
    JobCounts counts;
    WriteNetlist(directory / "input" / "netlist", PlanOfNets(megabytes * 1e6 / kNetlistBytesOfNet), random, counts);
}

// One small file of a job, repeated.
void MakeRepeated(const fs::path& directory, double megabytes, const char* file, const char* name)
{
    JobPlan plan;
    plan.megabytes = 0.1;
    plan.steps = 3;
    GenerateJob(plan, directory / "job");
    const std::string text = FileBytes((directory / "job" / file).string());
    fs::remove_all(directory / "job");
    Save(directory / "input" / name, Repeated(text, static_cast<std::size_t>(megabytes * 1e6)));
}

void MakeMatrix(const fs::path& directory, double megabytes)
{
    MakeRepeated(directory, megabytes, "matrix/matrix", "matrix");
}

void MakeHeader(const fs::path& directory, double megabytes)
{
    MakeRepeated(directory, megabytes, "steps/step1/stephdr", "stephdr");
}

JobPlan SymbolsPlan(double megabytes)
{
    JobPlan plan;
    plan.megabytes = 0.001;
    plan.layers = 1;
    plan.nets = 0;
    plan.components = 0;
    plan.symbols = static_cast<int>(megabytes * 1e6 / kSymbolBytes);
    return plan;
}

void MakeSymbols(const fs::path& directory, double megabytes)
{
    GenerateJob(SymbolsPlan(megabytes), directory / "input");
}

void MakePackedSymbols(const fs::path& directory, double megabytes)
{
    JobPlan plan = SymbolsPlan(megabytes);
    GenerateJob(plan, directory / "floor");
    plan.compressSymbols = true;
    GenerateJob(plan, directory / "input");
}

void RemoveUnpackedSymbols(const fs::path& input)
{
    for (const auto& entry : fs::directory_iterator(input / "symbols"))
        fs::remove(entry.path() / "features");
}

template <class Model>
std::shared_ptr<void> ReadFile(const fs::path& path)
{
    auto model = std::make_shared<Model>();
    if (model->ParseODBOfMFC(path.c_str()) != 1)
        throw std::runtime_error("cannot read " + path.string());
    return model;
}

JobPlan FeaturesPlan(double megabytes)
{
    JobPlan plan;
    plan.megabytes = megabytes;
    plan.nets = 0;
    plan.components = 0;
    return plan;
}

void MakeFeaturesJob(const fs::path& directory, double megabytes)
{
    GenerateJob(FeaturesPlan(megabytes), directory / "input");
}

// A job of features files whose features have unique numbers.
void MakeNumberedJob(const fs::path& directory, double megabytes)
{
    JobPlan plan = FeaturesPlan(megabytes);
    plan.uniqueNumbers = true;
    GenerateJob(plan, directory / "input");
}

// A small job in which one file is replaced by a large one, which `make` puts into the folder "input".
void MakeJobAround(const fs::path& directory, double megabytes, void (*make)(const fs::path&, double),
                   const char* place)
{
    JobPlan plan;
    plan.megabytes = 0.1;
    GenerateJob(plan, directory / "job");
    make(directory, megabytes);
    const fs::path step = directory / "job" / "steps" / "step1";
    fs::rename(directory / "input" / fs::path(place).filename(), step / place);
    fs::remove_all(directory / "input");
    fs::rename(directory / "job", directory / "input");
}

void MakeEdaJob(const fs::path& directory, double megabytes)
{
    MakeJobAround(directory, megabytes, MakeEda, "eda/data");
}

void MakeComponentsJob(const fs::path& directory, double megabytes)
{
    MakeJobAround(directory, megabytes, MakeComponents, "layers/comp_+_top/components");
}

void MakeNetlistJob(const fs::path& directory, double megabytes)
{
    MakeJobAround(directory, megabytes, MakeNetlist, "netlists/cadnet/netlist");
}

std::shared_ptr<void> ReadFeaturesFile(const fs::path& input)
{
    return ReadFile<CJOBXlayer>(input / "features");
}
std::shared_ptr<void> ReadEdaFile(const fs::path& input)
{
    return ReadFile<CJOBXdata>(input / "data");
}
std::shared_ptr<void> ReadComponentsFile(const fs::path& input)
{
    return ReadFile<CJOBXcomponents>(input / "components");
}
std::shared_ptr<void> ReadNetlistFile(const fs::path& input)
{
    return ReadFile<CJOBXnetlist>(input / "netlist");
}
std::shared_ptr<void> ReadMatrixFile(const fs::path& input)
{
    return ReadFile<CJOBXmatrix>(input);
}
std::shared_ptr<void> ReadHeaderFile(const fs::path& input)
{
    return ReadFile<CJOBXstephdr>(input / "stephdr");
}
std::shared_ptr<void> ReadJob(const fs::path& input)
{
    return ReadFile<CJOBX>(input);
}
// Only with a sink, as jobx has one, are references between files checked.
class IgnoredMessages : public CJOBXmessageSink
{
public:
    void OnMessage(const CJOBXmessage& /*message*/) override {}
};
std::shared_ptr<void> ReadJobCompletely(const fs::path& input)
{
    auto job = std::make_shared<CJOBX>();
    static IgnoredMessages ignored; // the job keeps its address
    CJOBXreading reading;
    reading.way = JOBXway::Complete;
    reading.pSink = &ignored;
    job->SetReading(reading);
    if (job->ParseODBOfMFC(input.c_str()) != 1)
        throw std::runtime_error("cannot read " + input.string());
    return job;
}
} // namespace

const std::vector<ReadingWork>& ReadingWorks()
{
    constexpr const char* kSplit = "splitting and converting the same bytes";
    constexpr const char* kReadAndSplit = "reading the files one by one and splitting them";
    constexpr const char* kReadAndSplitPlain = "reading the plain files and splitting them";
    static const std::vector<ReadingWork> works{
        {"features", "features", "<= 1.50", kSplit, 30.0, true, false, MakeFeatures, Restored, ReadFeaturesFile},
        {"EDA", "EDA", "<= 2.00", kSplit, 30.0, true, false, MakeEda, Restored, ReadEdaFile},
        {"components", "components", "<= 2.00", kSplit, 30.0, true, false, MakeComponents, Restored,
         ReadComponentsFile},
        {"netlist", "netlist", "<= 2.00", kSplit, 30.0, true, false, MakeNetlist, Restored, ReadNetlistFile},
        {"matrix", "matrix", "", kSplit, 10.0, true, false, MakeMatrix, Restored, ReadMatrixFile},
        {"header", "header", "", kSplit, 10.0, true, false, MakeHeader, Restored, ReadHeaderFile},
        {"symbols", "symbols, plain", "", kReadAndSplit, 10.0, false, true, MakeSymbols, Restored, ReadJob},
        {"symbols.Z", "symbols, .Z", "", kReadAndSplitPlain, 10.0, false, true, MakePackedSymbols,
         RemoveUnpackedSymbols, ReadJob},
        {"job", "whole job, 1 thread", "", kSplit, 30.0, true, false, MakeJob, Restored, ReadJob},
        {"job.complete", "whole job, complete, 1 thread", "", kSplit, 30.0, true, false, MakeJob, Restored,
         ReadJobCompletely},
        {"numbers", "features with unique numbers", "<= 1.30", kSplit, 30.0, true, false, MakeNumberedJob, Restored,
         ReadJob},
        {"numbers.complete", "features with unique numbers, complete", "<= 1.30", kSplit, 30.0, true, false,
         MakeNumberedJob, Restored, ReadJobCompletely},
    };
    return works;
}

const ReadingWork& FindWork(std::string_view name)
{
    for (const ReadingWork& work : ReadingWorks())
        if (work.name == name)
            return work;
    throw std::out_of_range("no such work: " + std::string(name));
}

const std::vector<KindOfJob>& KindsOfJob()
{
    static const std::vector<KindOfJob> kinds{
        {"made job", MakeJob}, {"features", MakeFeaturesJob},     {"with numbers", MakeNumberedJob},
        {"EDA", MakeEdaJob},   {"components", MakeComponentsJob}, {"netlist", MakeNetlistJob}};
    return kinds;
}

void MakeJob(const fs::path& directory, double megabytes)
{
    JobPlan plan;
    plan.megabytes = megabytes;
    const JobCounts counts = GenerateJob(plan, directory / "input");
    // An element of a contour has its point and the centre of its arc; a point of a net is round or has two sizes, too.
    const std::int64_t lengths = 4 * counts.lines + 2 * counts.pads + 6 * counts.arcs + 5 * counts.texts +
                                 4 * counts.barcodes + 4 * counts.contourElements + 5 * counts.packages +
                                 3 * counts.pins + 2 * counts.components + 2 * counts.toeprints + 7 * counts.netPoints;
    Save(directory / "lengths", std::to_string(lengths));
}

double LengthsOf(const fs::path& directory)
{
    return std::stod(FileBytes((directory / "lengths").string()));
}
