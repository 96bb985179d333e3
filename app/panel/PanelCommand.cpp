#include "panel/PanelCommand.h"

#include "model/FieldWords.h"
#include "model/ShownUnit.h"
#include "options/CommonOptions.h"
#include "output/Messages.h"
#include "output/TableView.h"
#include "output/Text.h"
#include "panel/Placements.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <memory>
#include <optional>
#include <set>

namespace
{
constexpr const char* kPanelFooter = R"(Columns, with one placement in a row; a placement comes before those inside it:
  Step         the step in which the placement lies; only if several are shown
  Number       counts the placements in that step from 1
  Level        1 for what the step itself repeats, one more for each step
               between; only if there are several levels
  Parent       the number of the placement around it
  Placed step (name)
               the step that is placed
  X, Y         the position of the placed step's datum in the step of the first
               column, in the unit of the title
  Angle        clockwise, in degrees, the sum of all rotations
  Mirror       YES if the placement, or one around it, is mirrored
  Flip         from the outermost placement
With --wide:
  Unit         of X and Y: mm or inch

A step that repeats itself, directly or through others, is an error (exit code
3); so are more than 100000 placements. docs/panel.schema.json describes the
JSON document.

Columns that are empty in every row are left out. On a terminal, texts are
shortened, and columns left out from the right, until the lines fit; --wide and
--columns prevent that. Lengths in the aligned table are rounded to 4 decimals
of mm or 5 of inch; --csv and --json have all digits, all columns, and a column
"unit". --columns and --sort take a title, or a key from the first line of
--csv.

--legacy prints the columns of earlier versions. It can be combined with --csv,
--json and --step only.

Exit codes and more examples: jobx --help)";

constexpr TableKind kPlacements{"placements", "step?,number,level?,parent,name,x,y,angle,mirror,flip"};

struct PanelOptions
{
    ReadOptions read;
    std::vector<std::string> steps; // whose placements are printed; empty for all. Every step of the job is read.
    TableView view;
    std::optional<JOBXunit> unit;

    bool IsClassic() const { return read.way == JOBXway::Classic; }
};

struct PlacementRow
{
    const CJOBXstepObj& step;
    std::int64_t number;
    const Placement& placement;
    JOBXunit unit;

    const CODBstepRepeat& Entry() const { return *placement.entry; }
};

constexpr ColumnOf<PlacementRow> kPanelColumns[] = {
    {"Step", "step", ColumnKind::Text, [](const PlacementRow& row) { return CellOf(row.step.m_sName); }},
    {"Number", "number", ColumnKind::Number, [](const PlacementRow& row) { return CellOf(row.number); }},
    {"Level", "level", ColumnKind::Number, [](const PlacementRow& row) { return CellOf(row.placement.level); }},
    {"Parent", "parent", ColumnKind::Number,
     [](const PlacementRow& row) { return row.placement.parent < 0 ? Cell() : CellOf(row.placement.parent + 1); }},
    {"Placed step", "name", ColumnKind::Text, [](const PlacementRow& row) { return CellOf(row.Entry().m_sName); }},
    {"X", "x", ColumnKind::Length,
     [](const PlacementRow& row) { return CellOf(RoundedLength(row.Entry().m_ptPosition.x)); }},
    {"Y", "y", ColumnKind::Length,
     [](const PlacementRow& row) { return CellOf(RoundedLength(row.Entry().m_ptPosition.y)); }},
    {"Angle", "angle", ColumnKind::Number, [](const PlacementRow& row) { return CellOf(row.Entry().m_dAngle); }},
    {"Mirror", "mirror", ColumnKind::Text, [](const PlacementRow& row) { return CellOf(row.Entry().m_sMirror); }},
    {"Flip", "flip", ColumnKind::Text, [](const PlacementRow& row) { return CellOf(row.Entry().m_sFlip); }},
    {"Unit", "unit", ColumnKind::Text, [](const PlacementRow& row) { return CellOf(WordFor(row.unit)); }},
};

std::span<const ColumnOf<PlacementRow>> ColumnsFor(const PanelOptions& options)
{
    const std::span<const ColumnOf<PlacementRow>> all = kPanelColumns;
    return options.IsClassic() ? all.first(all.size() - 1) : all;
}

Table PlacementsTable(const CJOBX& job, const PanelOptions& options)
{
    const ShownUnit unit(job, options.unit);
    Table table(HeadsOf(ColumnsFor(options), options.IsClassic() ? std::nullopt : std::optional(unit.Unit())));
    std::set<std::string> unknown;
    std::int64_t room = kMaxPlacements;
    PlacementFinder finder(job, unit);
    for (const CJOBXstepObj* const step : StepsNamed(job, options.steps))
    {
        const Placements placements = finder.Find(*step, room);
        room -= static_cast<std::int64_t>(placements.all.size());
        std::int64_t number = 0;
        for (const Placement& placement : placements.all)
            table.Add(CellsOf(ColumnsFor(options), PlacementRow{*step, ++number, placement, unit.Unit()}));
        for (const CString& name : placements.unknownSteps)
            unknown.insert(Printable(name.View()));
    }
    for (const std::string& name : unknown)
        PrintWarning(fmt::format("step \"{}\" is repeated but not in the job", name));
    return table;
}

void PrintPanel(const PanelOptions& options)
{
    if (!options.IsClassic())
        CheckView(HeadsOf(ColumnsFor(options)), kPlacements, options.view);
    const ReadJob read = ReadGoodJobDirectory(options.read);
    const Table table = PlacementsTable(*read.job, options);
    Output output;
    if (options.IsClassic())
        table.Print(output, options.view.form);
    else
        PrintView(table, kPlacements, options.view, options.read.quiet);
    CheckStrictly(options.read, read);
}
} // namespace

void AddPanelCommand(CLI::App& app)
{
    const auto options = std::make_shared<PanelOptions>();
    CLI::App& command = AddJobCommand(app, "panel", "Prints the positions of repeated steps as a table", options->read);
    CLI::Option* const legacy = AddWay(command, options->read);
    AddSteps(command, options->steps);
    AddTableView(command, options->view);
    AddUnits(command, options->unit);
    RefuseTogether(command, legacy, {"--wide", "--columns", "--sort", "--units"});
    SetExample(command, "where the boards lie on a panel", "jobx panel samples/blinker --step panel --units mm");
    command.footer(kPanelFooter);
    command.callback([options] { PrintPanel(*options); });
}
