#include "model/Attributes.h"
#include "model/FieldWords.h"
#include "model/Glob.h"
#include "model/LayerRoles.h"
#include "tables/StepTable.h"
#include "tables/Tables.h"

#include <algorithm>

namespace
{
// A row of the matrix, and what the steps have of that layer.
struct LayerRow
{
    const CJOBXmatrixLayer& layer;
    bool isCopper = false;
    std::int64_t features = 0;
    std::int64_t components = 0;
    const CJOBXattributeList* attributes = nullptr; // of the first step that has any
    const ShownUnit& unit;
};

bool IsDielectric(const CJOBXmatrixLayer& layer)
{
    return layer.m_sType.CompareNoCase("DIELECTRIC") == 0;
}

// A positive number. Exporters write 0 where they know none.
std::optional<double> Amount(const LayerRow& row, const char* attribute)
{
    if (row.attributes == nullptr || !(IsDielectric(row.layer) || row.isCopper))
        return std::nullopt;
    const CJOBXProperty* const found = row.attributes->pGetAttribute(attribute);
    const std::optional<double> number = found == nullptr ? std::nullopt : NumberInText(found->m_sValue);
    return number && *number > 0.0 ? number : std::nullopt;
}

Cell SpanOf(const LayerRow& row)
{
    const std::string_view start = row.layer.m_sStartName.View();
    const std::string_view end = row.layer.m_sEndName.View();
    return start.empty() && end.empty() ? Cell() : std::string(start).append(" - ").append(end);
}

Cell ThicknessOf(const LayerRow& row)
{
    const std::optional<double> thickness = Amount(row, ".layer_dielectric");
    return thickness ? CellOf(row.unit.Length(*thickness, *row.attributes)) : Cell();
}

std::optional<double> CopperOf(const LayerRow& row)
{
    return row.isCopper ? Amount(row, ".copper_weight") : std::nullopt;
}

// Ounces per square foot in files in inch, else the thickness.
Cell CopperUnitOf(const LayerRow& row)
{
    if (!CopperOf(row))
        return {};
    return CellOf(std::string_view(row.attributes->GetUnit() == JOBXunit::Inch ? "oz" : "um"));
}

Cell DielectricOf(const LayerRow& row)
{
    for (const char* const key : {"DIELECTRIC_NAME", "DIELECTRIC_TYPE"})
        if (const CString text = row.layer.sGetFurtherValue(key); !text.IsEmpty() && text.CompareNoCase("NONE") != 0)
            return CellOf(text);
    return {};
}

constexpr ColumnOf<LayerRow> kLayerColumns[] = {
    {"Row", "row", ColumnKind::Number, [](const LayerRow& row) { return CellOf(row.layer.m_nRow); }},
    {"Name", "name", ColumnKind::Text, [](const LayerRow& row) { return CellOf(row.layer.m_sName); }},
    {"Context", "context", ColumnKind::Text, [](const LayerRow& row) { return CellOf(row.layer.m_sContext); }},
    {"Type", "type", ColumnKind::Text, [](const LayerRow& row) { return CellOf(row.layer.m_sType); }},
    {"Polarity", "polarity", ColumnKind::Text, [](const LayerRow& row) { return CellOf(row.layer.m_sPolarity); }},
    {"Span", "span", ColumnKind::Text, SpanOf},
    {"Features", "features", ColumnKind::Number, [](const LayerRow& row) { return CellOf(row.features); }},
    {"Components", "components", ColumnKind::Number, [](const LayerRow& row) { return CellOf(row.components); }},
    {"Thickness", "thickness", ColumnKind::Length, ThicknessOf},
    {"Cu", "copperWeight", ColumnKind::Number, [](const LayerRow& row) { return CellOf(CopperOf(row)); }},
    {"Cu unit", "copperUnit", ColumnKind::Text, CopperUnitOf},
    {"Dielectric", "dielectric", ColumnKind::Text, DielectricOf},
    {"Er", "dielectricConstant", ColumnKind::Number,
     [](const LayerRow& row) { return CellOf(Amount(row, ".dielectric_constant")); }},
    {"Unit", "unit", ColumnKind::Text, [](const LayerRow& row) { return CellOf(WordFor(row.unit.Unit())); }},
};
constexpr StepColumns<LayerRow> kLayersTable{kLayerColumns, std::size(kLayerColumns)};

NameFilter LayerFilter(const CJOBX& job, const TableRequest& request)
{
    if (request.pattern.empty())
        return {};
    std::vector<std::string> names;
    for (const CJOBXmatrixLayer& layer : job.m_pMatrix->m_arrLayers.Records())
        names.emplace_back(layer.m_sName.View());
    return {request.pattern, "layer", names, LetterCase::Ignored};
}

// Adds what the steps have of that layer.
void Collect(LayerRow& row, const CJOBX& job)
{
    const auto take = [&](const CJOBXattributed& folder)
    {
        if (row.attributes == nullptr)
            row.attributes = folder.pGetAttributeList();
    };
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        if (const CJOBXlayer* const layer = step.ScanLayerObjDataInLayer(row.layer.m_sName))
        {
            row.features += layer->GetFeatures()->GetSize();
            take(*layer);
        }
        for (const CJOBXcomponents& file : step.m_arrComponents.Records())
            if (file.m_sLayerName.CompareNoCase(row.layer.m_sName) == 0)
            {
                row.components += file.m_arrCmps.GetSize();
                take(file);
            }
    }
}
} // namespace

Table LayersTable(const CJOBX& job, const TableRequest& request)
{
    const NameFilter filter = LayerFilter(job, request);
    const std::vector<const CJOBXmatrixLayer*> copper = CopperLayers(*job.m_pMatrix);
    Table table = EmptyTable(kLayersTable, request);
    for (const CJOBXmatrixLayer& layer : job.m_pMatrix->m_arrLayers.Records())
    {
        if (!filter.Passes(layer.m_sName.View()))
            continue;
        const bool isCopper = std::find(copper.begin(), copper.end(), &layer) != copper.end();
        LayerRow row{.layer = layer, .isCopper = isCopper, .unit = request.unit};
        Collect(row, job);
        table.Add(CellsOf(kLayersTable.all, row));
    }
    return table;
}
