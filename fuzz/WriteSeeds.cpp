// Writes the seeds of every target into FOLDER/<target>/: jobx_fuzz_seeds SAMPLE FOLDER
#include "FuzzSeeds.h"
#include "FuzzTargets.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace
{
void WriteSeeds(const std::string& sample, const fs::path& folder)
{
    for (const FuzzTarget& target : FuzzTargets())
    {
        const fs::path place = folder / target.name;
        fs::remove_all(place);
        fs::create_directories(place);
        for (const FuzzSeed& seed : FuzzSeeds(target.name, sample))
        {
            std::ofstream file(place / seed.name, std::ios::binary);
            file.write(seed.bytes.data(), static_cast<std::streamsize>(seed.bytes.size()));
            file.close();
            if (!file)
                throw std::runtime_error("cannot write " + (place / seed.name).string());
        }
    }
}
} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
    {
        std::fputs("usage: jobx_fuzz_seeds SAMPLE FOLDER\n", stderr);
        return 2;
    }
    try
    {
        WriteSeeds(argv[1], argv[2]);
        return 0;
    }
    catch (const std::exception& exception)
    {
        std::fprintf(stderr, "jobx_fuzz_seeds: %s\n", exception.what());
        return 1;
    }
}
