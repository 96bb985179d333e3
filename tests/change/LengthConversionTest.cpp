#include "change/LengthConversion.h"
#include "change/SymbolNames.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <string>

namespace
{
constexpr auto kInch = JOBXunit::Inch;
constexpr auto kMetric = JOBXunit::Millimetre;

std::string Converted(const char* number, JOBXunit to)
{
    return ConvertedNumber(number, to).value_or("no number");
}
} // namespace

TEST(ConvertedNumber, MultipliesAndDividesDecimalsWithoutNoise)
{
    const struct
    {
        const char* inch;
        const char* metric;
    } kCases[] = {{"0", "0"},
                  {"1", "25.4"},
                  {"10", "254"},
                  {"0.1", "2.54"},
                  {"-0.0625", "-1.5875"},
                  {"3.937", "99.9998"},
                  {"3.93700787402", "100"},
                  {"0.393700787402", "10"},
                  {"39.3700787402", "1000"},
                  {"5000", "127000"},
                  {"10.0", "254.0"},
                  {"0.050", "1.270"},
                  {"0.10000", "2.540000"}, // four zeros at the end of both
                  {"0.00000001", "0.000000254"},
                  {"12.3456789012345", "313.5802440913563"}};
    for (const auto& each : kCases)
    {
        EXPECT_EQ(Converted(each.inch, kMetric), each.metric);
        EXPECT_EQ(Converted(each.metric, kInch), each.inch);
    }
}

TEST(ConvertedNumber, TakesSignsPointsAndExponentsOnly)
{
    EXPECT_EQ(Converted("+.5", kMetric), "12.7");
    EXPECT_EQ(Converted("5.", kMetric), "127");
    EXPECT_EQ(Converted("-0", kMetric), "0");
    EXPECT_EQ(Converted("-0.0", kMetric), "0.0");
    EXPECT_EQ(Converted("1e-1", kMetric), "2.54");
    EXPECT_EQ(Converted("25.4e0", kInch), "1");
    for (const char* const text : {"", ".", "-", "1x", "1 2", "0x10", "1..2", "nan", "inf", "Y"})
        EXPECT_EQ(Converted(text, kMetric), "no number") << text;
}

TEST(ConvertedNumber, GivesEveryInchNumberBackFromMillimetres)
{
    std::mt19937_64 random(20261122);
    for (int i = 0; i < 20000; ++i)
    {
        std::string number = std::to_string(random() % 100000);
        const auto decimals = static_cast<std::size_t>(random() % 16);
        std::string behind = std::to_string(random()).substr(0, decimals);
        number += behind.empty() ? "" : "." + behind;
        ASSERT_EQ(Converted(Converted(number.c_str(), kMetric).c_str(), kInch), number);
    }
}

TEST(ConvertedNumber, GivesMicronsBackFromMils)
{
    std::mt19937_64 random(20261122);
    for (int i = 0; i < 20000; ++i)
    {
        std::string number = std::to_string(random() % 1000000);
        const std::string behind = std::to_string(1 + random() % 9);
        number += i % 2 == 0 ? ".1" : "." + behind;
        ASSERT_EQ(Converted(Converted(number.c_str(), kInch).c_str(), kMetric), number);
        const std::string inch = Converted((number + "0").c_str(), kInch); // rounded, or as many zeros at the end
        const std::string back = Converted(inch.c_str(), kMetric);
        ASSERT_TRUE(back == number || back == number + "0") << back;
    }
}

