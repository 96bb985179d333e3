#include "JobGenerator.h"

#include "FeaturesText.h"
#include "Random.h"
#include "StepFilesText.h"
#include "TextFile.h"
#include "foundation/corekit/LzwEncoder.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace
{
namespace fs = std::filesystem;

constexpr double kNetsForMegabyte = 36.0;
constexpr double kComponentsForMegabyte = 39.0;
constexpr std::int64_t kMost = 1'000'000'000;

std::string Numbered(const char* name, int number)
{
    return name + std::to_string(number);
}

void Demand(bool condition, const char* what)
{
    if (!condition)
        throw std::invalid_argument(what);
}

void CheckPlan(const JobPlan& plan)
{
    Demand(std::isfinite(plan.megabytes) && plan.megabytes > 0.0 && plan.megabytes <= 1e6,
           "the size must be more than 0 and at most a million megabytes");
    Demand(plan.layers >= 1 && plan.layers <= 10'000, "there must be 1 to 10000 layers");
    Demand(plan.steps >= 1 && plan.steps <= 10'000, "there must be 1 to 10000 steps");
    Demand(plan.symbols >= 0 && plan.symbols <= 10'000'000, "there must be 0 to 10000000 symbols");
    Demand(plan.nets.value_or(0) >= 0 && plan.nets.value_or(0) <= kMost, "there must be 0 to 1000000000 nets");
    Demand(plan.components.value_or(0) >= 0 && plan.components.value_or(0) <= kMost,
           "there must be 0 to 1000000000 components");
    Demand(plan.balance >= 0.0 && plan.balance <= 1.0, "the balance must be 0 to 1");
}

// The part of a number that falls to one of several.
std::int64_t PartOf(std::int64_t all, int index, int count)
{
    return all * (index + 1) / count - all * index / count;
}

void Close(TextFile& file, JobCounts& counts)
{
    counts.bytes += file.Close();
    ++counts.files;
}

class Generator
{
public:
    Generator(const JobPlan& plan, const fs::path& directory)
        : m_plan(plan), m_directory(directory), m_random(plan.seed)
    {
    }

    JobCounts Run()
    {
        WriteSymbols();
        WriteMatrix();
        WriteInfo();
        WriteFont();
        const auto bytes = static_cast<std::uint64_t>(m_plan.megabytes * 1e6);
        for (int step = 0; step < m_plan.steps; ++step)
            WriteStep(step, bytes);
        for (int step = 0; step < m_plan.steps; ++step)
            WriteLayers(step, bytes);
        return m_counts;
    }

private:
    fs::path StepPath(int step) const { return m_directory / "steps" / Numbered("step", step + 1); }

    std::int64_t CountOf(const std::optional<std::int64_t>& wanted, double forMegabyte) const
    {
        return wanted.value_or(static_cast<std::int64_t>(m_plan.megabytes * forMegabyte));
    }

    void Compress(const fs::path& path)
    {
        std::ifstream plain(path, std::ios::binary);
        const std::string packed = EncodeLzw(std::string(std::istreambuf_iterator<char>(plain), {}));
        plain.close();
        m_counts.bytes += packed.size();
        m_counts.bytes -= fs::file_size(path);
        fs::path target = path;
        target += ".Z";
        std::ofstream file(target, std::ios::binary);
        file << packed;
        file.close();
        if (!file)
            throw std::runtime_error("cannot write " + target.string());
        fs::remove(path);
    }

    void WriteSymbols()
    {
        for (int symbol = 0; symbol < m_plan.symbols; ++symbol)
        {
            const fs::path path = m_directory / "symbols" / Numbered("user", symbol) / "features";
            WriteSymbolFeatures(path, m_random, m_counts);
            if (m_plan.compressSymbols)
                Compress(path);
        }
    }

    void PutMatrixLayer(TextFile& file, int row, const std::string& name, const char* type) const
    {
        file << "LAYER {\n    ROW=" << row << "\n    CONTEXT=BOARD\n    TYPE=" << std::string_view(type)
             << "\n    NAME=" << name
             << "\n    POLARITY=POSITIVE\n    DIELECTRIC_TYPE=\n    CU_TOP=\n    CU_BOTTOM=\n    REF=\n    START_NAME="
                "\n    END_NAME=\n    OLD_NAME=\n    ADD_TYPE=\n    COLOR=0\n}\n\n";
    }

    void WriteMatrix()
    {
        TextFile file(m_directory / "matrix" / "matrix");
        for (int step = 0; step < m_plan.steps; ++step)
            file << "STEP {\n    COL=" << step + 1 << "\n    NAME=STEP" << step + 1 << "\n}\n\n";
        int row = 1;
        PutMatrixLayer(file, row++, "COMP_+_TOP", "COMPONENT");
        for (int layer = 0; layer < m_plan.layers; ++layer)
            PutMatrixLayer(file, row++, Numbered("LAYER", layer + 1), layer % 4 == 3 ? "SILK_SCREEN" : "SIGNAL");
        PutMatrixLayer(file, row, "COMP_+_BOT", "COMPONENT");
        Close(file, m_counts);
    }

    void WriteInfo()
    {
        TextFile file(m_directory / "misc" / "info");
        file << "JOB_NAME=generated\nODB_VERSION_MAJOR=7\nODB_VERSION_MINOR=0\nODB_SOURCE=generator\n"
                "CREATION_DATE=20260101.120000\nSAVE_DATE=20260101.120000\nSAVE_APP=generator\nSAVE_USER=nobody\n";
        Close(file, m_counts);
    }

    void WriteFont()
    {
        TextFile file(m_directory / "fonts" / "standard");
        file << "XSIZE  0.302000\nYSIZE  0.302000\nOFFSET 0.000000\n\n";
        for (char character = '!'; character <= '~'; ++character)
        {
            file << "\nCHAR " << character << '\n';
            for (int stroke = 0; stroke < 5; ++stroke)
                file << "LINE -0.0" << 10 + m_random.Below(90) << " 0." << 10 + m_random.Below(20) << " 0.0"
                     << 10 + m_random.Below(90) << " -0.1" << m_random.Below(100) << " P R 0.012000\n";
            file << "ECHAR\n";
        }
        Close(file, m_counts);
    }

    void WriteHeader(int step)
    {
        TextFile file(StepPath(step) / "stephdr");
        file << "X_DATUM=0\nY_DATUM=0\nX_ORIGIN=0\nY_ORIGIN=0\n\n";
        for (int repeated = 1; step == 0 && repeated < m_plan.steps; ++repeated)
            file << "STEP-REPEAT {\n    NAME=STEP" << repeated + 1 << "\n    X=0.4\n    Y=" << repeated
                 << ".4\n    DX=1.75\n    DY=1.15\n    NX=2\n    NY=2\n    ANGLE=0\n    MIRROR=NO\n    FLIP=NO\n}\n\n";
        file << "TOP_ACTIVE=0\nBOTTOM_ACTIVE=0\nRIGHT_ACTIVE=0\nLEFT_ACTIVE=0\nAFFECTING_BOM=\n"
                "AFFECTING_BOM_CHANGED=0\n";
        Close(file, m_counts);
    }

    // All of a step but its layers.
    void WriteStep(int step, std::uint64_t bytes)
    {
        ++m_counts.steps;
        const fs::path path = StepPath(step);
        WriteProfile(path / "profile", m_counts);
        WriteHeader(step);
        StepPlan plan;
        plan.nets = PartOf(CountOf(m_plan.nets, kNetsForMegabyte), step, m_plan.steps);
        plan.components = PartOf(CountOf(m_plan.components, kComponentsForMegabyte), step, m_plan.steps);
        plan.layers = m_plan.layers;
        plan.featuresOfLayer = FeaturesOf(bytes / static_cast<std::uint64_t>(m_plan.steps * m_plan.layers));
        if (plan.nets != 0 || plan.components != 0)
            WriteEda(path / "eda" / "data", plan, m_random, m_counts);
        if (plan.nets != 0)
            WriteNetlist(path / "netlists" / "cadnet" / "netlist", plan, m_random, m_counts);
        if (plan.components == 0)
            return;
        const std::int64_t half = plan.components / 2;
        WriteComponents(path / "layers" / "comp_+_top" / "components", plan, 0, half, m_random, m_counts);
        WriteComponents(path / "layers" / "comp_+_bot" / "components", plan, half, plan.components, m_random, m_counts);
    }

    // The layers share what the job still lacks to its size.
    void WriteLayers(int step, std::uint64_t bytes)
    {
        const std::uint64_t left = bytes > m_counts.bytes ? bytes - m_counts.bytes : 0;
        const double share = static_cast<double>(left) / (m_plan.steps - step);
        for (int layer = 0; layer < m_plan.layers; ++layer)
        {
            const double part = m_plan.balance / m_plan.layers + (layer == 0 ? 1.0 - m_plan.balance : 0.0);
            WriteLayerFeatures(StepPath(step) / "layers" / Numbered("layer", layer + 1) / "features",
                               static_cast<std::uint64_t>(share * part), m_plan, m_random, m_counts);
        }
    }

    const JobPlan& m_plan;
    const fs::path& m_directory;
    Random m_random;
    JobCounts m_counts;
};
} // namespace

JobCounts GenerateJob(const JobPlan& plan, const fs::path& directory)
{
    CheckPlan(plan);
    if (fs::exists(directory) && (!fs::is_directory(directory) || !fs::is_empty(directory)))
        throw std::runtime_error(directory.string() + " is there already");
    return Generator(plan, directory).Run();
}
