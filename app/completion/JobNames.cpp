#include "completion/JobNames.h"

#include "JOBXCLSDLL.h"
#include "output/Text.h"
#include "reading/Files.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <set>

namespace
{
constexpr std::size_t kMostNets = 1000;
constexpr std::chrono::seconds kLongest{1};
constexpr std::size_t kLongestLine = 0x10000;
constexpr std::size_t kLongestName = 250;

// Whether it stays one word that looks the same everywhere.
bool IsPlain(const std::string& name)
{
    return !name.empty() && name.size() <= kLongestName && name.find(' ') == std::string::npos &&
           Printable(name) == name;
}

class Names
{
public:
    explicit Names(const NameStart& start) : m_start(start) {}

    void Add(std::string_view text)
    {
        std::string name(text);
        if (m_start.IsOf(name) && IsPlain(name) && m_seen.insert(name).second)
            m_names.push_back(std::move(name));
    }
    std::size_t Count() const { return m_names.size(); }
    std::vector<std::string> Take() { return std::move(m_names); }

private:
    const NameStart& m_start;
    std::set<std::string> m_seen;
    std::vector<std::string> m_names;
};

// Calls `take(matrix)` with the matrix alone.
template <class Take>
void WithMatrix(const std::string& jobPath, Take take)
{
    if (!IsJob(jobPath) || !Files().IsDir(Files().FindPath(jobPath.c_str(), "steps")))
        return;
    CJOBX job;
    CStringArray steps;
    job.ParseMatrixInODBOfMFC(jobPath.c_str(), steps);
    take(*job.m_pMatrix);
}

// Where the names are in a file.
enum class NamesAre
{
    Together,
    Scattered,
};

class NetScan
{
public:
    explicit NetScan(Names& names) : m_names(names) {}

    bool IsOver() const { return m_names.Count() >= kMostNets || std::chrono::steady_clock::now() > m_end; }

    // False if there is no such file.
    bool Scan(const CString& path, std::string_view (*nameIn)(std::string_view line), NamesAre where)
    {
        if (!Files().IsFile(path))
            return false;
        std::ifstream file(std::string(path.View()), std::ios::binary);
        bool hasNames = false;
        // A longer line fails, which ends the loop; it is of no netlist.
        for (std::vector<char> buffer(kLongestLine); file.getline(buffer.data(), kLongestLine) && !IsOver();)
        {
            std::string_view line = buffer.data();
            while (!line.empty() && static_cast<unsigned char>(line.back()) <= ' ')
                line.remove_suffix(1);
            const std::string_view name = nameIn(line);
            if (hasNames && name.empty() && where == NamesAre::Together)
                break;
            hasNames = hasNames || !name.empty();
            m_names.Add(name);
        }
        return file.is_open();
    }

private:
    Names& m_names;
    std::chrono::steady_clock::time_point m_end = std::chrono::steady_clock::now() + kLongest;
};

// In a netlist: "$12 GND".
std::string_view NameInNetlist(std::string_view line)
{
    const std::size_t blank = line.find(' ');
    return line.starts_with('$') && blank != std::string_view::npos ? line.substr(blank + 1) : std::string_view();
}

// In EDA data: "NET GND", in newer files with attributes behind a semicolon.
std::string_view NameInEda(std::string_view line)
{
    constexpr std::string_view kMark = "NET ";
    if (!line.starts_with(kMark))
        return {};
    line.remove_prefix(kMark.size());
    return line.substr(0, line.find_first_of(" ;"));
}
} // namespace

bool NameStart::IsOf(std::string_view name) const
{
    const std::string_view begin = name.substr(0, text.size());
    return letterCase == LetterCase::Ignored ? CString(begin).CompareNoCase(CString(std::string_view(text))) == 0
                                             : begin == text;
}

bool IsJob(const std::string& path)
{
    // No link may lead to files outside.
    CKUtility::GetInstance()->SetLinkBoundary(path.c_str());
    return !path.empty() && Files().IsDir(path.c_str()) &&
           Files().IsFile(Files().FindPath(path.c_str(), "matrix/matrix"));
}

std::vector<std::string> StepNames(const std::string& jobPath, const NameStart& start)
{
    Names names(start);
    WithMatrix(jobPath,
               [&](const CJOBXmatrix& matrix)
               {
                   for (const CJOBXmatrixStep& step : matrix.m_arrSteps.Records())
                       names.Add(step.m_sName.View());
               });
    return names.Take();
}

std::vector<std::string> LayerNames(const std::string& jobPath, const NameStart& start)
{
    Names names(start);
    WithMatrix(jobPath,
               [&](const CJOBXmatrix& matrix)
               {
                   for (const CJOBXmatrixLayer& layer : matrix.m_arrLayers.Records())
                       names.Add(layer.m_sName.View());
               });
    return names.Take();
}

std::vector<std::string> NetNames(const std::string& jobPath, const NameStart& start)
{
    Names names(start);
    NetScan scan(names);
    CStringArray steps;
    if (IsJob(jobPath))
        Files().GetAllSubDirListIn(Files().FindPath(jobPath.c_str(), "steps"), steps, 0);
    for (INT_PTR i = 0; i < steps.GetSize() && !scan.IsOver(); ++i)
        // The names are at the start of the netlist, but all over the EDA data, which may be large.
        if (!scan.Scan(Files().FindPath(steps[i], "netlists/cadnet/netlist"), NameInNetlist, NamesAre::Together))
            scan.Scan(Files().FindPath(steps[i], "eda/data"), NameInEda, NamesAre::Scattered);
    return names.Take();
}
