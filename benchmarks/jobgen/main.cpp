// jobgen: writes a job of any size, the same for the same options.
#include "JobGenerator.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <string>

namespace
{
void Print(const char* name, std::int64_t count)
{
    std::printf("%-22s %12lld\n", name, static_cast<long long>(count));
}

void Print(const JobCounts& counts)
{
    Print("bytes", static_cast<std::int64_t>(counts.bytes));
    Print("files", counts.files);
    Print("steps", counts.steps);
    Print("layers", counts.layers);
    Print("symbols", counts.symbols);
    Print("symbol features", counts.symbolFeatures);
    Print("features", counts.features);
    Print("  lines", counts.lines);
    Print("  pads", counts.pads);
    Print("  arcs", counts.arcs);
    Print("  surfaces", counts.surfaces);
    Print("  texts", counts.texts);
    Print("  barcodes", counts.barcodes);
    Print("contours", counts.contours);
    Print("contour elements", counts.contourElements);
    Print("feature attributes", counts.featureAttributes);
    Print("nets", counts.nets);
    Print("subnets", counts.subnets);
    Print("net features", counts.netFeatures);
    Print("packages", counts.packages);
    Print("pins", counts.pins);
    Print("components", counts.components);
    Print("component properties", counts.componentProperties);
    Print("toeprints", counts.toeprints);
    Print("netlist points", counts.netPoints);
}
int Run(int argc, char** argv)
{
    JobPlan plan;
    std::string directory;
    bool quiet = false;
    CLI::App app("Writes a job of any size: made-up records in the mix of real boards. The same options give the same "
                 "bytes.");
    app.add_option("-o,--output", directory, "The job's directory; must be empty or not be there")->required();
    app.add_option("--megabytes", plan.megabytes, "Size of all files together")->capture_default_str();
    app.add_option("--layers", plan.layers, "Layers with features in every step")->capture_default_str();
    app.add_option("--steps", plan.steps, "Steps; the first repeats the others")->capture_default_str();
    app.add_option("--symbols", plan.symbols, "User symbols")->capture_default_str();
    app.add_flag("--compress-symbols", plan.compressSymbols, "Write the user symbols as features.Z");
    app.add_flag("--ids", plan.uniqueNumbers, "Give each feature of a layer a unique number, as \";0,2=1;ID=61417\"");
    app.add_option("--nets", plan.nets, "Nets of all steps together (default: as many as fit the size)");
    app.add_option("--components", plan.components,
                   "Components of all steps together (default: as many as fit the size)");
    app.add_option("--balance", plan.balance, "1: all layers are equally large, 0: the first layer has it all")
        ->capture_default_str();
    app.add_option("--seed", plan.seed, "Another seed gives other records")->capture_default_str();
    app.add_flag("-q,--quiet", quiet, "Do not print the counts");
    CLI11_PARSE(app, argc, argv);
    const JobCounts counts = GenerateJob(plan, directory);
    if (!quiet)
        Print(counts);
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    try
    {
        return Run(argc, argv);
    }
    catch (const std::exception& problem)
    {
        std::fprintf(stderr, "error: %s\n", problem.what());
        return 1;
    }
}
