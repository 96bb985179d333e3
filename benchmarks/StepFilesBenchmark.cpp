// The readers of a step's EDA data, components and netlist beside their floors, and the read of a whole job on one and
// on two threads. Files are read from the page cache.
#include "Floor.h"

#include "JOBXCLSDLL.h"

#include <omp.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace
{
constexpr std::size_t kSize = 10'000'000;
// To see whether ten times the bytes take ten times as long.
constexpr std::size_t kLarge = 30'000'000;
constexpr std::size_t kVeryLarge = 300'000'000;

// A real file of a step, repeated, also as a file of its own that goes when the program ends.
class Input
{
public:
    Input(const char* name, const char* realPath, const char* samplePath, std::size_t size)
        : m_path(std::filesystem::temp_directory_path() /
                 ("jobx_benchmark_" + std::string(name) + '_' + std::to_string(std::random_device()()))),
          m_text(Repeated(FileBytes(InputFile(realPath, samplePath)), size))
    {
        std::ofstream(m_path, std::ios::binary) << m_text;
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input()
    {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    const std::string& Text() const { return m_text; }
    CString Path() const { return m_path.c_str(); }

private:
    std::filesystem::path m_path;
    std::string m_text;
};

Input EdaOf(std::size_t size)
{
    return {"eda", "steps/stp/eda/data", "steps/pcb/eda/data", size};
}

Input ComponentsOf(std::size_t size)
{
    return {"components", "steps/stp/layers/comp_+_top/components", "steps/pcb/layers/comp_+_top/components", size};
}

Input NetlistOf(std::size_t size)
{
    return {"netlist", "steps/stp/netlists/cadnet/netlist", "steps/pcb/netlists/cadnet/netlist", size};
}

const Input& Eda()
{
    static const Input input = EdaOf(kSize);
    return input;
}

const Input& Components()
{
    static const Input input = ComponentsOf(kSize);
    return input;
}

const Input& Netlist()
{
    static const Input input = NetlistOf(kSize);
    return input;
}

template <class Model>
void Read(benchmark::State& state, const Input& input)
{
    RunReader(state, input.Text(),
              [&input](std::string_view)
              {
                  auto model = std::make_unique<Model>();
                  model->ParseODBOfMFC(input.Path());
                  return model;
              });
}

template <class Model>
void Destroy(benchmark::State& state, const Input& input)
{
    for (auto _ : state)
    {
        state.PauseTiming();
        auto model = std::make_unique<Model>();
        model->ParseODBOfMFC(input.Path());
        state.ResumeTiming();
        model.reset();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * input.Text().size()));
}

template <class Model, Input (*MakeInput)(std::size_t)>
void BM_Large(benchmark::State& state)
{
    Read<Model>(state, MakeInput(static_cast<std::size_t>(state.range(0))));
}

void BM_EdaFloor(benchmark::State& state)
{
    RunFloor(state, Eda().Text());
}
void BM_EdaReader(benchmark::State& state)
{
    Read<CJOBXdata>(state, Eda());
}
void BM_EdaDestroy(benchmark::State& state)
{
    Destroy<CJOBXdata>(state, Eda());
}
void BM_ComponentsFloor(benchmark::State& state)
{
    RunFloor(state, Components().Text());
}
void BM_ComponentsReader(benchmark::State& state)
{
    Read<CJOBXcomponents>(state, Components());
}
void BM_ComponentsDestroy(benchmark::State& state)
{
    Destroy<CJOBXcomponents>(state, Components());
}
void BM_NetlistFloor(benchmark::State& state)
{
    RunFloor(state, Netlist().Text());
}
void BM_NetlistReader(benchmark::State& state)
{
    Read<CJOBXnetlist>(state, Netlist());
}
void BM_NetlistDestroy(benchmark::State& state)
{
    Destroy<CJOBXnetlist>(state, Netlist());
}

void BM_WholeJob(benchmark::State& state)
{
    const std::filesystem::path job =
        std::filesystem::path(InputFile("matrix/matrix", "matrix/matrix")).parent_path().parent_path();
    std::size_t bytes = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(job / "steps"))
        if (entry.is_regular_file())
            bytes += entry.file_size();
    omp_set_num_threads(static_cast<int>(state.range(0)));
    for (auto _ : state)
    {
        auto model = std::make_unique<CJOBX>();
        if (model->ParseODBOfMFC(job.c_str()) != 1)
            state.SkipWithError("the job cannot be read");
        state.PauseTiming();
        model.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

BENCHMARK(BM_EdaFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EdaReader)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EdaDestroy)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ComponentsFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ComponentsReader)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ComponentsDestroy)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NetlistFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NetlistReader)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NetlistDestroy)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Large<CJOBXdata, EdaOf>)->Arg(kLarge)->Arg(kVeryLarge)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Large<CJOBXcomponents, ComponentsOf>)->Arg(kLarge)->Arg(kVeryLarge)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Large<CJOBXnetlist, NetlistOf>)->Arg(kLarge)->Arg(kVeryLarge)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WholeJob)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace
