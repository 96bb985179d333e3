// Every file of the sample cut at every byte, and every byte of the small ones replaced: nothing crashes, and what
// stands before the damage is read as it was.
#include "JOBXCLSDLL.h"
#include "robustness/SampleJob.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <random>
#include <set>
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
constexpr std::uintmax_t kAnySize = std::numeric_limits<std::uintmax_t>::max();
constexpr std::uintmax_t kSmall = 1024;

// The sample's files of at most that size that some reader reads, below the job.
std::vector<std::string> ReadableFiles(std::uintmax_t atMost)
{
    const fs::path job = SamplesDir() + "/blinker";
    std::vector<std::string> files;
    for (const fs::path& path : FilesBelow(job))
        if (ReaderOf(path) != nullptr && fs::file_size(path) <= atMost)
            files.push_back(path.lexically_relative(job).generic_string());
    return files;
}

std::string NameOfFile(const testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}
} // namespace

// One file of the sample: a test for each, so that they run side by side.
class DamagedFile : public testing::TestWithParam<std::string>
{
protected:
    const std::string m_path = SamplesDir() + "/blinker/" + GetParam();
    const std::string m_bytes = FileBytes(m_path);
    const std::string m_name = fs::path(m_path).filename().string();
    const Reader* const m_pReader = ReaderOf(m_path);
};

// Only small ones: every byte is replaced by several others.
class DamagedSmallFile : public DamagedFile
{
};

TEST_P(DamagedFile, CutAnywhereKeepsTheRecordsBeforeTheCut)
{
    const std::size_t step = kIsSlowBuild ? 23 : 1;
    const TempDir dir;
    const std::string copy = dir.Write(m_name, m_bytes);
    const Reading whole = m_pReader->read(copy);
    EXPECT_EQ(whole.answer, 1);
    ASSERT_FALSE(m_bytes.empty());
    for (std::size_t size = (m_bytes.size() - 1) / step * step;; size -= step)
    {
        fs::resize_file(copy, size);
        const Reading cut = m_pReader->read(copy);
        ASSERT_TRUE(cut.answer == 1 || cut.answer == 0) << size;
        ASSERT_TRUE(Keeps(cut, whole)) << size;
        if (size == 0)
            break;
    }
}

TEST_P(DamagedSmallFile, AByteReplacedAnywhereKeepsTheRecordsBeforeItsLine)
{
    const std::size_t step = kIsSlowBuild ? 23 : 1;
    const TempDir dir;
    const TempDir beginning;
    std::fstream damaged(dir.Write(m_name, m_bytes), std::ios::binary | std::ios::in | std::ios::out);
    const auto put = [&damaged](std::size_t at, char byte)
    { damaged.seekp(static_cast<std::streamoff>(at)).put(byte).flush(); };
    Reading before{0, {}};
    for (std::size_t at = 0; at < m_bytes.size(); at += step)
    {
        if (at == 0 || step > 1 || m_bytes[at - 1] == '\n')
            before = m_pReader->read(
                beginning.Write(m_name, m_bytes.substr(0, at == 0 ? 0 : m_bytes.rfind('\n', at - 1) + 1)));
        for (const char byte : {'\0', '\xFF', '\n', ' ', ';'})
        {
            put(at, byte);
            const Reading now = m_pReader->read(dir.Path(m_name));
            ASSERT_TRUE(now.answer == 1 || now.answer == 0) << at;
            ASSERT_TRUE(Keeps(before, now)) << at << " " << static_cast<int>(byte);
        }
        put(at, m_bytes[at]);
    }
    ASSERT_TRUE(damaged.good());
}

INSTANTIATE_TEST_SUITE_P(Sample, DamagedFile, testing::ValuesIn(ReadableFiles(kAnySize)), NameOfFile);
INSTANTIATE_TEST_SUITE_P(Sample, DamagedSmallFile, testing::ValuesIn(ReadableFiles(kSmall)), NameOfFile);

// So that none of the tests above is missing.
TEST(DamagedFiles, EveryReaderHasFilesToDamage)
{
    std::set<std::string> names;
    std::uintmax_t all = 0;
    std::uintmax_t small = 0;
    for (const std::string& path : ReadableFiles(kAnySize))
    {
        names.insert(fs::path(path).filename().string());
        const std::uintmax_t size = fs::file_size(SamplesDir() + "/blinker/" + path);
        all += size;
        small += size <= kSmall ? size : 0;
    }
    EXPECT_EQ(names.size(), std::size(kReaders));
    EXPECT_GT(all, 50'000U);
    EXPECT_GT(small, 5'000U);
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
        const std::string bytes = FileBytes(path.string());
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
