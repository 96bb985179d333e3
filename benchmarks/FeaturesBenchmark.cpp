// The features reader beside its floor, on the largest silk-screen layer of a real job and on the same layer repeated
// to 100 MB.
#include "Floor.h"

#include "foundation/CLineScanner.h"
#include "layer/CJOBXlayer.h"
#include "layer/FeaturesReader.h"

namespace
{
const std::string& Layer()
{
    static const std::string bytes =
        FileBytes(InputFile("steps/stp/layers/ssb/features", "steps/pcb/layers/sst/features"));
    return bytes;
}

const std::string& LargeLayer()
{
    static const std::string bytes = Repeated(Layer(), 100'000'000);
    return bytes;
}

std::unique_ptr<CJOBXlayer> ReadLayer(std::string_view text)
{
    auto layer = std::make_unique<CJOBXlayer>();
    CLineScanner scanner(text);
    ReadFeatures(scanner, *layer);
    return layer;
}

void BM_FeaturesFloor(benchmark::State& state)
{
    RunFloor(state, Layer());
}
void BM_FeaturesReader(benchmark::State& state)
{
    RunReader(state, Layer(), ReadLayer);
}
void BM_FeaturesFloor100MB(benchmark::State& state)
{
    RunFloor(state, LargeLayer());
}
void BM_FeaturesReader100MB(benchmark::State& state)
{
    RunReader(state, LargeLayer(), ReadLayer);
}

BENCHMARK(BM_FeaturesFloor);
BENCHMARK(BM_FeaturesReader);
BENCHMARK(BM_FeaturesFloor100MB)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FeaturesReader100MB)->Unit(benchmark::kMillisecond);
} // namespace

BENCHMARK_MAIN();
