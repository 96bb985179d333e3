#include "tables/PackagesCommand.h"

#include "model/PackageIndex.h"

#include <unordered_map>

namespace
{
// How many components of the step use each package.
std::unordered_map<const CJOBXdataPkg*, std::int64_t> CountUses(const CJOBXstepObj& step)
{
    const PackageIndex packages(step.GetEda()->m_pData->m_arrPkgs);
    std::unordered_map<const CJOBXdataPkg*, std::int64_t> uses;
    for (__int64 f = 0; f < step.m_arrComponents.GetSize(); ++f)
    {
        const CJOBXcomponents* const file = step.m_arrComponents.GetAt(f);
        for (__int64 i = 0; file != nullptr && i < file->m_arrCmps.GetSize(); ++i)
            if (const CJOBXcmp* const component = file->m_arrCmps.GetAt(i))
                ++uses[packages.Find(component->m_nPkgRef)];
    }
    return uses;
}

void AddStep(Table& table, const CJOBXstepObj& step)
{
    auto uses = CountUses(step);
    const CJOBXdataPkgArray& packages = step.GetEda()->m_pData->m_arrPkgs;
    for (__int64 i = 0; i < packages.GetSize(); ++i)
    {
        const CJOBXdataPkg* const package = packages.GetAt(i);
        if (package == nullptr)
            continue;
        table.Add({CellOf(step.m_sName), CellOf(static_cast<std::int64_t>(i)), CellOf(package->m_nNumber),
                   CellOf(package->m_sName), CellOf(package->m_dPitch), CellOf(package->m_ptLowerLeft.x),
                   CellOf(package->m_ptLowerLeft.y), CellOf(package->m_ptUpperRight.x),
                   CellOf(package->m_ptUpperRight.y), CellOf(static_cast<std::int64_t>(package->m_arrPins.GetSize())),
                   CellOf(static_cast<std::int64_t>(package->m_arrOutlines.GetSize())), CellOf(uses[package])});
    }
}
} // namespace

void RunPackages(const ReadOptions& options, TableForm form)
{
    const std::unique_ptr<CJOBX> job = ReadGoodJob(options);
    Table table({{"Step", "step"},
                 {"Index", "index", true},
                 {"Number", "number", true},
                 {"Name", "name"},
                 {"Pitch", "pitch", true},
                 {"Left", "left", true},
                 {"Bottom", "bottom", true},
                 {"Right", "right", true},
                 {"Top", "top", true},
                 {"Pins", "pins", true},
                 {"Outline records", "outlines", true},
                 {"Components", "components", true}});
    const CJOBXstepObjArray& steps = job->m_pSteps->m_arrSteps;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        if (const CJOBXstepObj* const step = steps.GetAt(i))
            AddStep(table, *step);
    Output output;
    table.Print(output, form);
}
