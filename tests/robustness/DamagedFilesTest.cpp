// Every file of the sample cut at every byte, and every byte of the small ones replaced: nothing crashes, and what
// stands before the damage is read as it was.
#include "JOBXCLSDLL.h"
#include "robustness/SampleJob.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{
using Records = std::vector<std::string>;

// What a reader answered and the lists that it filled, each record as the library writes it.
struct Reading
{
    int answer;
    std::vector<Records> lists;
};

template <class Object>
std::string Written(const Object& object)
{
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* const stream = open_memstream(&text, &size);
    object.WriteODBData(stream);
    std::fclose(stream);
    std::string written(text, size);
    std::free(text);
    return written;
}

std::string Written(const CJOBXstepRepeat& repeat)
{
    return std::string(repeat.m_sName.View()) + " " + std::to_string(repeat.m_ptPosition.x) + " " +
           std::to_string(repeat.m_ptCount.x);
}

std::string Written(const CJOBXfontsStandard& character)
{
    return std::string(character.m_sName.View()) + "\n" + Written(character.m_arrStrokes);
}

template <class Array>
Records WrittenList(const Array& array)
{
    Records records;
    for (__int64 i = 0; i < array.GetSize(); ++i)
        records.push_back(Written(*array.GetAt(i)));
    return records;
}

std::string DirectoryOf(const std::string& path)
{
    return fs::path(path).parent_path().string();
}

Reading ReadFeatures(const std::string& path)
{
    CJOBXlayer layer;
    const int answer = layer.ParseODBOfMFC(path.c_str());
    return {answer, {WrittenList(*layer.GetFeatures())}};
}

Reading ReadComponents(const std::string& path)
{
    CJOBXcomponents components;
    const int answer = components.ParseODBOfMFC(path.c_str());
    return {answer, {WrittenList(components.m_arrCmps)}};
}

Reading ReadEda(const std::string& path)
{
    CJOBXeda eda;
    const int answer = eda.ParseODBOfMFC(DirectoryOf(path).c_str());
    return {answer, {WrittenList(eda.m_pData->m_arrNets), WrittenList(eda.m_pData->m_arrPkgs)}};
}

Reading ReadNetlist(const std::string& path)
{
    CJOBXnetlist netlist;
    Reading reading{netlist.ParseODBOfMFC(path.c_str()), {{}}};
    for (__int64 i = 0; i < netlist.m_arrNets.GetSize(); ++i)
        reading.lists[0].emplace_back(netlist.m_arrNets.GetAt(i)->m_sName.View());
    return reading;
}

Reading ReadHeader(const std::string& path)
{
    CJOBXstephdr header;
    const int answer = header.ParseODBOfMFC(path.c_str());
    return {answer, {WrittenList(header.m_arrStepRepeats)}};
}

Reading ReadMatrix(const std::string& path)
{
    CJOBXmatrix matrix;
    const int answer = matrix.ParseODBOfMFC(DirectoryOf(path).c_str());
    return {answer, {WrittenList(matrix.m_arrSteps), WrittenList(matrix.m_arrLayers)}};
}

Reading ReadFont(const std::string& path)
{
    CJOBXfonts fonts;
    const int answer = fonts.ParseStandardFont(DirectoryOf(path).c_str());
    return {answer, {WrittenList(fonts.m_arrCharacters)}};
}

Reading ReadInfo(const std::string& path)
{
    CJOBXmisc misc;
    return {misc.ParseODBOfMFC(DirectoryOf(path).c_str()), {}};
}

Reading ReadAttributes(const std::string& path)
{
    CJOBXsysAttrDataArray attributes;
    Reading reading{0, {{}}};
    try
    {
        reading.answer = attributes.ParseODBOfMFC(path.c_str());
    }
    catch (CInvalidArgException* exception) // for a key without its value
    {
        exception->Delete();
    }
    for (__int64 i = 0; i < attributes.GetSize(); ++i)
    {
        reading.lists[0].emplace_back();
        for (__int64 option = 0; option < attributes.GetAt(i)->m_arrOptions.GetSize(); ++option)
            reading.lists[0].back() += std::string(attributes.GetAt(i)->m_arrOptions[option].View()) + ";";
    }
    return reading;
}

struct Reader
{
    const char* name; // of the files that it reads
    Reading (*read)(const std::string& path);
};

constexpr Reader kReaders[] = {{"features", ReadFeatures}, {"profile", ReadFeatures}, {"components", ReadComponents},
                               {"data", ReadEda},          {"netlist", ReadNetlist},  {"stephdr", ReadHeader},
                               {"matrix", ReadMatrix},     {"standard", ReadFont},    {"info", ReadInfo},
                               {"sysattr", ReadAttributes}};

const Reader* ReaderOf(const fs::path& path)
{
    const auto found = std::find_if(std::begin(kReaders), std::end(kReaders),
                                    [&](const Reader& reader) { return path.filename() == reader.name; });
    return found == std::end(kReaders) ? nullptr : found;
}

std::vector<fs::path> FilesBelow(const fs::path& directory)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string BytesOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Whether every record of `before` but the last of each list, which the damage may have changed, stands in `now`.
bool Keeps(const Reading& before, const Reading& now)
{
    for (std::size_t list = 0; list < before.lists.size(); ++list)
    {
        const Records& records = before.lists[list];
        const std::size_t sure = records.empty() ? 0 : records.size() - 1;
        if (now.lists[list].size() < sure ||
            !std::equal(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(sure), now.lists[list].begin()))
            return false;
    }
    return true;
}
} // namespace

