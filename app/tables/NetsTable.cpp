#include "model/SubnetCounts.h"
#include "tables/StepTable.h"
#include "tables/Tables.h"

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
    {"Toeprints", "toeprints", ColumnKind::Number, CountCell<&SubnetCounts::toeprints>},
    {"Vias", "vias", ColumnKind::Number, CountCell<&SubnetCounts::vias>},
    {"Traces", "traces", ColumnKind::Number, CountCell<&SubnetCounts::traces>},
    {"Planes", "planes", ColumnKind::Number, CountCell<&SubnetCounts::planes>},
    {"Others", "others", ColumnKind::Number, CountCell<&SubnetCounts::others>},
    {"Features", "features", ColumnKind::Number, CountCell<&SubnetCounts::features>},
    {"Netlist points", "netlistPoints", ColumnKind::Number, [](const NetRow& row) { return CellOf(row.points); }},
};

// The number of test points in the netlist for each net name.
PointsByName CountPoints(const CJOBXnetArray& nets)
{
    PointsByName points;
    for (const CJOBXnet& net : nets.Records())
        points[net.m_sName] += net.m_arrPts.GetSize();
    return points;
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
} // namespace

Table NetsTable(const CJOBX& job)
{
    return TableOfSteps<NetRow>(job, kNetColumns, [](const CJOBXstepObj& step, auto add) { VisitNets(step, add); });
}
