#include "Floor.h"

#include <malloc.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <stdexcept>
#include <system_error>

namespace
{
bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool IsWordCharacter(char character)
{
    return IsDigit(character) || (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           character == '_' || character == '.' || character == '-';
}

constexpr int kMostScaled = 9;
constexpr double kPowers[kMostScaled + 1] = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// Prints so many digits of the number, with leading zeros, two at a time.
char* PrintDigits(char* at, std::uint64_t number, int digits)
{
    constexpr const char* kPairs = "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
                                   "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
                                   "8081828384858687888990919293949596979899";
    char* place = at + digits;
    for (; place - at >= 2; number /= 100)
        std::memcpy(place -= 2, kPairs + 2 * (number % 100), 2);
    if (place != at)
        *at = static_cast<char>('0' + number % 10);
    return at + digits;
}

// Nothing spared: rounds by one multiplication, which is exact for all but ties.
char* PrintScaled(char* at, double value, int decimals)
{
    if (std::signbit(value))
        *at++ = '-';
    const double power = kPowers[decimals];
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): a call would cost more than all the rest
    const auto scaled = static_cast<std::uint64_t>(std::fabs(value) * power + 0.5);
    const auto divisor = static_cast<std::uint64_t>(power);
    const std::uint64_t whole = scaled / divisor;
    int digits = 1;
    for (std::uint64_t rest = whole; rest >= 10; rest /= 10)
        ++digits;
    at = PrintDigits(at, whole, digits);
    if (decimals == 0)
        return at;
    *at++ = '.';
    return PrintDigits(at, scaled % divisor, decimals);
}
} // namespace

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

std::vector<PrintedNumber> NumbersOf(std::string_view text)
{
    std::vector<PrintedNumber> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    bool inWord = false; // digits in a name are no number
    while (at != end)
    {
        PrintedNumber number;
        const char* const begin = at;
        const auto converted = inWord ? std::from_chars_result{at, std::errc::invalid_argument}
                                      : std::from_chars(at, end, number.value, std::chars_format::fixed);
        const bool isNumber = converted.ec == std::errc() && (IsDigit(*begin) || *begin == '-' || *begin == '.');
        if (!isNumber)
        {
            inWord = IsWordCharacter(*at);
            ++at;
            continue;
        }
        at = converted.ptr;
        const std::string_view token(begin, static_cast<std::size_t>(at - begin));
        const std::size_t point = token.find('.');
        number.decimals = point == std::string_view::npos ? 0 : static_cast<int>(token.size() - point - 1);
        numbers.push_back(number);
        inWord = true;
    }
    return numbers;
}

void PrintNumbers(const std::vector<PrintedNumber>& numbers, const std::string& path)
{
    constexpr std::size_t kBuffer = 1U << 16U;
    constexpr std::size_t kLongest = 400; // digits of the largest double, its point and its decimals
    constexpr double kLargestScaled = 1e9;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"), &std::fclose);
    if (!file)
        throw std::runtime_error("cannot make " + path);
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    const auto buffer = std::make_unique<char[]>(kBuffer);
    char* at = buffer.get();
    bool written = true;
    const auto flush = [&]
    {
        const auto used = static_cast<std::size_t>(at - buffer.get());
        written = std::fwrite(buffer.get(), 1, used, file.get()) == used && written;
        at = buffer.get();
    };
    for (const PrintedNumber& number : numbers)
    {
        if (buffer.get() + kBuffer - at <= static_cast<std::ptrdiff_t>(kLongest))
            flush();
        if (number.decimals <= kMostScaled && std::fabs(number.value) < kLargestScaled)
            at = PrintScaled(at, number.value, number.decimals);
        else
            at = std::to_chars(at, at + kLongest, number.value, std::chars_format::fixed, number.decimals).ptr;
        *at++ = ' ';
    }
    flush();
    if (!written)
        throw std::runtime_error("cannot write " + path);
}

double FreeingSeconds(std::size_t blocks, std::size_t size)
{
    std::vector<void*> allocated(blocks);
    for (void*& block : allocated)
    {
        block = std::malloc(size);
        if (block == nullptr)
            throw std::bad_alloc();
        std::memset(block, 0, size);
    }
    const std::clock_t begin = std::clock();
    for (void* const block : allocated)
        std::free(block);
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
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
    state.SetBytesProcessed(static_cast<std::int64_t>(static_cast<std::size_t>(state.iterations()) * text.size()));
}
