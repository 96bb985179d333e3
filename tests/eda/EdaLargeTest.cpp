#include "eda/EdaText.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>

namespace
{
// Ten lines for each net: what most of a board's file consists of.
std::string NetLines(int nets)
{
    std::string text = "HDR big\nLYR top bottom\n";
    for (int i = 0; i < nets; ++i)
    {
        text += "# NET " + std::to_string(i) + "\nNET NET_NUMBER_" + std::to_string(i) + "\nSNT TOP T 1 2\n";
        for (int k = 0; k < 7; ++k)
            text += "FID C 1 " + std::to_string(i * 7 + k) + "\n";
    }
    return text;
}

// Packages and pins with every shape, and comments that have to be looked through.
std::string PackageLines(int packages)
{
    std::string text;
    for (int i = 0; i < packages; ++i)
        text += "# PKG 1\nPKG P 1 0 0 1 1\nCT\nOB 0 0 I\nOS 1 1\nOE\nCE\nPIN 1 S 0 0 0 E S\nCR 0 0 1\n# comment\n";
    return text;
}

// One contour after the other that never ends.
std::string ContourBeginnings(int lines)
{
    std::string text = "PKG P 1 0 0 1 1\n";
    for (int i = 0; i < lines; ++i)
        text += i % 3 == 0 ? "CT\n" : "OS 1 1\n";
    return text;
}

// Processor time, which other programs on the machine hardly change.
double Seconds(const std::function<void()>& work)
{
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

double ReadConvertAndWrite(const std::string& text)
{
    const TempDir dir;
    const std::string path = dir.Write("data", text);
    return Seconds(
        [&]
        {
            CJOBXdata data;
            EXPECT_EQ(data.ParseODBOfMFC(path.c_str()), 1);
            data.UnitConvert(2.0);
            data.WriteODBData(dir.Path().c_str());
        });
}

// Eight times the input takes about eight times as long; quadratic work would take 64 times.
void ExpectLinear(std::string (*make)(int), int size)
{
    ReadConvertAndWrite(make(size)); // warms up
    const double small = std::min(ReadConvertAndWrite(make(size)), ReadConvertAndWrite(make(size)));
    const double large = ReadConvertAndWrite(make(size * 8));
    EXPECT_LT(large, std::max(small, 0.001) * 32) << small << " s, then " << large << " s";
}
} // namespace

TEST(EdaLarge, MillionLinesWithAHundredThousandNetsAreRead)
{
    constexpr int kNets = kIsSlowBuild ? 10'000 : 100'000;
    const CString lastName = ("NET_NUMBER_" + std::to_string(kNets - 1)).c_str();
    const auto data = ReadEda(NetLines(kNets));
    ASSERT_EQ(data->m_arrNets.GetSize(), kNets);
    const CJOBXdataNet& last = *data->m_arrNets.GetLastElement();
    EXPECT_EQ(last.m_nNumber, kNets - 1);
    EXPECT_EQ(last.m_sName, lastName);
    ASSERT_EQ(last.m_arrSnts.GetSize(), 1);
    ASSERT_EQ(last.m_arrSnts.GetAt(0)->m_arrNetObjs.GetSize(), 7);
    EXPECT_EQ(last.m_arrSnts.GetAt(0)->m_arrNetObjs.GetLastElement()->m_nFeatureIndex, 7 * kNets - 1);
    EXPECT_EQ(last.m_arrSnts.GetAt(0)->m_arrNetObjs.GetLastElement()->m_nLineNumber, 10 * kNets + 2);
    EXPECT_EQ(data->m_arrNets.FindNetID(lastName), kNets - 1);
}

TEST(EdaLarge, NetsTakeTimeInProportionToTheirNumber)
{
    ExpectLinear(NetLines, 5000);
}

TEST(EdaLarge, PackagesTakeTimeInProportionToTheirNumber)
{
    ExpectLinear(PackageLines, 3000);
}

TEST(EdaLarge, ContoursWithoutEndTakeTimeInProportionToTheirNumber)
{
    ExpectLinear(ContourBeginnings, 20000);
}

TEST(EdaLarge, LongLinesTakeTimeInProportionToTheirLength)
{
    ExpectLinear([](int size)
                 { return "PKG P 1 0 0 1 1\nCR " + std::string(static_cast<std::size_t>(size), ' ') + "1"; },
                 200000);
    ExpectLinear(
        [](int size)
        {
            std::string line = "PKG P 1 0 0 1 1\n# NET";
            for (int i = 0; i < size; ++i)
                line += " # NET";
            return line;
        },
        50000);
}