TEST(ConvertedLength, GivesEveryInchNumberBackAndRoundsBinaryNoiseAway)
{
    EXPECT_EQ(ConvertedLength(0.1, kMetric), 2.54);
    EXPECT_EQ(ConvertedLength(100.0, kInch), 3.93700787401575);
    EXPECT_EQ(ConvertedLength(3.93700787401575, kMetric), 100.0);
    EXPECT_EQ(ConvertedLength(-25.5, kInch), -1.00393700787402);
    EXPECT_EQ(ConvertedLength(0.0, kInch), 0.0);
    EXPECT_TRUE(std::isnan(ConvertedLength(std::nan(""), kInch)));
    std::mt19937_64 random(20261122);
    for (int i = 0; i < 100000; ++i)
    {
        const double power = std::pow(10.0, static_cast<double>(random() % 12));
        const double inch = (static_cast<double>(random() % 20'000'000'000U) - 1e10) / power;
        const double back = ConvertedLength(ConvertedLength(inch, kMetric), kInch);
        ASSERT_EQ(back, inch);
        const double metric = std::nearbyint(inch * 1e6) / 1e6;
        ASSERT_EQ(ConvertedLength(ConvertedLength(metric, kInch), kMetric), metric);
    }
}

TEST(ConvertedLength, KeepsLengthsOfManyDigitsWithinATrillionth)
{
    std::mt19937_64 random(20261122);
    std::uniform_real_distribution<double> numbers(-100.0, 100.0);
    for (int i = 0; i < 100000; ++i)
    {
        const double inch = numbers(random);
        EXPECT_NEAR(ConvertedLength(inch, kMetric), inch * 25.4, 1e-10);
        EXPECT_NEAR(ConvertedLength(ConvertedLength(inch, kMetric), kInch), inch, 1e-12);
    }
}

TEST(ConvertedSymbolName, ConvertsLengthsAndLeavesAnglesCountsSharesAndCorners)
{
    const struct
    {
        const char* mils;
        const char* microns;
    } kCases[] = {{"r10", "r254"},
                  {"r0.5", "r12.7"},
                  {"s60", "s1524"},
                  {"rect60x24", "rect1524x609.6"},
                  {"rect60x24xr5", "rect1524x609.6xr127"},
                  {"rect50x60xc8x13", "rect1270x1524xc203.2x13"},
                  {"oval60x20", "oval1524x508"},
                  {"oval_h60x20", "oval_h1524x508"},
                  {"di90x90", "di2286x2286"},
                  {"oct60x60x20", "oct1524x1524x508"},
                  {"hex_l60x60x20", "hex_l1524x1524x508"},
                  {"hex_s60x60x20", "hex_s1524x1524x508"},
                  {"donut_r100x84", "donut_r2540x2133.6"},
                  {"donut_s160x120", "donut_s4064x3048"},
                  {"donut_s160x120xr10x12", "donut_s4064x3048xr254x12"},
                  {"donut_sr160x120", "donut_sr4064x3048"},
                  {"donut_rc80x60x10xr5", "donut_rc2032x1524x254xr127"},
                  {"donut_o80x60x10", "donut_o2032x1524x254"},
                  {"bfr60", "bfr1524"},
                  {"bfs60", "bfs1524"},
                  {"tri30x60", "tri762x1524"},
                  {"el30x60", "el762x1524"},
                  {"hole40xpx2x1", "hole1016xpx50.8x25.4"},
                  {"thr80x60x45x4x10", "thr2032x1524x45x4x254"},
                  {"ths80x60x0x2x10", "ths2032x1524x0x2x254"},
                  {"s_ths80x60x45x4x10", "s_ths2032x1524x45x4x254"},
                  {"s_ths80x60x45x4x10xr5x1", "s_ths2032x1524x45x4x254xr127x1"},
                  {"s_tho80x60x45x4x10", "s_tho2032x1524x45x4x254"},
                  {"s_thr80x60x45x4x10", "s_thr2032x1524x45x4x254"},
                  {"sr_ths80x60x45x4x10", "sr_ths2032x1524x45x4x254"},
                  {"rc_ths80x60x45x4x10x5", "rc_ths2032x1524x45x4x254x127"},
                  {"rc_tho80x60x45x4x10x5", "rc_tho2032x1524x45x4x254x127"},
                  {"o_ths80x60x45x4x10x5", "o_ths2032x1524x45x4x254x127"},
                  {"oblong_ths80x60x45x4x10x5xr", "oblong_ths2032x1524x45x4x254x127xr"},
                  {"hplate60x40x10", "hplate1524x1016x254"},
                  {"hplate60x40x10x2x3", "hplate1524x1016x254x50.8x76.2"},
                  {"rhplate60x40x10", "rhplate1524x1016x254"},
                  {"fhplate60x40x10x5", "fhplate1524x1016x254x127"},
                  {"radhplate60x40x10", "radhplate1524x1016x254"},
                  {"dshape60x40x10x2", "dshape1524x1016x254x50.8"},
                  {"cross60x40x10x5x50x50xr", "cross1524x1016x254x127x50x50xr"},
                  {"cross60x40x10x5x50x25xsx2", "cross1524x1016x254x127x50x25xsx50.8"},
                  {"dogbone60x40x10x5x50xs", "dogbone1524x1016x254x127x50xs"},
                  {"dpack60x40x5x5x3x2", "dpack1524x1016x127x127x3x2"},
                  {"dpack60x40x5x5x3x2x1", "dpack1524x1016x127x127x3x2x25.4"},
                  {"moire10x5x3x2x60x45", "moire254x127x3x50.8x1524x45"},
                  {"null5", "null5"},
                  {"R10", "R254"}};
    for (const auto& each : kCases)
    {
        EXPECT_EQ(ConvertedSymbolName(each.mils, kMetric), each.microns);
        EXPECT_EQ(ConvertedSymbolName(each.microns, kInch), each.mils);
    }
}

TEST(ConvertedSymbolName, LeavesNamesOfNoStandardFormToTheirUser)
{
    for (const char* const name :
         {"", "r", "r10_tp", "r10x", "rect60", "rect60x24x5", "rect60x24xr", "rect60x24xr5x", "rect60x24xr5x7",
          "mount_ring", "led10", "10", "thr80x60x45x4", "hole40xqx2x1", "r-5", "cross60x40x10x5x50x50", "s60x20"})
        EXPECT_EQ(ConvertedSymbolName(name, kMetric), "") << name;
}
