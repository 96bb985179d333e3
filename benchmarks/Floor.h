// What the benchmarks compare a reader with, and their inputs.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

// Splits the text into lines and blank-separated tokens and converts every token that begins like a number with
// std::from_chars, keeping nothing but a sum: the least that any reader of such a file has to do.
double SplitAndConvert(std::string_view text);

// A file of a real job when there is one (environment variable JOBX_REAL_JOBS, else beside the sources), else of the
// sample; the relative paths are below the job's directory.
std::string InputFile(std::string_view realPath, std::string_view samplePath);

// The bytes of a file.
std::string FileBytes(const std::string& path);

// The text repeated until it has `size` bytes or more.
std::string Repeated(const std::string& text, std::size_t size);

// Bytes that are allocated now.
std::size_t AllocatedBytes();

// Runs the floor on the text.
void RunFloor(benchmark::State& state, const std::string& text);

// Runs `read`, which answers the model it made, on the text. Destroying the model is not timed: the floor has none. The
// counter says how much memory the model takes for each byte of the text.
template <class Read>
void RunReader(benchmark::State& state, const std::string& text, Read read)
{
    double memory = 0.0;
    for (auto _ : state)
    {
        const std::size_t before = AllocatedBytes();
        auto model = read(std::string_view(text));
        memory = static_cast<double>(AllocatedBytes() - before);
        benchmark::DoNotOptimize(model.get());
        state.PauseTiming();
        model.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
    state.counters["memory/byte"] = memory / static_cast<double>(text.size());
}
