#include "info/CompactInfo.h"

#include "info/Extents.h"
#include "output/Table.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <functional>

namespace
{
template <class List, class Count>
std::int64_t Sum(const List& list, Count count)
{
    std::int64_t sum = 0;
    for (const auto& record : list.Records())
        sum += count(record);
    return sum;
}

// One part of the model: the number of its records, and the number of their pieces.
struct Part
{
    std::string kind;
    CString name;
    CString units;
    double factor = 1.0;
    bool hasFactor = true;
    std::int64_t records = 0;
    std::int64_t pieces = 0;
    Extents extents{};
};

void AddRow(Table& table, const Part& part)
{
    std::vector<Cell> row = {part.kind,
                             CellOf(part.name),
                             CellOf(part.units),
                             part.hasFactor ? CellOf(part.factor) : Cell(),
                             CellOf(part.records),
                             CellOf(part.pieces)};
    if (!part.extents.IsEmpty())
        for (const double edge : {part.extents.LowerLeft().x, part.extents.LowerLeft().y, part.extents.UpperRight().x,
                                  part.extents.UpperRight().y})
            row.push_back(CellOf(edge));
    table.Add(std::move(row));
}

Part PartOf(const char* kind, const CODBlayer& layer)
{
    Part part{kind, layer.m_sName, layer.m_sUnits, layer.m_dRescaleFactor};
    part.records = layer.m_arrFeatures.GetSize();
    part.pieces = Sum(layer.m_arrFeatures,
                      [](const CODBlayObj& feature)
                      {
                          const auto* const surface = dynamic_cast<const CODBlayObjSurface*>(&feature);
                          return surface == nullptr ? 0 : surface->m_arrContours.GetSize();
                      });
    part.extents.Add(layer);
    return part;
}

// The symbol's factor, not its layer's: the features do not change.
Part PartOf(const CODBSpecialSymbol& symbol)
{
    Part part = PartOf("symbol", symbol.m_layer);
    part.name = CKUtility::GetInstance()->GetSegmntFromFilePath(symbol.m_sPath, 2);
    part.units = symbol.m_sUnits;
    part.factor = symbol.m_dRescaleFactor;
    return part;
}

Part PartOf(const CODBcomponents& components)
{
    Part part{"components", components.m_sLayerName, components.m_sUnits, components.m_dRescaleFactor};
    part.records = components.m_arrCmps.GetSize();
    part.pieces = Sum(components.m_arrCmps, [](const CODBcmp& each) { return each.m_arrToes.GetSize(); });
    for (const CODBcmp& component : components.m_arrCmps.Records())
    {
        part.extents.Add(component.m_ptLocation);
        for (const CODBcmpToe& toe : component.m_arrToes.Records())
            part.extents.Add(toe.m_ptLocation);
    }
    return part;
}

// The packages, because nets have no lengths.
Part PartOf(const CODBdata& data)
{
    Part part{"packages", "", data.m_sUnits, data.m_dRescaleFactor};
    part.records = data.m_arrPkgs.GetSize();
    part.pieces = Sum(data.m_arrPkgs, [](const CODBdataPkg& each) { return each.m_arrPins.GetSize(); });
    for (const CODBdataPkg& package : data.m_arrPkgs.Records())
    {
        part.extents.Add(package.m_ptLowerLeft);
        part.extents.Add(package.m_ptUpperRight);
    }
    return part;
}

Part PartOf(const CODBnetlist& netlist)
{
    Part part{"netlist", "", netlist.m_arrNets.m_sUnits};
    part.hasFactor = false;
    part.records = netlist.m_arrNets.GetSize();
    part.pieces = Sum(netlist.m_arrNets, [](const CODBnet& each) { return each.m_arrPts.GetSize(); });
    for (const CODBnet& net : netlist.m_arrNets.Records())
        for (const CODBnetPt& point : net.m_arrPts.Records())
            part.extents.Add(point.m_ptPosition);
    return part;
}

// The parts in the order of the unit change, then those that it does not change.
Table PartsOf(const CODB& model)
{
    Table table({{"Part", "part"},
                 {"Name", "name"},
                 {"Units", "units"},
                 {"Factor", "factor", true},
                 {"Records", "records", true},
                 {"Pieces", "pieces", true},
                 {"Left", "left", true},
                 {"Bottom", "bottom", true},
                 {"Right", "right", true},
                 {"Top", "top", true}});
    for (const CODBlayer& layer : model.m_arrLayers.Records())
        AddRow(table, PartOf("layer", layer));
    AddRow(table, PartOf("profile", *model.m_pSingleLayer));
    AddRow(table, PartOf(*model.m_pComponents));
    for (const CODBSpecialSymbol& symbol : model.m_arrSpecialSymbols.Records())
        AddRow(table, PartOf(symbol));
    AddRow(table, PartOf(*model.m_pData));
    AddRow(table, PartOf(model.m_netlist));
    return table;
}

// Parts without lengths.
struct OtherCounts
{
    explicit OtherCounts(const CODB& model)
        : matrixLayers(model.m_matrix.m_arrLayers.GetSize()),
          nets(model.m_pData->m_arrNets.GetSize()),
          subnets(Sum(model.m_pData->m_arrNets, [](const CODBdataNet& net) { return net.m_arrSnts.GetSize(); })),
          stepRepeats(
              Sum(model.m_arrStephdrs, [](const CODBstephdr& header) { return header.m_arrStepRepeats.GetSize(); })),
          sysAttrs(model.m_arrSysAttrs.GetSize())
    {
    }

