#include "diff/JobDiff.h"

#include "output/Text.h"

#include <deque>

namespace
{
std::string NamedPlace(const std::string& around, std::string_view word, std::string_view name)
{
    return (around.empty() ? "" : around + " / ") + std::string(word) + " " + Printable(name);
}

std::string_view LastComponent(std::string_view path)
{
    while (!path.empty() && (path.back() == '/' || path.back() == '\\'))
        path.remove_suffix(1);
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

class JobComparison
{
public:
    JobComparison(DiffCollector& collector, const DiffRules& rules) : m_collector(collector), m_rules(rules) {}

    void Jobs(const CJOBX& a, const CJOBX& b)
    {
        Records("info", "info", *a.m_pMisc, *b.m_pMisc);
        Records("matrix", "matrix", *a.m_pMatrix, *b.m_pMatrix);
        Records("font", "font", *a.m_pFonts, *b.m_pFonts);
        Named(
            "job", "", "symbol", *a.m_pSpecialSymbols, *b.m_pSpecialSymbols,
            [](const CJOBXSpecialSymbol& symbol) { return LastComponent(symbol.m_sPath.View()); }, Case::Counts,
            [this](const std::string&, const CJOBXSpecialSymbol& symbolA, const CJOBXSpecialSymbol& symbolB)
            { Fields("symbol", *symbolA.GetLayer(), *symbolB.GetLayer()); });
        Named(
            "job", "", "step", a.m_pSteps->m_arrSteps, b.m_pSteps->m_arrSteps,
            [](const CJOBXstepObj& step) { return step.m_sName.View(); }, Case::Ignored,
            [this](const std::string& place, const CJOBXstepObj& stepA, const CJOBXstepObj& stepB)
            { Steps(place, stepA, stepB); });
        CarriedFiles(*a.m_pMisc->GetCarriedFiles(), *b.m_pMisc->GetCarriedFiles());
    }

private:
    enum class Case
    {
        Counts,
        Ignored,
    };

    template <class Record>
    void Records(const std::string& place, std::string_view kind, const Record& a, const Record& b)
    {
        const DiffPlace here(m_collector, place);
        Fields(kind, a, b);
    }

    // Pairs parts of the same name and compares each pair as a separate place. Parts of only one job are reported at
    // `owner`.
    template <class List, class NameOf, class Compare>
    void Named(const std::string& owner, const std::string& around, std::string_view word, const List& a, const List& b,
               NameOf nameOf, Case letterCase, Compare compare)
    {
        using Record = jobx::RecordOfList<List>;
        const auto keyOf = [&](const Record& record)
        { return letterCase == Case::Ignored ? FoldedName(nameOf(record)) : std::string(nameOf(record)); };
        std::unordered_map<std::string, std::deque<const Record*>> partners;
        const auto itemsB = ItemsOf(b);
        for (const auto& item : itemsB)
            partners[keyOf(*item.record)].push_back(item.record);
        const auto tellOnly = [&](const DiffItem<Record>& item, DiffChange change)
        {
            const DiffPlace here(m_collector, owner);
            const DiffScope scope(m_collector, {word, word, nameOf(*item.record), {}}, item.index);
            m_collector.Add(word, change);
        };
        std::unordered_map<const Record*, bool> isPaired;
        for (const auto& item : ItemsOf(a))
        {
            std::deque<const Record*>& waiting = partners[keyOf(*item.record)];
            if (waiting.empty())
            {
                tellOnly(item, DiffChange::OnlyInA);
                continue;
            }
            const Record& partner = *waiting.front();
            waiting.pop_front();
            isPaired[&partner] = true;
            const std::string place = NamedPlace(around, word, nameOf(*item.record));
            const DiffPlace here(m_collector, place);
            if (nameOf(*item.record) != nameOf(partner))
                m_collector.Add(word, DiffChange::Changed, "name", nameOf(*item.record), nameOf(partner));
            compare(place, *item.record, partner);
        }
        for (const auto& item : itemsB)
            if (!isPaired.contains(item.record))
                tellOnly(item, DiffChange::OnlyInB);
    }

    void Steps(const std::string& place, const CJOBXstepObj& a, const CJOBXstepObj& b)
    {
        Records(place, "step", a, b);
        Records(place + " / header", "header", *a.GetHeader(), *b.GetHeader());
        Profiles(place, *a.GetProfile(), *b.GetProfile());
        Named(
            place, place, "layer", a.m_arrLayers, b.m_arrLayers,
            [](const CJOBXlayer& layer) { return layer.m_sName.View(); }, Case::Ignored,
            [this](const std::string&, const CJOBXlayer& layerA, const CJOBXlayer& layerB)
            { Fields("layer", layerA, layerB); });
        Named(
            place, place, "components", a.m_arrComponents, b.m_arrComponents,
            [](const CJOBXcomponents& components) { return components.m_sLayerName.View(); }, Case::Ignored,
            [this](const std::string&, const CJOBXcomponents& componentsA, const CJOBXcomponents& componentsB)
            { Fields("components", componentsA, componentsB); });
        Records(place + " / eda", "eda", *a.GetEda()->m_pData, *b.GetEda()->m_pData);
        Records(place + " / netlist", "netlist", *a.GetNetlist(), *b.GetNetlist());
        FurtherNetlists(place, jobx::FurtherNetlists()(a), jobx::FurtherNetlists()(b));
        Shorts(place, a.GetEda()->GetShorts(), b.GetEda()->GetShorts());
    }

    void FurtherNetlists(const std::string& step, const jobx::FurtherNetlists::Found& a,
                         const jobx::FurtherNetlists::Found& b)
    {
        Named(
            step, step, "netlist", a, b, [](const CJOBXnetlist& netlist) { return netlist.GetName().View(); },
            Case::Ignored,
            [this](const std::string&, const CJOBXnetlist& netlistA, const CJOBXnetlist& netlistB)
            { Fields("netlist", netlistA, netlistB); });
    }

    void Shorts(const std::string& step, const CStringArray& a, const CStringArray& b)
    {
        const DiffPlace here(m_collector, step + " / shorts");
        DiffReport(m_collector, m_rules, "short").Keyed(LinesOf("short", a), LinesOf("short", b));
    }

    // Their contents are not known; only whether they are there, and their sizes.
    void CarriedFiles(const CJOBXcarriedFileArray& a, const CJOBXcarriedFileArray& b)
    {
        const DiffPlace here(m_collector, "files not read");
        DiffReport(m_collector, m_rules, "file").Keyed(a, b);
    }

    // A step without a profile was not read.
    void Profiles(const std::string& step, const CJOBXlayer& a, const CJOBXlayer& b)
    {
        if (a.m_sName.IsEmpty() != b.m_sName.IsEmpty())
        {
            const DiffPlace here(m_collector, step);
            m_collector.Add("profile", a.m_sName.IsEmpty() ? DiffChange::OnlyInB : DiffChange::OnlyInA);
            return;
        }
        const DiffPlace here(m_collector, step + " / profile");
        Fields("profile", a, b);
    }

    // At the current place.
    template <class Record>
    void Fields(std::string_view kind, const Record& a, const Record& b)
    {
        DiffReport report(m_collector, m_rules, kind);
        CompareFields(report, a, b);
    }

    DiffCollector& m_collector;
    const DiffRules& m_rules;
};
} // namespace

void CompareJobs(DiffCollector& collector, const CJOBX& a, const CJOBX& b, const DiffRules& rules)
{
    JobComparison(collector, rules).Jobs(a, b);
}
