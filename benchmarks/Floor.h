// What the benchmarks compare a reader with, and their inputs.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Splits the text into lines and blank-separated tokens and converts every token that begins like a number with
// std::from_chars, keeping nothing but a sum: the least that any reader of such a file has to do.
double SplitAndConvert(std::string_view text);

// A number of a text, with as many decimals as it has there.
struct PrintedNumber
{
    double value = 0.0;
    int decimals = 0;
};

// All numbers of a text, in order.
std::vector<PrintedNumber> NumbersOf(std::string_view text);

// Prints the numbers with std::to_chars and a blank behind each through one buffer into a file: the least that any
// writer of a text with these numbers has to do. Raises std::runtime_error when the file cannot be written.
void PrintNumbers(const std::vector<PrintedNumber>& numbers, const std::string& path);

// The processor seconds that freeing so many blocks takes, of equal size, in the order in which they were allocated:
// the least that destroying a model of so many blocks takes.
double FreeingSeconds(std::size_t blocks, std::size_t size);

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
    state.SetBytesProcessed(static_cast<std::int64_t>(static_cast<std::size_t>(state.iterations()) * text.size()));
    state.counters["memory/byte"] = memory / static_cast<double>(text.size());
}
