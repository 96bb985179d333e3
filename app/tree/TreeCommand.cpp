#include "tree/TreeCommand.h"

#include "options/CommonOptions.h"
#include "reading/Files.h"
#include "reading/InsideJob.h"
#include "reading/JobPath.h"
#include "tree/FileKinds.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace
{
constexpr const char* kTreeFooter = R"(Columns:
  Name    directories with "/" behind them, and below each its files
  Kind    what the file is, by its place and name; empty if that means nothing
          to jobx
  Size    in bytes
  Status  read: its contents are in what the other commands show
          carried: a known kind of file that jobx does not read
          unknown: jobx does not know what it is

--json prints an array of the files: "path" below the job, "kind" or null,
"size" in bytes and "status". Directories behind links are not searched.

Exit codes and more examples: jobx --help)";

struct TreeOptions
{
    ReadOptions read;
    bool json = false;
};

struct JobFile
{
    std::string path; // below the job
    std::string kind;
    std::string_view status;
    std::int64_t size = 0;
};

// The files of the job in the byte order of their paths.
std::vector<JobFile> FilesOf(const ReadOptions& options, const CJOBX& job)
{
    std::set<std::string_view> carried;
    for (const CJOBXcarriedFile& file : job.m_pMisc->GetCarriedFiles()->Records())
        carried.insert(file.GetPath().View());
    const std::string directory = NamedJobPath(options.jobPath);
    const ReadLimits limits(directory, options.followLinks, options.maxEntries);
    CStringArray paths;
    Files().GetAllFileListIn(directory.c_str(), paths, "*.*", 1);
    std::vector<JobFile> files;
    for (INT_PTR i = 0; i < paths.GetSize(); ++i)
    {
        JobFile file{std::string(paths[i].View().substr(directory.size())), {}, {}, 0};
        file.path.erase(0, file.path.find_first_not_of("/\\"));
        file.kind = KindOfFile(file.path);
        file.status = !carried.contains(file.path) ? "read" : file.kind.empty() ? "unknown" : "carried";
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(std::string(paths[i].View()), error);
        file.size = error ? 0 : static_cast<std::int64_t>(size);
        files.push_back(std::move(file));
    }
    return files;
}

constexpr ColumnOf<JobFile> kFileColumns[] = {
    {"Path", "path", ColumnKind::Text, [](const JobFile& file) { return Cell(file.path); }},
    {"Kind", "kind", ColumnKind::Text,
     [](const JobFile& file) { return file.kind.empty() ? Cell() : Cell(file.kind); }},
    {"Size", "size", ColumnKind::Number, [](const JobFile& file) { return CellOf(file.size); }},
    {"Status", "status", ColumnKind::Text, [](const JobFile& file) { return CellOf(file.status); }},
};

// A row for each file, and one for each directory in front of what is in it.
Table TreeOf(const std::vector<JobFile>& files)
{
    Table table({{"Name", "name"}, {"Kind", "kind"}, {"Size", "size", true}, {"Status", "status"}});
    std::filesystem::path open;
    for (const JobFile& file : files)
    {
        const std::filesystem::path directory = std::filesystem::path(file.path).parent_path();
        std::string indent;
        auto before = open.begin();
        bool isOpen = true;
        for (const std::filesystem::path& part : directory)
        {
            isOpen = isOpen && before != open.end() && *before == part;
            if (isOpen)
                ++before;
            else
                table.Add({indent + part.string() + "/"});
            indent += "  ";
        }
        open = directory;
        table.Add({indent + std::filesystem::path(file.path).filename().string(), file.kind, file.size,
                   std::string(file.status)});
    }
    return table;
}

void PrintTree(const TreeOptions& options)
{
    const ReadJob read = ReadGoodJobDirectory(options.read);
    const std::vector<JobFile> files = FilesOf(options.read, *read.job);
    TableView view;
    if (options.json)
    {
        const std::span<const ColumnOf<JobFile>> columns = kFileColumns;
        Table table(HeadsOf(columns));
        for (const JobFile& file : files)
            table.Add(CellsOf(columns, file));
        view.form = TableForm::Json;
        PrintView(std::move(table), {"files", ""}, view, options.read.quiet);
    }
    else
        PrintView(TreeOf(files), {"files", "name,kind,size,status"}, view, options.read.quiet);
    CheckStrictly(options.read, read);
}
} // namespace

void AddTreeCommand(CLI::App& app)
{
    const auto options = std::make_shared<TreeOptions>();
    CLI::App& command = AddJobCommand(app, "tree", "Prints the files of a job and what each of them is", options->read);
    options->read.way = JOBXway::Complete;
    AddMessages(command, options->read);
    command.add_flag("--json", options->json, "As a JSON array");
    SetExample(command, "which files there are, and which of them jobx reads", "jobx tree samples/blinker");
    command.footer(kTreeFooter);
    command.callback([options] { PrintTree(*options); });
}
