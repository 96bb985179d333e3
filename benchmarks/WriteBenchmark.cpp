// Writing a features file beside a loop that prints the same numbers with fprintf, and a whole job written beside its
// read.
#include "Floor.h"

#include "JOBXCLSDLL.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;

// A directory of the benchmark's own that goes when the program ends.
class Place
{
public:
    Place() : m_path(fs::temp_directory_path() / "jobx_benchmark_write") { fs::create_directories(m_path); }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place()
    {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    fs::path Path(const char* name) const { return m_path / name; }

private:
    fs::path m_path;
};

const Place& Output()
{
    static const Place place;
    return place;
}

std::string LayerFile()
{
    return InputFile("steps/stp/layers/ssb/features", "steps/pcb/layers/sst/features");
}

const CJOBXlayer& Layer()
{
    static const std::unique_ptr<CJOBXlayer> layer = []
    {
        auto made = std::make_unique<CJOBXlayer>();
        for (int i = 0; i < 10; ++i)
            made->ParseODBOfMFC(LayerFile().c_str());
        return made;
    }();
    return *layer;
}

void BM_FeaturesWriter(benchmark::State& state)
{
    const CJOBXlayer& layer = Layer();
    const CString folder = Output().Path("layer").c_str();
    for (auto _ : state)
        layer.WriteODBData(folder, 1, 1);
    state.SetBytesProcessed(static_cast<std::int64_t>(static_cast<std::uintmax_t>(state.iterations()) *
                                                      fs::file_size(Output().Path("layer") / "features")));
}

// The coordinates of every line and pad of the layer and nothing else, through the stream's own buffer.
void BM_FprintfLoop(benchmark::State& state)
{
    std::vector<double> numbers;
    const CJOBXlayObjArray& features = *Layer().GetFeatures();
    for (__int64 i = 0; i < features.GetSize(); ++i)
        if (const auto* const line = dynamic_cast<const CJOBXlayObjLine*>(features.GetAt(i)))
            for (const double number : {line->GetStartPoint().GetX(), line->GetStartPoint().GetY(),
                                        line->GetEndPoint().GetX(), line->GetEndPoint().GetY()})
                numbers.push_back(number);
    const fs::path path = Output().Path("numbers");
    for (auto _ : state)
    {
        std::FILE* const file = std::fopen(path.c_str(), "w");
        if (file == nullptr)
        {
            state.SkipWithError("the file cannot be made");
            break;
        }
        for (const double number : numbers)
            std::fprintf(file, "%lf ", number);
        std::fclose(file);
    }
    state.SetBytesProcessed(
        static_cast<std::int64_t>(static_cast<std::uintmax_t>(state.iterations()) * fs::file_size(path)));
}

CString JobPath()
{
    return fs::path(InputFile("matrix/matrix", "matrix/matrix")).parent_path().parent_path().c_str();
}

void BM_ReadJob(benchmark::State& state)
{
    for (auto _ : state)
    {
        auto job = std::make_unique<CJOBX>();
        job->ParseODBOfMFC(JobPath());
        state.PauseTiming();
        job.reset();
        state.ResumeTiming();
    }
}

void BM_WriteJob(benchmark::State& state)
{
    CJOBX job;
    job.ParseODBOfMFC(JobPath());
    const CString output = Output().Path("").c_str();
    for (auto _ : state)
        job.WriteODBData(output, 1);
}

BENCHMARK(BM_FeaturesWriter)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FprintfLoop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadJob)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteJob)->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace
