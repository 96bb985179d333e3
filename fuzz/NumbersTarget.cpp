// Numbers: what the library reads and prints, beside what the C library does.
#include "FuzzTargets.h"
#include "JOBXCLSDLL.h"
#include "Scratch.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace
{
constexpr std::size_t kMostNumbers = 64;

// The lines of the input as texts without NUL.
std::vector<std::string> Texts(std::string_view input)
{
    std::vector<std::string> texts;
    while (!input.empty() && texts.size() < kMostNumbers)
    {
        const std::size_t end = std::min(input.find('\n'), input.size());
        texts.emplace_back(input.substr(0, end));
        std::erase(texts.back(), '\0');
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return texts;
}

bool Same(double a, double b)
{
    return std::isnan(a) ? std::isnan(b) : std::memcmp(&a, &b, sizeof a) == 0;
}

int SaturatedInteger(const std::string& text)
{
    const long long value = std::strtoll(text.c_str(), nullptr, 10); // saturates itself
    return static_cast<int>(
        std::clamp<long long>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

std::string Printed(const char* format, double value)
{
    char text[400] = {}; // the longest double has 309 digits before its point
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string BytesOf(const CString& path)
{
    std::string bytes;
    std::FILE* const file = std::fopen(path, "rb");
    Require(file != nullptr, "what was written is there");
    char block[4096];
    for (std::size_t got = 0; (got = std::fread(block, 1, sizeof block, file)) > 0;)
        bytes.append(block, got);
    std::fclose(file);
    return bytes;
}

// Reads each text as a real and as an integer; answers the reals.
std::vector<double> ReadAll(const std::vector<std::string>& texts)
{
    std::string file;
    for (const std::string& text : texts)
        file += "STEP-REPEAT {\nX=" + text + "\nNX=" + text + "\n}\n";
    CJOBXstephdr header;
    header.ParseODBOfMFC(ScratchFile("numbers.txt", file));
    const CJOBXstepRepeatArray& entries = header.m_arrStepRepeats;
    Require(entries.GetSize() == static_cast<__int64>(texts.size()), "every entry is read");
    std::vector<double> values;
    for (std::size_t i = 0; i < texts.size(); ++i)
    {
        const CJOBXstepRepeat& entry = *entries.GetAt(static_cast<__int64>(i));
        Require(Same(entry.m_ptPosition.GetX(), std::strtod(texts[i].c_str(), nullptr)), "a real is read exactly");
        Require(entry.m_ptCount.GetX() == SaturatedInteger(texts[i]), "an integer is read exactly");
        values.push_back(entry.m_ptPosition.GetX());
    }
    return values;
}

// Eight bytes each, as they are.
std::vector<double> Raw(std::string_view input)
{
    std::vector<double> values(std::min(input.size() / sizeof(double), kMostNumbers));
    if (!values.empty())
        std::memcpy(values.data(), input.data(), values.size() * sizeof(double));
    return values;
}

void RequireNetlistPrints(const std::vector<double>& values)
{
    CJOBXnetlist netlist;
    CJOBXnet* const net = netlist.m_arrNets.Own(std::make_unique<CJOBXnet>());
    for (const double value : values)
    {
        auto point = std::make_unique<CJOBXnetPt>();
        point->m_dRadius = 1.0;
        point->m_ptPosition = CPointD(value, -value);
        net->m_arrPts.Own(std::move(point));
    }
    netlist.WriteODBData(ScratchDir("numbers"));
    std::string expected;
    for (const double value : values)
        expected += "-1 1.000000 " + Printed("%lf", value) + " " + Printed("%lf", -value) + "   \n";
    Require(BytesOf(ScratchPath("numbers/netlists/cadnet/netlist")).ends_with("#\n" + expected),
            "six decimals are printed as by the C library");
}

void RequireHeaderPrints(const std::vector<double>& values)
{
    for (const double value : values)
    {
        CJOBXstephdr header;
        header.m_ptDatum = CPointD(value, -value);
        header.WriteODBData(ScratchDir("numbers"));
        const std::string expected = "X_DATUM=" + Printed("%g", value) + "\nY_DATUM=" + Printed("%g", -value) + "\n";
        Require(BytesOf(ScratchPath("numbers/stephdr")).find(expected) != std::string::npos,
                "six digits are printed as by the C library");
    }
}
} // namespace

void FuzzNumbers(std::string_view input)
{
    const std::vector<double> read = ReadAll(Texts(input));
    RequireNetlistPrints(read);
    RequireNetlistPrints(Raw(input));
    RequireHeaderPrints(
        std::vector<double>(read.begin(), read.begin() + std::min<std::ptrdiff_t>(4, std::ssize(read))));
}
