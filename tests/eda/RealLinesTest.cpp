// The lines of the EDA, components and netlist files of whole jobs, for saving them.
#include "components/CJOBXcomponentsFields.h"
#include "components/ComponentsLines.h"
#include "components/ComponentsReader.h"
#include "eda/CJOBXdataFields.h"
#include "eda/EdaLines.h"
#include "eda/EdaReader.h"
#include "netlist/CJOBXnetlistFields.h"
#include "netlist/NetlistLines.h"
#include "netlist/NetlistReader.h"
#include "reading/AttributeTypesReader.h"
#include "reading/SystemAttributes.h"
#include "saving/ListedFile.h"
#include "support/TestPaths.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace real_lines_test
{
namespace fs = std::filesystem;
using listed_file::CFileReading;
using listed_file::FirstDifference;
using listed_file::TextOfFields;

namespace
{
std::string ReadFile(const fs::path& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

CAttributeTypes TypesOf(const fs::path& job)
{
    const CJOBXreading way;
    const CReadingJob reading{way, CString(job.c_str())};
    CMessageList messages(way);
    CAttributeTypes types;
    ReadAttributeTypes({reading, messages}, CSourceFolder(CString((job / "misc").c_str())), types);
    AddSystemAttributes(types);
    return types;
}

// The texts of the lines of a file that the model comes from: known lines begin with the same keyword in the source.
void ExpectKnownLinesFit(const CRecordLines& lines, const std::string& text, const fs::path& path)
{
    std::vector<std::string> source;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        source.push_back(line);
    for (const CRecordLines::Line& line : lines.Lines())
    {
        if (line.sourceLine == CRecordLines::kUnknownLine)
            continue;
        ASSERT_GT(line.sourceLine, 0) << path << lines.TextOf(line);
        ASSERT_LE(static_cast<std::size_t>(line.sourceLine), source.size()) << path << lines.TextOf(line);
        const std::string_view own = source[static_cast<std::size_t>(line.sourceLine) - 1];
        const std::string_view listed = lines.TextOf(line);
        ASSERT_EQ(own.substr(0, own.find(' ')), listed.substr(0, listed.find(' '))) << path << line.sourceLine;
    }
}

template <class Object, class List>
void ExpectReadsBack(const fs::path& path, const CAttributeTypes& types, List list)
{
    CFileReading reading;
    reading.types = types;
    const auto read = [](const CReadingContext& context, CSourceFile& file, Object& to)
    { ReadCompletely(context, file, to); };
    const std::string text = ReadFile(path);
    const auto object = reading.FromText<Object>(text, read);
    const CRecordLines lines = list(*object);
    ExpectKnownLinesFit(lines, text, path);
    const auto again = reading.FromText<Object>(lines.WholeText(), read);
    EXPECT_EQ(FirstDifference(TextOfFields(*again), TextOfFields(*object)), "") << path;
    EXPECT_EQ(FirstDifference(list(*again).WholeText(), lines.WholeText()), "") << path;
}

void ExpectFileReadsBack(const fs::path& path, const CAttributeTypes& types)
{
    const CMendedReferences references;
    const auto listWithTypes = [&](const auto& object)
    {
        CRecordLines lines;
        ListLines(object, types, references, lines);
        return lines;
    };
    const auto listNetlist = [&](const CJOBXnetlist& netlist)
    {
        CRecordLines lines;
        ListLines(netlist, references, lines);
        return lines;
    };
    const std::string name = path.filename().string();
    if (name == "data")
        ExpectReadsBack<CJOBXdata>(path, types, listWithTypes);
    else if (name == "components")
        ExpectReadsBack<CJOBXcomponents>(path, types, listWithTypes);
    else
        ExpectReadsBack<CJOBXnetlist>(path, types, listNetlist);
}

// How many files there were.
int ExpectJobReadsBack(const fs::path& job)
{
    const CAttributeTypes types = TypesOf(job);
    int count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(job / "steps"))
    {
        const std::string name = entry.path().filename().string();
        if (!entry.is_regular_file() || (name != "data" && name != "components" && name != "netlist"))
            continue;
        ExpectFileReadsBack(entry.path(), types);
        ++count;
    }
    return count;
}
} // namespace

TEST(LinesOfTheSample, ReadBackAsTheSameModel)
{
    EXPECT_EQ(ExpectJobReadsBack(fs::path(SamplesDir()) / "blinker"), 4);
}

TEST(LinesOfRealJobs, ReadBackAsTheSameModel)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    int count = 0;
    for (const auto& job : fs::directory_iterator(jobs))
        if (job.is_directory())
            count += ExpectJobReadsBack(job.path());
    EXPECT_GT(count, 5);
}
} // namespace real_lines_test
