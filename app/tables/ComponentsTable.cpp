#include "model/Attributes.h"
#include "model/Components.h"
#include "model/FieldWords.h"
#include "model/Glob.h"
#include "model/LayerRoles.h"
#include "model/PackageIndex.h"
#include "tables/StepTable.h"
#include "tables/Tables.h"

#include <algorithm>

namespace
{
struct ComponentRow
{
    const CJOBXstepObj& step;
    const CJOBXcomponents& file;
    const CJOBXcmp& component;
    const CJOBXdataPkg* package; // null if its reference is invalid
    const ShownUnit& unit;
    std::optional<BoardSide> side;
};

double LengthIn(const ComponentRow& row, double length)
{
    return row.unit.Length(length, row.file);
}

Cell ValueOf(const ComponentRow& row)
{
    const CLProperty* const value = FindNamed(row.component.m_arrProperties, "VALUE");
    return value == nullptr ? Cell() : CellOf(value->m_sValue);
}

// The attribute, or else what the pins of the package say.
Cell MountOf(const ComponentRow& row)
{
    if (const CJOBXProperty* const mount = FindNamed(row.component.m_arrAttributes, ".comp_mount_type"))
        return CellOf(mount->m_sValue);
    if (row.package == nullptr || row.package->m_arrPins.GetSize() == 0)
        return {};
    const auto pins = row.package->m_arrPins.Records();
    const auto isOfType = [](const char* type)
    { return [type](const CJOBXdataPkgPin& pin) { return pin.m_sType.CompareNoCase(type) == 0; }; };
    if (std::any_of(pins.begin(), pins.end(), isOfType("T")))
        return CellOf(std::string_view("thmt"));
    return std::all_of(pins.begin(), pins.end(), isOfType("S")) ? CellOf(std::string_view("smt")) : Cell();
}

Cell HeightOf(const ComponentRow& row)
{
    const CJOBXProperty* const height = FindNamed(row.component.m_arrAttributes, ".comp_height");
    const std::optional<double> number = height == nullptr ? std::nullopt : NumberInText(height->m_sValue);
    return number ? CellOf(LengthIn(row, *number)) : Cell();
}

constexpr ColumnOf<ComponentRow> kComponentColumns[] = {
    {"Step", "step", ColumnKind::Text, [](const ComponentRow& row) { return CellOf(row.step.m_sName); }},
    {"Layer", "layer", ColumnKind::Text, [](const ComponentRow& row) { return CellOf(row.file.m_sLayerName); }},
    {"Number", "number", ColumnKind::Number, [](const ComponentRow& row) { return CellOf(row.component.m_nNumber); }},
    {"Name", "name", ColumnKind::Text, [](const ComponentRow& row) { return CellOf(row.component.m_sName); }},
    {"Part", "part", ColumnKind::Text, [](const ComponentRow& row) { return CellOf(row.component.sGetPartName()); }},
    {"Package", "package", ColumnKind::Text,
     [](const ComponentRow& row) { return row.package == nullptr ? Cell() : CellOf(row.package->m_sName); }},
    {"X", "x", ColumnKind::Length,
     [](const ComponentRow& row) { return CellOf(LengthIn(row, row.component.m_ptLocation.x)); }},
    {"Y", "y", ColumnKind::Length,
     [](const ComponentRow& row) { return CellOf(LengthIn(row, row.component.m_ptLocation.y)); }},
    {"Angle", "rotation", ColumnKind::Number, [](const ComponentRow& row) { return CellOf(row.component.m_dRotation); },
     "Rotation"},
    {"Mirror", "mirror", ColumnKind::Number, [](const ComponentRow& row) { return CellOf(row.component.m_nMirror); }},
    {"Pins", "toeprints", ColumnKind::Number,
     [](const ComponentRow& row) { return CellOf(row.component.m_arrTops.GetSize()); }, "Toeprints"},
    {"Properties", "properties", ColumnKind::Number,
     [](const ComponentRow& row) { return CellOf(row.component.m_arrProperties.GetSize()); }},
    {"Attributes", "attributes", ColumnKind::Number,
     [](const ComponentRow& row) { return CellOf(row.component.m_arrAttributes.GetSize()); }},
    {"Value", "value", ColumnKind::Text, ValueOf},
    {"Mount", "mount", ColumnKind::Text, MountOf},
    {"Side", "side", ColumnKind::Text,
     [](const ComponentRow& row) { return row.side ? CellOf(WordFor(*row.side)) : Cell(); }},
    {"Height", "height", ColumnKind::Length, HeightOf},
    {"Unit", "unit", ColumnKind::Text, [](const ComponentRow& row) { return CellOf(WordFor(row.unit.Unit())); }},
};
constexpr StepColumns<ComponentRow> kComponentsTable{kComponentColumns, 13};

} // namespace

NameFilter ComponentFilter(const CJOBX& job, const std::string& pattern)
{
    if (pattern.empty())
        return {};
    std::vector<std::string> names;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        ForEachComponent(step, [&](const CJOBXcomponents&, const CJOBXcmp& component)
                         { names.emplace_back(component.m_sName.View()); });
    return {pattern, "component", names, LetterCase::Respected};
}

Table ComponentsTable(const CJOBX& job, const TableRequest& request)
{
    const NameFilter filter = ComponentFilter(job, request.pattern);
    return TableOfSteps(
        job, request, kComponentsTable,
        [&](const CJOBXstepObj& step, auto add)
        {
            const PackageIndex packages(step.GetEda()->m_pData->m_arrPkgs);
            for (const CJOBXcomponents& file : step.m_arrComponents.Records())
            {
                const std::optional<BoardSide> side = SideOf(file, *job.m_pMatrix);
                if (request.side && side != request.side)
                    continue;
                for (const CJOBXcmp& component : file.m_arrCmps.Records())
                    if (filter.Passes(component.m_sName.View()))
                        add({step, file, component, packages.Find(component.m_nPkgRef), request.unit, side});
            }
        });
}
