#include "panel/PanelCommand.h"

#include "options/CommonOptions.h"
#include "output/Messages.h"
#include "output/Text.h"
#include "panel/Placements.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <charconv>
#include <memory>
#include <set>

namespace
{
constexpr const char* kPanelFooter =
    R"(Each placement is one row, numbered from 1 in each step. A placement comes before those inside it. LEVEL counts
from 1; PARENT is the number of the placement around it. X and Y give the position of the placed step's datum in the
step of the first column. Lengths are in the unit of the file (see info). ANGLE is clockwise, the sum of all rotations. MIRROR is "YES"
if the placement, or one around it, is mirrored. FLIP comes from the outermost placement.

A step that repeats itself, directly or through others, is an error (exit code 3); so are more than 100000 placements.
docs/panel.schema.json describes the JSON document.

Examples and exit codes: jobx --help)";

// Rounds sums of lengths to what a person writes: 2.15, not 2.1500000000000004.
double Rounded(double sum)
{
    const std::string text = fmt::format("{:.12g}", sum);
    double rounded = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), rounded);
    return rounded;
}

struct PanelOptions
{
    ReadOptions read;
    std::vector<std::string> steps; // whose placements are printed; empty for all. Every step of the job is read.
    TableForm form = TableForm::Aligned;
};

struct PlacementRow
{
    const CJOBXstepObj& step;
    std::int64_t number;
    const Placement& placement;

    const CODBstepRepeat& Entry() const { return *placement.entry; }
};

constexpr ColumnOf<PlacementRow> kPanelColumns[] = {
    {"Step", "step", ColumnKind::Text, [](const PlacementRow& row) { return CellOf(row.step.m_sName); }},
    {"Number", "number", ColumnKind::Number, [](const PlacementRow& row) { return CellOf(row.number); }},
    {"Level", "level", ColumnKind::Number, [](const PlacementRow& row) { return CellOf(row.placement.level); }},
    {"Parent", "parent", ColumnKind::Number,
     [](const PlacementRow& row) { return row.placement.parent < 0 ? Cell() : CellOf(row.placement.parent + 1); }},
    {"Placed step", "name", ColumnKind::Text, [](const PlacementRow& row) { return CellOf(row.Entry().m_sName); }},
    {"X", "x", ColumnKind::Number, [](const PlacementRow& row) { return CellOf(Rounded(row.Entry().m_ptPosition.x)); }},
    {"Y", "y", ColumnKind::Number, [](const PlacementRow& row) { return CellOf(Rounded(row.Entry().m_ptPosition.y)); }},
    {"Angle", "angle", ColumnKind::Number, [](const PlacementRow& row) { return CellOf(row.Entry().m_dAngle); }},
    {"Mirror", "mirror", ColumnKind::Text, [](const PlacementRow& row) { return CellOf(row.Entry().m_sMirror); }},
    {"Flip", "flip", ColumnKind::Text, [](const PlacementRow& row) { return CellOf(row.Entry().m_sFlip); }},
};

void AddStep(Table& table, const CJOBXstepObj& step, const std::vector<Placement>& placements)
{
    const std::span<const ColumnOf<PlacementRow>> columns = kPanelColumns;
    std::int64_t number = 0;
    for (const Placement& placement : placements)
        table.Add(CellsOf(columns, PlacementRow{step, ++number, placement}));
}

void PrintPanel(const PanelOptions& options)
{
    const ReadJob read = ReadGoodJobDirectory(options.read);
    const CJOBX* const job = read.job.get();
    Table table(HeadsOf(std::span<const ColumnOf<PlacementRow>>(kPanelColumns)));
    std::set<std::string> unknown;
    std::int64_t room = kMaxPlacements;
    PlacementFinder finder(*job);
    for (const CJOBXstepObj* const step : StepsNamed(*job, options.steps))
    {
        const Placements placements = finder.Find(*step, room);
        room -= static_cast<std::int64_t>(placements.all.size());
        AddStep(table, *step, placements.all);
        for (const CString& name : placements.unknownSteps)
            unknown.insert(Printable(name.View()));
    }
    for (const std::string& name : unknown)
        PrintWarning(fmt::format("step \"{}\" is repeated but not in the job", name));
    Output output;
    table.Print(output, options.form);
    CheckStrictly(options.read, read);
}
} // namespace

void AddPanelCommand(CLI::App& app)
{
    const auto options = std::make_shared<PanelOptions>();
    CLI::App& command = AddJobCommand(app, "panel", "Prints the positions of repeated steps as a table", options->read);
    AddWay(command, options->read);
    AddSteps(command, options->steps);
    AddTableForms(command, options->form);
    command.footer(kPanelFooter);
    command.callback([options] { PrintPanel(*options); });
}
