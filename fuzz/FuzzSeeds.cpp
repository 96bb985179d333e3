#include "FuzzSeeds.h"

#include "JOBXCLSDLL.h"
#include "JobArchive.h"
#include "foundation/corekit/LzwEncoder.h"
#include "support/TempDir.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>

namespace fs = std::filesystem;

namespace
{
// A file of every name below `folder`, in a stable order.
std::vector<std::string> FilesBelow(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            names.push_back(entry.path().lexically_relative(folder).generic_string());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<FuzzSeed> FilesNamed(const fs::path& sample, std::initializer_list<std::string_view> fileNames)
{
    std::vector<FuzzSeed> seeds;
    for (const std::string& name : FilesBelow(sample))
    {
        const std::string fileName = fs::path(name).filename().string();
        if (std::find(fileNames.begin(), fileNames.end(), fileName) == fileNames.end())
            continue;
        std::string flat = name;
        std::replace(flat.begin(), flat.end(), '/', '-');
        seeds.push_back({flat, FileBytes((sample / name).string())});
    }
    return seeds;
}

std::vector<FuzzSeed> CompressedFiles(const fs::path& sample)
{
    const std::string features = FileBytes((sample / "steps/pcb/layers/bot/features").string());
    const std::string run(70000, 'a');
    return {{"mount_ring", FileBytes((sample / "symbols/mount_ring/features.Z").string())},
            {"empty", EncodeLzw("")},
            {"sixteen_bits", EncodeLzw(features)},
            {"nine_bits", EncodeLzw(features, {.maxWidth = 9})},
            {"without_blocks", EncodeLzw(features, {.maxWidth = 10, .blockMode = false})},
            {"cleared_often", EncodeLzw(features, {.maxWidth = 12, .clearEvery = 100})},
            {"one_long_run", EncodeLzw(run)}};
}

std::vector<FuzzSeed> Numbers()
{
    return {{"plain", "0\n-1\n1.5\n-0.302000\n25.4\n.5\n5.\n123456.789\n2147483648\n-2147483649\n"},
            {"exact_halves", "0.5\n0.0000005\n0.0000015\n2.5e-7\n1e22\n1e23\n9007199254740993\n4503599627370497.5\n"},
            {"extremes", "1e308\n1.7976931348623159e308\n4.9e-324\n2.4e-324\n1e999999999999\n1e-999999999999\n"},
            {"other_forms", "0x1p-1\n0x.8\n0x\ninf\n-Infinity\nnan\nnan(1)\n1e\n1e+\n+1\n--1\n1,5\n \t1\v\n"},
            {"many_digits", "3.14159265358979323846264338327950288419716939937510\n" + std::string(200, '9') + "\n0." +
                                std::string(200, '0') + "1\n123456789012345678\n1234567890123456789\n"}};
}

std::string Stored(const CJOBXPropertyArray& source)
{
    CJOBXPropertyArray properties(source);
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    properties.Serialize(archive);
    archive.Close();
    return {reinterpret_cast<const char*>(file.GetBufferPtr()), static_cast<std::size_t>(file.GetLength())};
}

std::vector<FuzzSeed> PropertyArchives()
{
    CJOBXPropertyArray properties;
    std::vector<FuzzSeed> seeds{{"none", Stored(properties)}};
    for (const int length : {0, 5, 254, 255, 300, 65535})
    {
        auto property = std::make_unique<CJOBXProperty>();
        property->m_sName = ".geometry";
        property->m_sValue = CString('v', length);
        properties.Own(std::move(property));
        if (length <= 300)
            seeds.push_back({"to_length_" + std::to_string(length), Stored(properties)});
    }
    seeds.push_back({"to_length_65535", Stored(properties)});
    // The list with a count of 32 bits and one text in the wide form: "a", U+00E9, U+1F600.
    using namespace std::string_literals;
    seeds.push_back({"short_count_and_wide_text", "\1\0\0\0\1\0\0\0\1\0\0\0\xFF\xFE\xFF\4a\0\xE9\0\x3D\xD8\0\xDE\1b"s});
    return seeds;
}

std::string Packed(const fs::path& sample, std::initializer_list<std::string_view> beginnings)
{
    std::string archive;
    for (const std::string& name : FilesBelow(sample))
        if (std::any_of(beginnings.begin(), beginnings.end(),
                        [&](std::string_view beginning) { return name.starts_with(beginning); }))
            archive += PackFile(name, FileBytes((sample / name).string()));
    return archive;
}

std::vector<FuzzSeed> Jobs(const fs::path& sample)
{
    const std::string matrix = PackFile(
        "matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\nSTEP {\nCOL=2\nNAME=PANEL\n}\nLAYER {\nROW=1\nCONTEXT=BOARD\n"
                         "TYPE=SIGNAL\nNAME=TOP\nPOLARITY=POSITIVE\n}\n");
    const std::string profile = PackFile("steps/pcb/profile", "S P 0\nOB 0 0 I\nOS 0 1\nOS 1 1\nOE\nSE\n");
    const std::string board = matrix + profile;
    return {{"matrix_and_panel", Packed(sample, {"matrix/", "misc/", "steps/panel/"})},
            {"panel", matrix + profile + Packed(sample, {"steps/panel/profile", "steps/panel/stephdr"})},
            {"layers",
             board + Packed(sample, {"steps/pcb/layers/notes/", "steps/pcb/layers/rout/", "steps/pcb/layers/ssb/"})},
            {"components", board + Packed(sample, {"steps/pcb/layers/comp_+_bot/", "steps/pcb/layers/drill/"})},
            {"eda_data", board + Packed(sample, {"steps/pcb/eda/"})},
            {"netlist", board + Packed(sample, {"steps/pcb/netlists/"})},
            {"symbols", board + Packed(sample, {"symbols/", "misc/"})},
            {"font", board + PackFile("standard", "XSIZE 0.302\nCHAR A\nLINE 0 0 1 1 P R 0.012\nECHAR\n") +
                         PackFile("fonts/standard", "CHAR B\nLINE 0 0 1 1 P R 0.012\nECHAR\n")}};
}
} // namespace

std::vector<FuzzSeed> FuzzSeeds(std::string_view target, const std::string& sample)
{
    if (target == "features")
        return FilesNamed(sample, {"features", "profile"});
    if (target == "eda_data")
        return FilesNamed(sample, {"data"});
    if (target == "decompress")
        return CompressedFiles(sample);
    if (target == "numbers")
        return Numbers();
    if (target == "properties")
        return PropertyArchives();
    if (target == "job")
        return Jobs(sample);
    return FilesNamed(sample, {target == "font" ? "standard" : target});
}
