// Printing numbers: the same characters as the C library's printf in the C locale.
#include "foundation/NumberPrint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace number_print_test
{
namespace
{
template <class Number>
std::string Printf(const char* format, Number number)
{
    char text[number_print::kLongest];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

template <class Number>
std::string Printed(char* (*print)(char*, Number) noexcept, Number number)
{
    char text[number_print::kLongest];
    return {text, print(text, number)};
}

void ExpectAsPrintf(double number)
{
    ASSERT_EQ(Printed(PrintFixed, number), Printf("%lf", number)) << std::hexfloat << number;
}

// Another seed for each run when one is asked for.
std::uint64_t Seed()
{
    const char* const chosen = std::getenv("JOBX_TEST_SEED");
    return chosen != nullptr ? std::strtoull(chosen, nullptr, 10) : 20;
}
} // namespace

TEST(NumberPrint, IntegersAreThoseOfPrintf)
{
    std::mt19937_64 random(Seed());
    for (const int number : {0, 9, 10, 99, 100, 999, 1000, 999'999, 1'000'000, std::numeric_limits<int>::max(),
                             std::numeric_limits<int>::min()})
        for (const int sign : {1, -1})
            ASSERT_EQ(Printed(PrintInteger, sign < 0 ? static_cast<int>(0U - static_cast<unsigned>(number)) : number),
                      Printf("%d", sign < 0 ? static_cast<int>(0U - static_cast<unsigned>(number)) : number));
    for (int i = 0; i < 100'000; ++i)
    {
        const int number = static_cast<int>(static_cast<std::uint32_t>(random()) >> (random() % 32));
        ASSERT_EQ(Printed(PrintInteger, number), Printf("%d", number)) << "seed " << Seed();
    }
}

TEST(NumberPrint, NumbersAtTheBoundsOfTheShortWaysAreThoseOfPrintf)
{
    for (const double bound : {0.0, 5e-7, 1.5e-6, 1.0, 999.9999995, 1000.0, 7999.9999995, 8000.0, 999999.9999995, 1e6,
                               999999999.9999995, 1e9, 9007199254.740993, 1e15, 1e300})
        for (const double sign : {1.0, -1.0})
        {
            ExpectAsPrintf(sign * bound);
            ExpectAsPrintf(sign * std::nextafter(bound, 0.0));
            ExpectAsPrintf(sign * std::nextafter(bound, std::numeric_limits<double>::max()));
        }
    ExpectAsPrintf(std::numeric_limits<double>::denorm_min());
    ExpectAsPrintf(std::numeric_limits<double>::infinity());
    ExpectAsPrintf(-std::numeric_limits<double>::infinity());
    ExpectAsPrintf(std::numeric_limits<double>::quiet_NaN());
}

// Coordinates, the middle of two printed numbers and its neighbours, exact binary fractions, and any bits at all.
TEST(NumberPrint, RandomNumbersAreThoseOfPrintf)
{
    std::mt19937_64 random(Seed());
    SCOPED_TRACE("seed " + std::to_string(Seed()));
    for (int i = 0; i < 100'000; ++i)
    {
        const auto whole = static_cast<double>(random() >> (11 + random() % 40));
        const double middle = (static_cast<double>(random() % 1'100'000'000'000'000) + 0.5) / 1e6;
        const double bits = std::ldexp(static_cast<double>(random() >> 11U), -static_cast<int>(random() % 80));
        ASSERT_NO_FATAL_FAILURE(ExpectAsPrintf(-whole / 1e6));
        ASSERT_NO_FATAL_FAILURE(ExpectAsPrintf(middle));
        ASSERT_NO_FATAL_FAILURE(ExpectAsPrintf(-std::nextafter(middle, 0.0)));
        ASSERT_NO_FATAL_FAILURE(ExpectAsPrintf(std::nextafter(middle, 1e300)));
        ASSERT_NO_FATAL_FAILURE(ExpectAsPrintf(bits));
    }
}
} // namespace number_print_test
