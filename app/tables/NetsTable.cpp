#include "model/FieldWords.h"
#include "model/Glob.h"
#include "model/LayerRoles.h"
#include "model/PackageIndex.h"
#include "model/SubnetCounts.h"
#include "tables/StepTable.h"
#include "tables/Tables.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace
{
using PointsByName = std::unordered_map<CString, std::int64_t>;

struct NetRow
{
    const CJOBXstepObj& step;
    const CString& name;
    std::int64_t number;
    std::optional<std::int64_t> index;  // in the EDA data; none for a net that only the netlist has
    std::optional<SubnetCounts> counts; // likewise
    std::optional<std::int64_t> points; // in the netlist for a net of that name; none if there is no such net
};

template <std::int64_t SubnetCounts::*count>
Cell CountCell(const NetRow& row)
{
    return row.counts ? CellOf((*row.counts).*count) : Cell();
}

constexpr ColumnOf<NetRow> kNetColumns[] = {
    {"Step", "step", ColumnKind::Text, [](const NetRow& row) { return CellOf(row.step.m_sName); }},
    {"Index", "index", ColumnKind::Number, [](const NetRow& row) { return CellOf(row.index); }},
    {"Number", "number", ColumnKind::Number, [](const NetRow& row) { return CellOf(row.number); }},
    {"Name", "name", ColumnKind::Text, [](const NetRow& row) { return CellOf(row.name); }},
    {"Subnets", "subnets", ColumnKind::Number,
     [](const NetRow& row) { return row.counts ? CellOf(row.counts->Total()) : Cell(); }},
    {"Pins", "toeprints", ColumnKind::Number, CountCell<&SubnetCounts::toeprints>, "Toeprints"},
    {"Vias", "vias", ColumnKind::Number, CountCell<&SubnetCounts::vias>},
    {"Traces", "traces", ColumnKind::Number, CountCell<&SubnetCounts::traces>},
    {"Planes", "planes", ColumnKind::Number, CountCell<&SubnetCounts::planes>},
    {"Others", "others", ColumnKind::Number, CountCell<&SubnetCounts::others>},
    {"Features", "features", ColumnKind::Number, CountCell<&SubnetCounts::features>},
    {"Netlist points", "netlistPoints", ColumnKind::Number, [](const NetRow& row) { return CellOf(row.points); }},
};
constexpr StepColumns<NetRow> kNetsTable{kNetColumns, std::size(kNetColumns)};

// The number of test points in the netlist for each net name.
PointsByName CountPoints(const CJOBXnetArray& nets)
{
    PointsByName points;
    for (const CJOBXnet& net : nets.Records())
        points[net.m_sName] += net.m_arrPts.GetSize();
    return points;
}

// Nets of the EDA data and of the netlists.
NameFilter NetFilter(const CJOBX& job, const TableRequest& request)
{
    if (request.pattern.empty())
        return {};
    std::vector<std::string> names;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        for (const CJOBXdataNet& net : step.GetEda()->m_pData->m_arrNets.Records())
            names.emplace_back(net.m_sName.View());
        for (const CJOBXnet& net : step.GetNetlist()->m_arrNets.Records())
            names.emplace_back(net.m_sName.View());
    }
    return {request.pattern, "net", names, LetterCase::Respected};
}

template <class Add>
void VisitNets(const CJOBXstepObj& step, Add add)
{
    const CJOBXnetArray& listed = step.GetNetlist()->m_arrNets;
    const PointsByName points = CountPoints(listed);
    std::unordered_set<CString> shown;
    const CJOBXdataNetArray& nets = step.GetEda()->m_pData->m_arrNets;
    for (__int64 i = 0; i < nets.GetSize(); ++i)
    {
        const CJOBXdataNet* const net = nets.GetAt(i);
        if (net == nullptr)
            continue;
        shown.insert(net->m_sName);
        const auto found = points.find(net->m_sName);
        add(NetRow{step, net->m_sName, net->m_nNumber, i, CountSubnets(*net),
                   found == points.end() ? std::optional<std::int64_t>() : found->second});
    }
    // Nets that only the netlist has.
    for (const CJOBXnet& net : listed.Records())
        if (shown.insert(net.m_sName).second)
            add(NetRow{step, net.m_sName, net.m_nNumber, {}, {}, points.at(net.m_sName)});
}

// Where a pin of a component meets the board.
struct PinRow
{
    const CJOBXstepObj& step;
    const CJOBXcomponents& file;
    const CJOBXcmp& component;
    const CJOBXcmpTop& toeprint;
    const CJOBXdataNet* net;     // null if its reference is invalid
    const CJOBXdataPkg* package; // likewise
    const ShownUnit& unit;
    std::optional<BoardSide> side;
};

