// counted: one small fixed work for a tool that counts instructions, of which it sees only what CountedWork does.
//   counted make DIR   makes the inputs in a directory
//   counted WORK DIR   reads, writes or destroys them once
#include "FeaturesText.h"
#include "JOBXCLSDLL.h"
#include "JobGenerator.h"
#include "Random.h"
#include "StepFilesText.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace
{
namespace fs = std::filesystem;

void MakeInputs(const fs::path& directory)
{
    constexpr std::uint64_t kLayerBytes = 1'000'000;
    Random random(1);
    JobCounts counts;
    WriteLayerFeatures(directory / "features", kLayerBytes, {}, random, counts);
    StepPlan plan;
    plan.nets = 700;
    plan.components = 760;
    plan.layers = 12;
    plan.featuresOfLayer = 1000;
    WriteEda(directory / "data", plan, random, counts);
    WriteComponents(directory / "components", plan, 0, plan.components, random, counts);
    WriteNetlist(directory / "netlist", plan, random, counts);
    JobPlan job;
    job.megabytes = 1.0;
    job.layers = 4;
    job.symbols = 4;
    GenerateJob(job, directory / "job");
    fs::create_directory(directory / "output");
}

template <class Model>
void Read(Model& model, const fs::path& path)
{
    if (model.ParseODBOfMFC(path.c_str()) != 1)
        throw std::runtime_error("cannot read " + path.string());
}
} // namespace

// Has a plain name, and is no part of its caller, so that a tool finds it.
extern "C" [[gnu::noinline]] void CountedWork(const std::function<void()>& work)
{
    work();
}

namespace
{
template <class Model>
void CountReading(const fs::path& path)
{
    Model model;
    CountedWork([&] { Read(model, path); });
}

void CountWriting(const fs::path& directory)
{
    CJOBX job;
    Read(job, directory / "job");
    CountedWork([&] { job.WriteODBData((directory / "output").c_str(), 1); });
    if (!fs::exists(directory / "output" / "job" / "matrix" / "matrix"))
        throw std::runtime_error("nothing was written");
}

void CountDestroying(const fs::path& directory)
{
    auto job = std::make_unique<CJOBX>();
    Read(*job, directory / "job");
    CountedWork([&] { job.reset(); });
}

void Run(const std::string& work, const fs::path& directory)
{
    if (work == "make")
        MakeInputs(directory);
    else if (work == "features")
        CountReading<CJOBXlayer>(directory / "features");
    else if (work == "eda")
        CountReading<CJOBXdata>(directory / "data");
    else if (work == "components")
        CountReading<CJOBXcomponents>(directory / "components");
    else if (work == "netlist")
        CountReading<CJOBXnetlist>(directory / "netlist");
    else if (work == "write")
        CountWriting(directory);
    else if (work == "destroy")
        CountDestroying(directory);
    else
        throw std::invalid_argument("no such work: " + work);
}
} // namespace

int main(int argc, char** argv)
{
    try
    {
        if (argc != 3)
            throw std::invalid_argument("usage: counted WORK DIR");
        Run(argv[1], argv[2]);
        return 0;
    }
    catch (const std::exception& problem)
    {
        std::fprintf(stderr, "error: %s\n", problem.what());
        return 1;
    }
}
