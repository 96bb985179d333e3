#include "Floor.h"

#include <malloc.h>

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

double SplitAndConvert(std::string_view text)
{
    double sum = 0.0;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end)
    {
        const auto* newline = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        const char* const lineEnd = newline != nullptr ? newline : end;
        while (at != lineEnd)
        {
            while (at != lineEnd && *at == ' ')
                ++at;
            if (at != lineEnd && ((*at >= '0' && *at <= '9') || *at == '-' || *at == '.'))
            {
                double value = 0.0;
                at = std::from_chars(at, lineEnd, value).ptr;
                sum += value;
            }
            while (at != lineEnd && *at != ' ')
                ++at;
        }
        at = newline != nullptr ? newline + 1 : end;
    }
    return sum;
}

std::string InputFile(std::string_view realPath, std::string_view samplePath)
{
    const char* const chosen = std::getenv("JOBX_REAL_JOBS");
    const std::string real =
        std::string(chosen != nullptr ? chosen : JOBX_REAL_JOBS_DIR) + "/beagleboneblack/" + std::string(realPath);
    return std::filesystem::exists(real) ? real : std::string(JOBX_SAMPLES_DIR "/blinker/") + std::string(samplePath);
}

std::string FileBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string Repeated(const std::string& text, std::size_t size)
{
    std::string all;
    all.reserve(size + text.size());
    while (!text.empty() && all.size() < size)
        all += text;
    return all;
}

std::size_t AllocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void RunFloor(benchmark::State& state, const std::string& text)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(SplitAndConvert(text));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