TEST(DamagedFiles, AFileCutAnywhereKeepsTheRecordsBeforeTheCut)
{
    const int step = kIsSlowBuild ? 23 : 1;
    long cuts = 0;
    for (const fs::path& path : FilesBelow(SamplesDir() + "/blinker"))
    {
        const Reader* const reader = ReaderOf(path);
        if (reader == nullptr)
            continue;
        SCOPED_TRACE(path.string());
        const TempDir dir;
        const std::string bytes = BytesOf(path);
        const std::string copy = dir.Write(path.filename().string(), bytes);
        const Reading whole = reader->read(copy);
        EXPECT_EQ(whole.answer, 1);
        for (std::size_t size = bytes.size(); size-- > 0; ++cuts)
        {
            fs::resize_file(copy, size);
            if (size % static_cast<std::size_t>(step) != 0)
                continue;
            const Reading cut = reader->read(copy);
            ASSERT_TRUE(cut.answer == 1 || cut.answer == 0) << size;
            ASSERT_TRUE(Keeps(cut, whole)) << size;
        }
    }
    EXPECT_GT(cuts, 50'000);
    RecordProperty("cuts", std::to_string(cuts / step));
}

TEST(DamagedFiles, AByteReplacedAnywhereKeepsTheRecordsBeforeItsLine)
{
    constexpr std::size_t kSmall = 1024;
    const std::size_t step = kIsSlowBuild ? 23 : 1;
    long replaced = 0;
    for (const fs::path& path : FilesBelow(SamplesDir() + "/blinker"))
    {
        const Reader* const reader = ReaderOf(path);
        const std::string bytes = BytesOf(path);
        if (reader == nullptr || bytes.size() > kSmall)
            continue;
        SCOPED_TRACE(path.string());
        const TempDir dir;
        const TempDir beginning;
        const std::string name = path.filename().string();
        std::fstream damaged(dir.Write(name, bytes), std::ios::binary | std::ios::in | std::ios::out);
        const auto put = [&damaged](std::size_t at, char byte)
        { damaged.seekp(static_cast<std::streamoff>(at)).put(byte).flush(); };
        Reading before{0, {}};
        for (std::size_t at = 0; at < bytes.size(); at += step)
        {
            if (at == 0 || step > 1 || bytes[at - 1] == '\n')
                before =
                    reader->read(beginning.Write(name, bytes.substr(0, at == 0 ? 0 : bytes.rfind('\n', at - 1) + 1)));
            for (const char byte : {'\0', '\xFF', '\n', ' ', ';'})
            {
                put(at, byte);
                const Reading now = reader->read(dir.Path(name));
                ASSERT_TRUE(now.answer == 1 || now.answer == 0) << at;
                ASSERT_TRUE(Keeps(before, now)) << at << " " << static_cast<int>(byte);
                ++replaced;
            }
            put(at, bytes[at]);
        }
        ASSERT_TRUE(damaged.good());
    }
    EXPECT_GT(replaced, kIsSlowBuild ? 1000 : 25'000);
    RecordProperty("replaced", std::to_string(replaced));
}

TEST(DamagedFiles, ACompressedFileCutAnywhereGivesAllOrItsBeginningOrNothing)
{
    const TempDir dir;
    const std::string path = dir.Path("features.Z");
    fs::copy(SamplesDir() + "/blinker/symbols/mount_ring/features.Z", path);
    CKUtility* const files = CKUtility::GetInstance();
    ASSERT_EQ(files->GDecompress(path.c_str()), 1);
    const std::string whole = dir.Read("features");
    for (std::size_t size = fs::file_size(path); size-- > 0;)
    {
        fs::resize_file(path, size);
        dir.Write("features", "old");
        const int result = files->GDecompress(path.c_str());
        const std::string now = dir.Read("features");
        if (result == 0)
            ASSERT_EQ(now, "old") << size;
        else // the format has no end mark
            ASSERT_TRUE(result == 1 && whole.starts_with(now)) << size;
    }
}

// A job with one damaged file goes the whole way: read, changed, written, read again.
TEST(DamagedFiles, AJobWithACutFileIsReadChangedAndWritten)
{
    const TempDir dir;
    const std::string job = CopySample(dir);
    SetMessageBoxHandler([](CWnd*, LPCSTR, LPCSTR, UINT) { return 1; });
    const unsigned seed = 20240607;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    int files = 0;
    for (const fs::path& path : FilesBelow(job))
    {
        SCOPED_TRACE(path.string());
        const std::string bytes = BytesOf(path);
        for (int round = 0; round < (kIsSlowBuild ? 1 : 3); ++round)
        {
            fs::resize_file(path, random() % (bytes.size() + 1));
            CJOBX read;
            const int answer = read.ParseODBOfMFC(job.c_str());
            read.UnitConvert(25.4);
            read.RebuildStepObj();
            read.SetODBProjectName("again");
            read.WriteODBData(dir.Path().c_str(), 1);
            CJOBX again;
            EXPECT_EQ(again.ParseODBOfMFC(dir.Path("again").c_str()), answer);
            EXPECT_EQ(again.m_pSteps->m_arrSteps.GetSize(), read.m_pSteps->m_arrSteps.GetSize());
        }
        std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
        ++files;
    }
    SetMessageBoxHandler(nullptr);
    EXPECT_GT(files, 60);
}
