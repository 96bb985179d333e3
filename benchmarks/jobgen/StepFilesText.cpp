#include "StepFilesText.h"

#include "Random.h"
#include "TextFile.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace
{
constexpr std::array<std::uint32_t, 4> kSubnets{360, 310, 200, 130};
constexpr std::array<std::string_view, 4> kSubnetLines{"SNT TRC\n", "SNT TOP ", "SNT PLN S E 0\n", "SNT VIA\n"};
constexpr std::size_t kPinSubnet = 1;

// How many pins the packages have, over and over: 16.4 on average.
constexpr std::array<std::uint32_t, 14> kPins{2, 2, 3, 4, 5, 6, 8, 8, 14, 16, 20, 28, 48, 66};
constexpr std::uint32_t kSmallPackages = 2; // of them, that seven of eight components use

constexpr std::uint32_t kComponentsForPackage = 7;

std::uint32_t ClampedTo32(std::int64_t count)
{
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(count, 0, 0xFFFF'FFFF));
}

// Places in thousandths of an inch, as placed parts have.
Length Thousandths(Random& random, std::uint32_t count)
{
    return {static_cast<std::int64_t>(random.Below(count)) * 100'000};
}

// Small lengths with five decimals, as outlines have.
Length Outline(Random& random)
{
    return {(static_cast<std::int64_t>(random.Below(100'000)) - 50'000) * 1'000};
}

std::uint32_t PinsOf(std::int64_t package)
{
    return kPins[static_cast<std::size_t>(package) % kPins.size()];
}

std::int64_t AnyPackage(Random& random, std::int64_t packages)
{
    const auto all = static_cast<std::int64_t>(random.Below(ClampedTo32(packages)));
    if (!random.Chance(870))
        return all;
    const std::int64_t small = all / static_cast<std::int64_t>(kPins.size()) * static_cast<std::int64_t>(kPins.size());
    return std::min<std::int64_t>(small + random.Below(kSmallPackages), packages - 1);
}

void PutSubnet(TextFile& file, const StepPlan& plan, Random& random, JobCounts& counts)
{
    const std::size_t kind = random.Pick(kSubnets);
    file << kSubnetLines[kind];
    if (kind == kPinSubnet)
        file << (random.Chance(520) ? "T " : "B ")
             << random.Below(ClampedTo32(std::max<std::int64_t>(plan.components, 1))) << ' ' << random.Below(16)
             << '\n';
    const std::uint32_t features = 1 + random.Below(6) - (random.Chance(100) ? 1 : 0);
    for (std::uint32_t i = 0; i < features; ++i)
        file << (random.Chance(170)  ? "FID L "
                 : random.Chance(60) ? "FID H "
                                     : "FID C ")
             << random.Below(static_cast<std::uint32_t>(plan.layers)) << ' '
             << random.Below(std::max(plan.featuresOfLayer, 1U)) << '\n';
    ++counts.subnets;
    counts.netFeatures += features;
}

void PutNets(TextFile& file, const StepPlan& plan, Random& random, JobCounts& counts)
{
    for (std::int64_t net = 0; net < plan.nets; ++net)
    {
        file << "# NET " << net << "\nNET SIG_" << net << "\n";
        // Most nets are short; every tenth is like a supply.
        const std::uint32_t subnets = net % 10 == 0 ? 50 + random.Below(49) : 1 + random.Below(15);
        for (std::uint32_t i = 0; i < subnets; ++i)
            PutSubnet(file, plan, random, counts);
        ++counts.nets;
    }
}

void PutContour(TextFile& file, Random& random)
{
    file << "CT\nOB " << Outline(random) << ' ' << Outline(random) << " I\n";
    for (std::uint32_t points = 12 + random.Below(25); points > 0; --points)
        if (random.Chance(980))
            file << "OS " << Outline(random) << ' ' << Outline(random) << '\n';
        else
            file << "OC " << Outline(random) << ' ' << Outline(random) << ' ' << Outline(random) << ' '
                 << Outline(random) << " Y\n";
    file << "OE\nCE\n";
}

void PutRectangle(TextFile& file, Random& random)
{
    file << "RC " << Outline(random) << ' ' << Outline(random) << ' ' << Thousandths(random, 200) << ' '
         << Thousandths(random, 200) << '\n';
}

void PutPackages(TextFile& file, std::int64_t packages, Random& random, JobCounts& counts)
{
    for (std::int64_t package = 0; package < packages; ++package)
    {
        file << "#\n# PKG " << package << "\nPKG PACKAGE_" << package << "_SMD 0.05 -0.0225 -0.0125 0.0225 0.0125\n";
        if (random.Chance(500))
            PutContour(file, random);
        else
            PutRectangle(file, random);
        if (random.Chance(600))
            file << "PRP PACKAGE_NAME 'PACKAGE-" << package << "'\n";
        for (std::uint32_t pin = 0; pin < PinsOf(package); ++pin)
        {
            file << "PIN " << pin + 1 << (random.Chance(800) ? " S " : " T ") << Outline(random) << ' '
                 << Outline(random) << " 0 U U\n";
            if (random.Chance(570))
                file << "CR " << Outline(random) << ' ' << Outline(random) << ' ' << Thousandths(random, 100) << '\n';
            else if (random.Chance(560))
                PutRectangle(file, random);
            else
                PutContour(file, random);
            ++counts.pins;
        }
        ++counts.packages;
    }
}

void PutLayerNames(TextFile& file, int layers)
{
    file << "LYR";
    for (int layer = 0; layer < layers; ++layer)
        file << " layer" << layer + 1;
    file << '\n';
}

void PutComponent(TextFile& file, const StepPlan& plan, std::int64_t number, Random& random, JobCounts& counts)
{
    const std::int64_t package = AnyPackage(random, PackagesOf(plan.components));
    const auto nets = ClampedTo32(std::max<std::int64_t>(plan.nets, 1));
    file << "# CMP " << number << "\nCMP " << package << ' ' << Thousandths(random, 11'000) << ' '
         << Thousandths(random, 9'500) << ' ' << 90 * random.Below(4) << ".0 N "
         << "RCUL"[random.Below(4)] << number << " PART_" << package << " ;1=" << random.Below(3)
         << "\nPRP PART_NAME 'PART " << package << "'\nPRP VALUE '" << random.Below(1000) << " Ohm 1% 0402'\n";
    counts.componentProperties += 2;
    if (random.Chance(200))
    {
        file << "PRP Datasheet ''\n";
        ++counts.componentProperties;
    }
    const std::uint32_t pins = PinsOf(package);
    for (std::uint32_t pin = 0; pin < pins; ++pin)
        file << "TOP " << pin << ' ' << Thousandths(random, 11'000) << ' ' << Thousandths(random, 9'500) << " 0.0 N "
             << random.Below(nets) << ' ' << random.Below(50) << ' ' << pin + 1 << '\n';
    file << "#\n";
    counts.toeprints += pins;
    ++counts.components;
}

void PutNetPoint(TextFile& file, std::int64_t net, Random& random)
{
    file << net << ' ';
    const bool isRound = random.Chance(640);
    if (isRound)
        file << Length{(1 + static_cast<std::int64_t>(random.Below(40))) * 100'000} << ' ';
    else
        file << "0 ";
    file << Thousandths(random, 11'000) << ' ' << Length{static_cast<std::int64_t>(random.Below(950'000)) * 1'000}
         << (random.Chance(520)   ? " T "
             : random.Chance(500) ? " D "
                                  : " B ");
    if (!isRound)
        file << Thousandths(random, 100) << ' ' << Thousandths(random, 100) << ' ';
    file << (random.Chance(500) ? "e e" : "m e") << " staggered 0 0 0 ";
    if (isRound && random.Chance(470))
        file << "v ";
    file << '\n';
}
} // namespace

std::int64_t PackagesOf(std::int64_t components)
{
    return (components + kComponentsForPackage - 1) / kComponentsForPackage;
}

void WriteEda(const std::filesystem::path& path, const StepPlan& plan, Random& random, JobCounts& counts)
{
    TextFile file(path);
    file << "# made for measuring\n#\nHDR generated data\n";
    PutLayerNames(file, plan.layers);
    PutNets(file, plan, random, counts);
    PutPackages(file, PackagesOf(plan.components), random, counts);
    counts.bytes += file.Close();
    ++counts.files;
}

void WriteComponents(const std::filesystem::path& path, const StepPlan& plan, std::int64_t first, std::int64_t end,
                     Random& random, JobCounts& counts)
{
    TextFile file(path);
    file << "UNITS=INCH\n#\n#Component attribute names\n#\n@0 .comp_height\n@1 .comp_mount_type\n\n";
    for (std::int64_t number = first; number < end; ++number)
        PutComponent(file, plan, number, random, counts);
    counts.bytes += file.Close();
    ++counts.files;
}

void WriteNetlist(const std::filesystem::path& path, const StepPlan& plan, Random& random, JobCounts& counts)
{
    TextFile file(path);
    file << "H optimize N staggered N\n";
    for (std::int64_t net = 0; net < plan.nets; ++net)
        file << '$' << net << " SIG_" << net << '\n';
    file << "#\n#Netlist points\n#\n";
    for (std::int64_t net = 0; net < plan.nets; ++net)
        for (std::uint32_t points = net % 10 == 0 ? 15 + random.Below(21) : 1 + random.Below(8); points > 0; --points)
        {
            PutNetPoint(file, net, random);
            ++counts.netPoints;
        }
    counts.bytes += file.Close();
    ++counts.files;
}
