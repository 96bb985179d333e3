#include "panel/PanelCommand.h"

#include "output/Messages.h"
#include "output/Text.h"
#include "panel/Placements.h"

#include <fmt/core.h>

#include <charconv>
#include <set>

namespace
{
// Sums of lengths as a person writes them: 2.15, not 2.1500000000000004.
double Rounded(double sum)
{
    const std::string text = fmt::format("{:.12g}", sum);
    double rounded = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), rounded);
    return rounded;
}

void AddStep(Table& table, const CJOBXstepObj& step, const std::vector<Placement>& placements)
{
    std::int64_t number = 0;
    for (const Placement& placement : placements)
    {
        const CODBstepRepeat& entry = *placement.entry;
        table.Add({CellOf(step.m_sName), CellOf(++number), CellOf(placement.level),
                   placement.parent < 0 ? Cell() : CellOf(placement.parent + 1), CellOf(entry.m_sName),
                   CellOf(Rounded(entry.m_ptPosition.x)), CellOf(Rounded(entry.m_ptPosition.y)), CellOf(entry.m_dAngle),
                   CellOf(entry.m_sMirror), CellOf(entry.m_sFlip)});
    }
}

std::vector<const CJOBXstepObj*> ChosenSteps(const CJOBX& job, const std::string& stepName)
{
    if (!stepName.empty())
        return {&StepNamed(job, stepName)};
    std::vector<const CJOBXstepObj*> all;
    const CJOBXstepObjArray& steps = job.m_pSteps->m_arrSteps;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        if (const CJOBXstepObj* const step = steps.GetAt(i))
            all.push_back(step);
    return all;
}
} // namespace

void RunPanel(const ReadOptions& options, const std::string& stepName, TableForm form)
{
    const std::unique_ptr<CJOBX> job = ReadGoodJob(options);
    Table table({{"Step", "step"},
                 {"Number", "number", true},
                 {"Level", "level", true},
                 {"Parent", "parent", true},
                 {"Placed step", "name"},
                 {"X", "x", true},
                 {"Y", "y", true},
                 {"Angle", "angle", true},
                 {"Mirror", "mirror"},
                 {"Flip", "flip"}});
    std::set<std::string> unknown;
    std::int64_t room = kMaxPlacements;
    PlacementFinder finder(*job);
    for (const CJOBXstepObj* const step : ChosenSteps(*job, stepName))
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
    table.Print(output, form);
}
