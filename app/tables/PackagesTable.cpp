#include "model/Components.h"
#include "model/FieldWords.h"
#include "model/PackageIndex.h"
#include "output/NaturalOrder.h"
#include "tables/StepTable.h"
#include "tables/Tables.h"

#include <algorithm>
#include <unordered_map>

namespace
{
struct PackageRow
{
    const CJOBXstepObj& step;
    std::int64_t index;
    const CJOBXdataPkg& package;
    const TextList& components; // names of the components of the step with this package
    const ShownUnit& unit;
};

Cell LengthCell(const PackageRow& row, double length)
{
    return CellOf(row.unit.Length(length, *row.step.GetEda()->m_pData));
}

constexpr ColumnOf<PackageRow> kPackageColumns[] = {
    {"Step", "step", ColumnKind::Text, [](const PackageRow& row) { return CellOf(row.step.m_sName); }},
    {"Index", "index", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.index); }},
    {"Number", "number", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.package.m_nNumber); }},
    {"Name", "name", ColumnKind::Text, [](const PackageRow& row) { return CellOf(row.package.m_sName); }},
    {"Pitch", "pitch", ColumnKind::Length, [](const PackageRow& row) { return LengthCell(row, row.package.m_dPitch); }},
    {"Left", "left", ColumnKind::Length,
     [](const PackageRow& row) { return LengthCell(row, row.package.m_ptLowerLeft.x); }},
    {"Bottom", "bottom", ColumnKind::Length,
     [](const PackageRow& row) { return LengthCell(row, row.package.m_ptLowerLeft.y); }},
    {"Right", "right", ColumnKind::Length,
     [](const PackageRow& row) { return LengthCell(row, row.package.m_ptUpperRight.x); }},
    {"Top", "top", ColumnKind::Length,
     [](const PackageRow& row) { return LengthCell(row, row.package.m_ptUpperRight.y); }},
    {"Pins", "pins", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.package.m_arrPins.GetSize()); }},
    {"Outline records", "outlines", ColumnKind::Number,
     [](const PackageRow& row) { return CellOf(row.package.m_arrOutlines.GetSize()); }},
    {"Used", "components", ColumnKind::Number, [](const PackageRow& row) { return CellOf(row.components.size()); },
     "Components"},
    {"Size x", "sizeX", ColumnKind::Length,
     [](const PackageRow& row)
     { return LengthCell(row, RoundedLength(row.package.m_ptUpperRight.x - row.package.m_ptLowerLeft.x)); }},
    {"Size y", "sizeY", ColumnKind::Length,
     [](const PackageRow& row)
     { return LengthCell(row, RoundedLength(row.package.m_ptUpperRight.y - row.package.m_ptLowerLeft.y)); }},
    {"Components", "designators", ColumnKind::Text, [](const PackageRow& row) { return Cell(row.components); }},
    {"Unit", "unit", ColumnKind::Text, [](const PackageRow& row) { return CellOf(WordFor(row.unit.Unit())); }},
};
constexpr StepColumns<PackageRow> kPackagesTable{kPackageColumns, 12};

// The names of the step's components for each package, in natural order.
std::unordered_map<const CJOBXdataPkg*, TextList> FindUses(const CJOBXstepObj& step)
{
    const PackageIndex packages(step.GetEda()->m_pData->m_arrPkgs);
    std::unordered_map<const CJOBXdataPkg*, TextList> uses;
    ForEachComponent(step, [&](const CJOBXcomponents&, const CJOBXcmp& component)
                     { uses[packages.Find(component.m_nPkgRef)].emplace_back(component.m_sName.View()); });
    for (auto& [package, names] : uses)
        std::sort(names.begin(), names.end(), IsNaturallyBefore);
    return uses;
}
} // namespace

Table PackagesTable(const CJOBX& job, const TableRequest& request)
{
    return TableOfSteps(job, request, kPackagesTable,
                        [&](const CJOBXstepObj& step, auto add)
                        {
                            auto uses = FindUses(step);
                            const CJOBXdataPkgArray& packages = step.GetEda()->m_pData->m_arrPkgs;
                            for (__int64 i = 0; i < packages.GetSize(); ++i)
                                if (const CJOBXdataPkg* const package = packages.GetAt(i))
                                    add({step, i, *package, uses[package], request.unit});
                        });
}