    std::int64_t matrixLayers;
    std::int64_t nets;
    std::int64_t subnets;
    std::int64_t stepRepeats;
    std::int64_t sysAttrs;
};

const char* ToolOf(const CODB& model)
{
    if (model.IsSourceFromNoInformation() == 1)
        return "unknown";
    if (model.IsSourceFromExpeditionPCB() == 1)
        return "Expedition PCB";
    return model.IsSourceFromCR8000DESIGNFORCE() == 1 ? "CR-8000 Design Force" : "other";
}

void PrintStep(Output& output, const CString& name, CODB& model)
{
    const OtherCounts counts(model);
    output.Write(fmt::format("Compact model of step {}\n\n", Printable(name.View())));
    output.Write(fmt::format("  Source: {} ({})\n",
                             model.m_sSource.IsEmpty() ? "none" : Printable(model.m_sSource.View()), ToolOf(model)));
    output.Write(fmt::format("  Matrix layers: {}, nets: {}, subnets: {}, step-repeats: {}, system attributes: {}\n",
                             counts.matrixLayers, counts.nets, counts.subnets, counts.stepRepeats, counts.sysAttrs));
    output.Write("\n  As read:\n\n");
    PartsOf(model).PrintAligned(output, "  ");
    model.vChangeUnit(0);
    output.Write("\n  After the unit change to inch:\n\n");
    PartsOf(model).PrintAligned(output, "  ");
}

void WriteStep(JsonOutput& json, const CString& name, CODB& model)
{
    const OtherCounts counts(model);
    json.Object(
        [&]
        {
            json.Member("step", name);
            json.Member("source", model.m_sSource);
            json.Member("tool", std::string_view(ToolOf(model)));
            json.Member("matrixLayers", counts.matrixLayers);
            json.Member("nets", counts.nets);
            json.Member("subnets", counts.subnets);
            json.Member("stepRepeats", counts.stepRepeats);
            json.Member("systemAttributes", counts.sysAttrs);
            json.Key("asRead");
            PartsOf(model).WriteRows(json);
            model.vChangeUnit(0);
            json.Key("inInch");
            PartsOf(model).WriteRows(json);
        });
}

void ForEachModel(const CJOBX& job, const std::function<void(const CString&, CODB&)>& show)
{
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        const std::unique_ptr<CODB> model(pMakeCompactModel(job, &step));
        show(step.m_sName, *model);
    }
}
} // namespace

void PrintCompactInfo(Output& output, const CJOBX& job, bool asJson)
{
    if (asJson)
    {
        JsonOutput json(output, TextBytes::Utf8OrLatin1);
        json.Array([&] { ForEachModel(job, [&](const CString& name, CODB& model) { WriteStep(json, name, model); }); });
        json.Finish();
        return;
    }
    bool isFirst = true;
    ForEachModel(job,
                 [&](const CString& name, CODB& model)
                 {
                     output.Write(isFirst ? "" : "\n");
                     isFirst = false;
                     PrintStep(output, name, model);
                 });
    output.Flush();
}
