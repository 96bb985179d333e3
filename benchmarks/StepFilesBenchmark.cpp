// The readers of a step's EDA data, components and netlist beside their floors, and the read of a whole job on one and
// on two threads. Files are read from the page cache.
#include "Floor.h"

#include "JOBXCLSDLL.h"

#include <omp.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace
{
constexpr std::size_t kSize = 10'000'000;

// A real file of a step, repeated, also as a file of its own that goes when the program ends.
class Input
{
public:
    Input(const char* name, const char* realPath, const char* samplePath)
        : m_path(std::filesystem::temp_directory_path() / ("jobx_benchmark_" + std::string(name))),
          m_text(Repeated(FileBytes(InputFile(realPath, samplePath)), kSize))
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

const Input& Eda()
{
    static const Input input("eda", "steps/stp/eda/data", "steps/pcb/eda/data");
    return input;
}

const Input& Components()
{
    static const Input input("components", "steps/stp/layers/comp_+_top/components",
                             "steps/pcb/layers/comp_+_top/components");
    return input;
}

const Input& Netlist()
{
    static const Input input("netlist", "steps/stp/netlists/cadnet/netlist", "steps/pcb/netlists/cadnet/netlist");
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

void BM_EdaFloor(benchmark::State& state)
{
    RunFloor(state, Eda().Text());
}
void BM_EdaReader(benchmark::State& state)
{
    Read<CJOBXdata>(state, Eda());
}
void BM_ComponentsFloor(benchmark::State& state)
{
    RunFloor(state, Components().Text());
}
void BM_ComponentsReader(benchmark::State& state)
{
    Read<CJOBXcomponents>(state, Components());
}
void BM_NetlistFloor(benchmark::State& state)
{
    RunFloor(state, Netlist().Text());
}
void BM_NetlistReader(benchmark::State& state)
{
    Read<CJOBXnetlist>(state, Netlist());
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
BENCHMARK(BM_ComponentsFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ComponentsReader)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NetlistFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NetlistReader)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WholeJob)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace
