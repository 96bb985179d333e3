// Printing: the same texts as the C library's printf in the C locale.
#include "foundation/CTextWriter.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/FrameworkThrow.h"
#include "foundation/framework/RaisedPointer.h"
#include "support/CommaLocale.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

namespace
{
std::string Printf(const char* format, double value)
{
    char text[400];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string Written(double value, bool fixed)
{
    const TempDir dir;
    {
        CTextWriter out(dir.Path("f").c_str(), "test", 1);
        if (fixed)
            out << Fixed{value};
        else
            out << General{value};
    }
    return dir.Read("f");
}

// Raises for every failure, as a host may that gives up at the first.
struct RaisingSink : CKDiagnosticSink
{
    enum class Kind
    {
        Standard,
        Framework
    };
    explicit RaisingSink(Kind kindRaised) : kind(kindRaised), before(CKUtility::GetInstance()->SetDiagnosticSink(this))
    {
    }
    ~RaisingSink() override { CKUtility::GetInstance()->SetDiagnosticSink(before); }
    void OnDiagnostic(const CKDiagnostic& /*diagnostic*/) override
    {
        ++count;
        if (kind == Kind::Framework)
            AfxThrowMemoryException();
        throw std::runtime_error("the sink gives up");
    }
    int count = 0;
    Kind kind;
    CKDiagnosticSink* before;
};

struct Failures : CKDiagnosticSink
{
    void OnDiagnostic(const CKDiagnostic& /*diagnostic*/) override { ++count; }
    int count = 0;
};
} // namespace

TEST(TextWriter, PrintsNumbersAsPrintfDoes)
{
    for (const double value : {0.0, -0.0, 1.0, 0.5, 1e-7, 5e-7, 1.5e-6, 123456.789, 1e300, 1e-300, 0.0000005, 2.5, 1e21,
                               std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min(),
                               std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                               std::nan(""), -std::nan("")})
    {
        EXPECT_EQ(Written(value, true), Printf("%lf", value));
        EXPECT_EQ(Written(value, false), Printf("%g", value));
    }
}

TEST(TextWriter, PrintsRandomNumbersAsPrintfDoes)
{
    const TempDir dir;
    std::mt19937_64 random(7);
    std::string expected;
    {
        CTextWriter out(dir.Path("f").c_str(), "test", 1);
        for (int i = 0; i < 50'000; ++i)
        {
            const double value = (static_cast<double>(random() % 2'000'000'001) - 1e9) / (i % 2 == 0 ? 1e6 : 3e7);
            out << Fixed{value} << ' ' << General{value} << '\n';
            expected += Printf("%lf", value) + " " + Printf("%g", value) + "\n";
        }
    }
    EXPECT_EQ(dir.Read("f"), expected);
}

TEST(TextWriter, RoundsNumbersNearTheMiddleOfTwoAsPrintfDoes)
{
    const TempDir dir;
    std::mt19937_64 random(11);
    std::string expected;
    {
        CTextWriter out(dir.Path("f").c_str(), "test", 1);
        for (int i = 0; i < 50'000; ++i)
        {
            // Half a millionth above a printed number, and the doubles beside it; also around the bound of the short
            // way.
            double value = (static_cast<double>(random() % 8'500'000'000) + 0.5) / 1e6;
            for (int step = static_cast<int>(random() % 3); step > 0; --step)
                value = std::nextafter(value, i % 2 == 0 ? 1e9 : -1e9);
            value = i % 5 == 0 ? -value : value;
            out << Fixed{value} << '\n';
            expected += Printf("%lf", value) + "\n";
        }
    }
    EXPECT_EQ(dir.Read("f"), expected);
}

TEST(TextWriter, PrintsTextsUpToTheirFirstNulAndLongOnesWhole)
{
    const TempDir dir;
    const std::string large(200'000, 'x');
    {
        CTextWriter out(dir.Path("f").c_str(), "test", 1);
        out << CString("a\0b", 3) << "|" << 'c' << -12 << std::string_view(large) << CString("%d\x80");
        EXPECT_TRUE(out.IsGood());
    }
    EXPECT_EQ(dir.Read("f"), "a|c-12" + large + "%d\x80");
}

// Elements of every length end at, before and behind every block of the buffer.
TEST(TextWriter, LosesNothingWhereBlocksMeet)
{
    const TempDir dir;
    std::mt19937 random(3);
    std::string expected;
    {
        CTextWriter out(dir.Path("f").c_str(), "test", 1);
        while (expected.size() < 1'000'000)
        {
            const std::string text(random() % 16 == 0 ? random() % 100'000 : random() % 600, 'a');
            out << CString(std::string_view(text)) << ' ' << 12345 << '\n' << Fixed{1e300} << text.c_str();
            CTextLine(out) << text << 0 << Fixed{-0.25} << std::string_view("z");
            expected += text + " 12345\n" + Printf("%lf", 1e300) + text + text + "0-0.250000z";
        }
    }
    EXPECT_TRUE(dir.Read("f") == expected);
}

TEST(TextWriter, DoesNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    EXPECT_EQ(Written(1.5, true), "1.500000");
    EXPECT_EQ(Written(1.5, false), "1.5");
}

TEST(TextWriter, ReportsAFileThatCannotBeMadeOnce)
{
    const TempDir dir;
    Failures failures;
    CKDiagnosticSink* const before = CKUtility::GetInstance()->SetDiagnosticSink(&failures);
    {
        CTextWriter out(dir.Path("none/f").c_str(), "test", 1);
        EXPECT_FALSE(out.IsGood());
        out << "text" << 1 << std::string(1'000'000, 'x');
    }
    CKUtility::GetInstance()->SetDiagnosticSink(before);
    EXPECT_EQ(failures.count, 1);
}

TEST(TextWriter, ReportsAFullDiskOnce)
{
    if (std::FILE* const full = std::fopen("/dev/full", "w"))
        std::fclose(full);
    else
        GTEST_SKIP() << "no /dev/full on this machine";
    Failures failures;
    CKDiagnosticSink* const before = CKUtility::GetInstance()->SetDiagnosticSink(&failures);
    {
        CTextWriter out("/dev/full", "test", 1);
        for (int i = 0; i < 100'000; ++i)
            out << "line\n";
        EXPECT_FALSE(out.IsGood());
    }
    CKUtility::GetInstance()->SetDiagnosticSink(before);
    EXPECT_EQ(failures.count, 1);
}

TEST(TextWriter, LetsWhatTheSinkRaisesPass)
{
    if (std::FILE* const full = std::fopen("/dev/full", "w"))
        std::fclose(full);
    else
        GTEST_SKIP() << "no /dev/full on this machine";
    const auto failWhileWriting = []
    {
        CTextWriter out("/dev/full", "test", 1);
        out << "text";
        throw std::logic_error("the first");
    };
    {
        const RaisingSink sink(RaisingSink::Kind::Standard);
        EXPECT_THROW(CTextWriter("/nowhere/f", "test", 1), std::runtime_error);
        EXPECT_THROW(CTextWriter("/dev/full", "test", 1) << std::string(100'000, 'x'), std::runtime_error);
        EXPECT_THROW(CTextWriter("/dev/full", "test", 1) << "from the destructor", std::runtime_error);
        EXPECT_THROW(failWhileWriting(), std::logic_error); // the sink's comes too late to be raised
        EXPECT_EQ(sink.count, 4);
    }
    const RaisingSink sink(RaisingSink::Kind::Framework);
    EXPECT_TRUE(Raises<CMemoryException>([] { CTextWriter("/dev/full", "test", 1) << "from the destructor"; }));
    EXPECT_THROW(failWhileWriting(), std::logic_error);
    EXPECT_EQ(sink.count, 2);
}

TEST(TextWriter, WritesIntoABorrowedStream)
{
    const TempDir dir;
    std::FILE* const stream = std::fopen(dir.Path("f").c_str(), "wb");
    {
        CTextWriter out(stream);
        out << "a" << 1;
    }
    std::fputs("b", stream);
    std::fclose(stream);
    EXPECT_EQ(dir.Read("f"), "a1b");
    CTextWriter nothing(nullptr);
    nothing << "text";
    EXPECT_FALSE(nothing.IsGood());
}
