#include "tables/NetsCommand.h"

#include "model/SubnetCounts.h"

#include <unordered_map>
#include <unordered_set>

namespace
{
using PointsByName = std::unordered_map<CString, std::int64_t>;

// The number of test points that a net of that name has in the netlist.
PointsByName CountPoints(const CJOBXnetArray& nets)
{
    PointsByName points;
    for (__int64 i = 0; i < nets.GetSize(); ++i)
        if (const CJOBXnet* const net = nets.GetAt(i))
            points[net->m_sName] += net->m_arrPts.GetSize();
    return points;
}

void AddStep(Table& table, const CJOBXstepObj& step)
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
        const SubnetCounts counts = CountSubnets(*net);
        const auto found = points.find(net->m_sName);
        table.Add({CellOf(step.m_sName), CellOf(static_cast<std::int64_t>(i)), CellOf(net->m_nNumber),
                   CellOf(net->m_sName), CellOf(counts.Total()), CellOf(counts.toeprints), CellOf(counts.vias),
                   CellOf(counts.traces), CellOf(counts.planes), CellOf(counts.others), CellOf(counts.features),
                   found == points.end() ? Cell() : CellOf(found->second)});
    }
    // Nets that are only in the netlist.
    for (__int64 i = 0; i < listed.GetSize(); ++i)
        if (const CJOBXnet* const net = listed.GetAt(i); net != nullptr && shown.insert(net->m_sName).second)
            table.Add({CellOf(step.m_sName), Cell(), CellOf(net->m_nNumber), CellOf(net->m_sName), Cell(), Cell(),
                       Cell(), Cell(), Cell(), Cell(), Cell(), CellOf(points.at(net->m_sName))});
}
} // namespace

void RunNets(const ReadOptions& options, TableForm form)
{
    const std::unique_ptr<CJOBX> job = ReadGoodJob(options);
    Table table({{"Step", "step"},
                 {"Index", "index", true},
                 {"Number", "number", true},
                 {"Name", "name"},
                 {"Subnets", "subnets", true},
                 {"Toeprints", "toeprints", true},
                 {"Vias", "vias", true},
                 {"Traces", "traces", true},
                 {"Planes", "planes", true},
                 {"Others", "others", true},
                 {"Features", "features", true},
                 {"Netlist points", "netlistPoints", true}});
    const CJOBXstepObjArray& steps = job->m_pSteps->m_arrSteps;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        if (const CJOBXstepObj* const step = steps.GetAt(i))
            AddStep(table, *step);
    Output output;
    table.Print(output, form);
}