// The name that the toeprint has, or else its pin in the package.
Cell PinNameOf(const PinRow& row)
{
    if (!row.toeprint.m_sName.IsEmpty() || row.package == nullptr)
        return CellOf(row.toeprint.m_sName);
    const CJOBXdataPkgPin* const pin = row.package->m_arrPins.GetAt(row.toeprint.m_nPin);
    return pin == nullptr ? Cell() : CellOf(pin->m_sName);
}

constexpr ColumnOf<PinRow> kPinColumns[] = {
    {"Step", "step", ColumnKind::Text, [](const PinRow& row) { return CellOf(row.step.m_sName); }},
    {"Net", "net", ColumnKind::Text,
     [](const PinRow& row) { return row.net == nullptr ? Cell() : CellOf(row.net->m_sName); }},
    {"Component", "component", ColumnKind::Text, [](const PinRow& row) { return CellOf(row.component.m_sName); }},
    {"Pin", "pin", ColumnKind::Text, PinNameOf},
    {"Side", "side", ColumnKind::Text,
     [](const PinRow& row) { return row.side ? CellOf(WordFor(*row.side)) : Cell(); }},
    {"X", "x", ColumnKind::Length,
     [](const PinRow& row) { return CellOf(row.unit.Length(row.toeprint.m_ptLocation.x, row.file)); }},
    {"Y", "y", ColumnKind::Length,
     [](const PinRow& row) { return CellOf(row.unit.Length(row.toeprint.m_ptLocation.y, row.file)); }},
    {"Layer", "layer", ColumnKind::Text, [](const PinRow& row) { return CellOf(row.file.m_sLayerName); }},
    {"Unit", "unit", ColumnKind::Text, [](const PinRow& row) { return CellOf(WordFor(row.unit.Unit())); }},
};
constexpr StepColumns<PinRow> kPinsTable{kPinColumns, std::size(kPinColumns)};

// The position of a pin's list: that of its net, behind them that of the net for pins without one, at the end no net.
std::size_t ListOf(const CJOBXcmpTop& toeprint, const CJOBXdataNet* net, std::size_t nets)
{
    if (net == nullptr)
        return nets + 1;
    return net->m_sName == "$NONE$" ? nets : static_cast<std::size_t>(toeprint.m_nNet);
}

// The step's pins, net by net; those without a net last.
std::vector<std::vector<PinRow>> PinsOf(const CJOBXstepObj& step, const CJOBXmatrix& matrix, const ShownUnit& unit)
{
    const CJOBXdata& eda = *step.GetEda()->m_pData;
    const PackageIndex packages(eda.m_arrPkgs);
    const std::size_t nets = static_cast<std::size_t>(eda.m_arrNets.GetSize());
    std::vector<std::vector<PinRow>> byNet(nets + 2);
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
    {
        const std::optional<BoardSide> side = SideOf(file, matrix);
        for (const CJOBXcmp& component : file.m_arrCmps.Records())
        {
            const CJOBXdataPkg* const package = packages.Find(component.m_nPkgRef);
            for (const CJOBXcmpTop& toeprint : component.m_arrTops.Records())
            {
                const CJOBXdataNet* const net = eda.m_arrNets.GetAt(toeprint.m_nNet);
                byNet[ListOf(toeprint, net, nets)].push_back(
                    {step, file, component, toeprint, net, package, unit, side});
            }
        }
    }
    return byNet;
}
} // namespace

Table NetsTable(const CJOBX& job, const TableRequest& request)
{
    const NameFilter filter = NetFilter(job, request);
    return TableOfSteps(job, request, kNetsTable,
                        [&](const CJOBXstepObj& step, auto add)
                        {
                            VisitNets(step,
                                      [&](const NetRow& row)
                                      {
                                          if (filter.Passes(row.name.View()))
                                              add(row);
                                      });
                        });
}

Table NetPinsTable(const CJOBX& job, const TableRequest& request)
{
    const NameFilter filter = NetFilter(job, request);
    const NameFilter components = ComponentFilter(job, request.component);
    return TableOfSteps(
        job, request, kPinsTable,
        [&](const CJOBXstepObj& step, auto add)
        {
            for (const std::vector<PinRow>& net : PinsOf(step, *job.m_pMatrix, request.unit))
                for (const PinRow& pin : net)
                    if (components.Passes(pin.component.m_sName.View()) &&
                        (!filter.IsSet() || (pin.net != nullptr && filter.Passes(pin.net->m_sName.View()))))
                        add(pin);
        });
}
