// The writers of a step's files beside a loop that only prints the same numbers, and a whole job written beside its
// read.
#include "Floor.h"

#include "JOBXCLSDLL.h"
#include "foundation/CTextWriter.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
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

// The numbers of a written file: blank-separated words, and what stands around "=" and "," in attribute lists.
struct Numbers
{
    std::vector<double> reals;
    std::vector<int> integers;
};

Numbers NumbersOf(const fs::path& path)
{
    Numbers numbers;
    const std::string text = FileBytes(path.string());
    constexpr const char* kBetween = " \n=,";
    for (std::size_t at = 0; (at = text.find_first_not_of(kBetween, at)) != std::string::npos;)
    {
        const std::size_t end = std::min(text.find_first_of(kBetween, at), text.size());
        const std::string word = text.substr(at, end - at);
        at = end;
        char* rest = nullptr;
        const double value = std::strtod(word.c_str(), &rest);
        if (*rest != '\0')
            continue;
        if (word.find('.') != std::string::npos)
            numbers.reals.push_back(value);
        else
            numbers.integers.push_back(static_cast<int>(value));
    }
    return numbers;
}

// The least that any writer of them has to do: each number and a blank, through the same buffer.
void Print(const Numbers& numbers, const CString& path)
{
    CTextWriter writer(path, "", 0);
    CTextLine out(writer);
    for (const double number : numbers.reals)
        out << Fixed{number} << ' ';
    for (const int number : numbers.integers)
        out << number << ' ';
}

// Times `write`, which makes the file `name` of the output directory, with the floor of its numbers in between. The
// counters say what the floor took and how many times that `write` took, in processor time.
template <class Write>
void RunBesideFloor(benchmark::State& state, const char* name, Write write)
{
    write();
    const fs::path path = Output().Path(name);
    const Numbers numbers = NumbersOf(path);
    const CString floorPath = Output().Path("numbers").c_str();
    std::clock_t floorTime = 0;
    std::clock_t writeTime = 0;
    for (auto _ : state)
    {
        const std::clock_t begin = std::clock();
        Print(numbers, floorPath);
        const std::clock_t middle = std::clock();
        write();
        const std::clock_t end = std::clock();
        floorTime += middle - begin;
        writeTime += end - middle;
        state.SetIterationTime(static_cast<double>(end - middle) / CLOCKS_PER_SEC);
    }
    state.SetBytesProcessed(
        static_cast<std::int64_t>(static_cast<std::uintmax_t>(state.iterations()) * fs::file_size(path)));
    state.counters["floor_ms"] =
        1e3 * static_cast<double>(floorTime) / CLOCKS_PER_SEC / static_cast<double>(state.iterations());
    state.counters["times_floor"] = static_cast<double>(writeTime) / static_cast<double>(floorTime);
}

// A file of the real job read ten times into one model.
template <class Model>
std::unique_ptr<Model> TenTimes(const char* realPath, const char* samplePath)
{
    auto model = std::make_unique<Model>();
    for (int i = 0; i < 10; ++i)
        model->ParseODBOfMFC(InputFile(realPath, samplePath).c_str());
    return model;
}

void BM_FeaturesWriter(benchmark::State& state)
{
    const auto layer = TenTimes<CJOBXlayer>("steps/stp/layers/ssb/features", "steps/pcb/layers/sst/features");
    RunBesideFloor(state, "features", [&] { layer->WriteODBData(Output().Path("").c_str(), 0, 1); });
}

// The reals of that file and nothing else, through the stream's own buffer.
void BM_FprintfLoop(benchmark::State& state)
{
    TenTimes<CJOBXlayer>("steps/stp/layers/ssb/features", "steps/pcb/layers/sst/features")
        ->WriteODBData(Output().Path("").c_str(), 0, 1);
    const Numbers numbers = NumbersOf(Output().Path("features"));
    const fs::path path = Output().Path("numbers");
    for (auto _ : state)
    {
        std::FILE* const file = std::fopen(path.c_str(), "w");
        if (file == nullptr)
        {
            state.SkipWithError("the file cannot be made");
            break;
        }
        for (const double number : numbers.reals)
            std::fprintf(file, "%lf ", number);
        std::fclose(file);
    }
    state.SetBytesProcessed(
        static_cast<std::int64_t>(static_cast<std::uintmax_t>(state.iterations()) * fs::file_size(path)));
}

// Mostly surfaces.
void BM_SurfacesWriter(benchmark::State& state)
{
    const auto layer = TenTimes<CJOBXlayer>("steps/stp/layers/bottom/features", "steps/pcb/layers/bottom/features");
    RunBesideFloor(state, "features", [&] { layer->WriteODBData(Output().Path("").c_str(), 0, 1); });
}

void BM_EdaWriter(benchmark::State& state)
{
    const auto data = TenTimes<CJOBXdata>("steps/stp/eda/data", "steps/pcb/eda/data");
    RunBesideFloor(state, "data", [&] { data->WriteODBData(Output().Path("").c_str()); });
}

void BM_ComponentsWriter(benchmark::State& state)
{
    const auto components =
        TenTimes<CJOBXcomponents>("steps/stp/layers/comp_+_top/components", "steps/pcb/layers/comp_+_top/components");
    RunBesideFloor(state, "components", [&] { components->WriteODBData(Output().Path("").c_str()); });
}

void BM_NetlistWriter(benchmark::State& state)
{
    const auto netlist =
        TenTimes<CJOBXnetlist>("steps/stp/netlists/cadnet/netlist", "steps/pcb/netlists/cadnet/netlist");
    RunBesideFloor(state, "netlist", [&] { netlist->m_arrNets.WriteODBData(Output().Path("").c_str()); });
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

// Each time into a new directory. Nothing is deleted in between: a file system without a journal does not give the
// numbers of files deleted within the last minute to new ones, and searches past each of them for every file it makes.
void BM_WriteJob(benchmark::State& state)
{
    CJOBX job;
    job.ParseODBOfMFC(JobPath());
    static int count = 0; // of the directories made so far
    for (auto _ : state)
    {
        state.PauseTiming();
        const fs::path output = Output().Path(("job" + std::to_string(count++)).c_str());
        fs::create_directory(output);
        state.ResumeTiming();
        job.WriteODBData(output.c_str(), 1);
    }
}

// In the place of the same job.
void BM_ReplaceJob(benchmark::State& state)
{
    CJOBX job;
    job.ParseODBOfMFC(JobPath());
    const CString output = Output().Path("").c_str();
    for (auto _ : state)
        job.WriteODBData(output, 1);
}

constexpr int kWrittenJobs = 5; // they stay until the end

BENCHMARK(BM_FeaturesWriter)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FprintfLoop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SurfacesWriter)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EdaWriter)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ComponentsWriter)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NetlistWriter)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadJob)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteJob)->Iterations(kWrittenJobs)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReplaceJob)->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace
