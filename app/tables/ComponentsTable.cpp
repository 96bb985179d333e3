#include "model/Components.h"
#include "model/PackageIndex.h"
#include "tables/StepTable.h"
#include "tables/Tables.h"

namespace
{
struct ComponentRow
{
    const CJOBXstepObj& step;
    const CJOBXcomponents& file;
    const CJOBXcmp& component;
    const CJOBXdataPkg* package; // null if its reference is invalid
};

constexpr ColumnOf<ComponentRow> kComponentColumns[] = {
    {"Step", "step", ColumnKind::Text, [](const ComponentRow& row) { return CellOf(row.step.m_sName); }},
    {"Layer", "layer", ColumnKind::Text, [](const ComponentRow& row) { return CellOf(row.file.m_sLayerName); }},
    {"Number", "number", ColumnKind::Number, [](const ComponentRow& row) { return CellOf(row.component.m_nNumber); }},
    {"Name", "name", ColumnKind::Text, [](const ComponentRow& row) { return CellOf(row.component.m_sName); }},
    {"Part", "part", ColumnKind::Text, [](const ComponentRow& row) { return CellOf(row.component.sGetPartName()); }},
    {"Package", "package", ColumnKind::Text,
     [](const ComponentRow& row) { return row.package == nullptr ? Cell() : CellOf(row.package->m_sName); }},
    {"X", "x", ColumnKind::Number, [](const ComponentRow& row) { return CellOf(row.component.m_ptLocation.x); }},
    {"Y", "y", ColumnKind::Number, [](const ComponentRow& row) { return CellOf(row.component.m_ptLocation.y); }},
    {"Rotation", "rotation", ColumnKind::Number,
     [](const ComponentRow& row) { return CellOf(row.component.m_dRotation); }},
    {"Mirror", "mirror", ColumnKind::Number, [](const ComponentRow& row) { return CellOf(row.component.m_nMirror); }},
    {"Toeprints", "toeprints", ColumnKind::Number,
     [](const ComponentRow& row) { return CellOf(row.component.m_arrTops.GetSize()); }},
    {"Properties", "properties", ColumnKind::Number,
     [](const ComponentRow& row) { return CellOf(row.component.m_arrProperties.GetSize()); }},
    {"Attributes", "attributes", ColumnKind::Number,
     [](const ComponentRow& row) { return CellOf(row.component.m_arrAttributes.GetSize()); }},
};
} // namespace

Table ComponentsTable(const CJOBX& job)
{
    return TableOfSteps<ComponentRow>(job, kComponentColumns,
                                      [](const CJOBXstepObj& step, auto add)
                                      {
                                          const PackageIndex packages(step.GetEda()->m_pData->m_arrPkgs);
                                          ForEachComponent(
                                              step,
                                              [&](const CJOBXcomponents& file, const CJOBXcmp& component) {
                                                  add({step, file, component, packages.Find(component.m_nPkgRef)});
                                              });
                                      });
}
