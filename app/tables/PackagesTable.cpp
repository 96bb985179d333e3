#include "model/Components.h"
#include "model/PackageIndex.h"
#include "tables/StepTable.h"
#include "tables/Tables.h"

#include <unordered_map>

namespace
{
struct PackageRow
{
    const CJOBXstepObj& step;
    std::int64_t index;
    const CJOBXdataPkg& package;
    std::int64_t components; // number of components of the step with this package
};

constexpr ColumnOf<PackageRow> kPackageColumns[] = {
    {"Step", "step", ColumnKind::Text, [](const PackageRow& row) { return CellOf(row.step.m_sName); }},
    {"Index", "index", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.index); }},
    {"Number", "number", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.package.m_nNumber); }},
    {"Name", "name", ColumnKind::Text, [](const PackageRow& row) { return CellOf(row.package.m_sName); }},
    {"Pitch", "pitch", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.package.m_dPitch); }},
    {"Left", "left", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.package.m_ptLowerLeft.x); }},
    {"Bottom", "bottom", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.package.m_ptLowerLeft.y); }},
    {"Right", "right", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.package.m_ptUpperRight.x); }},
    {"Top", "top", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.package.m_ptUpperRight.y); }},
    {"Pins", "pins", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.package.m_arrPins.GetSize()); }},
    {"Outline records", "outlines", ColumnKind::Number,
     [](const PackageRow& row) { return CellOf(row.package.m_arrOutlines.GetSize()); }},
    {"Components", "components", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.components); }},
};

// The number of components of the step for each package.
std::unordered_map<const CJOBXdataPkg*, std::int64_t> CountUses(const CJOBXstepObj& step)
{
    const PackageIndex packages(step.GetEda()->m_pData->m_arrPkgs);
    std::unordered_map<const CJOBXdataPkg*, std::int64_t> uses;
    ForEachComponent(step, [&](const CJOBXcomponents&, const CJOBXcmp& component)
                     { ++uses[packages.Find(component.m_nPkgRef)]; });
    return uses;
}
} // namespace

Table PackagesTable(const CJOBX& job)
{
    return TableOfSteps<PackageRow>(job, kPackageColumns,
                                    [](const CJOBXstepObj& step, auto add)
                                    {
                                        auto uses = CountUses(step);
                                        const CJOBXdataPkgArray& packages = step.GetEda()->m_pData->m_arrPkgs;
                                        for (__int64 i = 0; i < packages.GetSize(); ++i)
                                            if (const CJOBXdataPkg* const package = packages.GetAt(i))
                                                add({step, i, *package, uses[package]});
                                    });
}
