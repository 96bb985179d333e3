#include "diff/StepTables.h"

#include "diff/DiffRecords.h"
#include "output/Lengths.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace
{
constexpr int kMicronDecimals = 4;

// The symbols with numbers that are not lengths: at which places, from 0.
struct OtherNumbers
{
    std::string_view beginning;
    std::array<int, 3> places; // -1 for none
};

// The longer of two beginnings comes first. Thermals have an angle and a number of spokes, crosses and dog bones shares
// of their size, packages of pads and moires counts and an angle.
constexpr OtherNumbers kOtherNumbers[] = {
    {"oblong_ths", {2, 3, -1}}, {"rc_ths", {2, 3, -1}}, {"rc_tho", {2, 3, -1}}, {"sr_ths", {2, 3, -1}},
    {"s_ths", {2, 3, -1}},      {"s_tho", {2, 3, -1}},  {"s_thr", {2, 3, -1}},  {"o_ths", {2, 3, -1}},
    {"thr", {2, 3, -1}},        {"ths", {2, 3, -1}},    {"cross", {4, 5, -1}},  {"dogbone", {4, -1, -1}},
    {"dpack", {4, 5, -1}},      {"moire", {2, 5, -1}},  {"null", {0, -1, -1}},
};

bool IsLength(std::string_view name, int place)
{
    const auto* const found = std::find_if(std::begin(kOtherNumbers), std::end(kOtherNumbers),
                                           [&](const OtherNumbers& each) { return name.starts_with(each.beginning); });
    return found == std::end(kOtherNumbers) ||
           std::find(found->places.begin(), found->places.end(), place) == found->places.end();
}

std::string NameIn(const CStringArray& names, int number)
{
    return number >= 0 && number < names.GetSize() ? FoldedName(names[number].View()) : std::string();
}
} // namespace

UserSymbolNames::UserSymbolNames(const CJOBXSpecialSymbolArray& symbols)
{
    for (const CJOBXSpecialSymbol& symbol : symbols.Records())
        m_names.insert(FoldedName(CKUtility::GetInstance()->GetSegmntFromFilePath(symbol.m_sPath, 2).View()));
}

std::string UserSymbolNames::MetricName(const CString& name, double factorToMicrons) const
{
    std::string folded = FoldedName(name.View());
    if (m_names.contains(folded))
        return folded;
    std::string metric;
    int place = 0;
    bool areCorners = false; // "xr5x13": the corners that are rounded
    for (std::size_t at = 0; at < folded.size();)
    {
        double number = 0.0;
        const auto [rest, problem] =
            std::from_chars(folded.data() + at, folded.data() + folded.size(), number, std::chars_format::fixed);
        if (problem != std::errc() || folded[at] == '-')
        {
            metric += folded[at++];
            continue;
        }
        const auto length = static_cast<std::size_t>(rest - folded.data()) - at;
        const bool isRadius = metric.ends_with("xr") || metric.ends_with("xc");
        if (!areCorners && IsLength(folded, place))
            metric += Rounded(number * factorToMicrons, kMicronDecimals);
        else
            metric += folded.substr(at, length);
        areCorners = isRadius;
        at += length;
        ++place;
    }
    return metric;
}

StepTables::StepTables(const CJOBXstepObj& step) : m_data(*step.GetEda()->m_pData), m_packages(m_data.m_arrPkgs)
{
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
    {
        const bool isBottom = file.m_sLayerName.Right(3).CompareNoCase("bot") == 0;
        for (const CJOBXcmp& component : file.m_arrCmps.Records())
            m_components.at(isBottom ? 1 : 0).push_back(&component);
    }
}

std::string StepTables::Net(int number) const
{
    const CJOBXdataNet* const net =
        number >= 0 && number < m_data.m_arrNets.GetSize() ? m_data.m_arrNets.GetAt(number) : nullptr;
    return net == nullptr ? std::string() : std::string(net->m_sName.View());
}

std::string StepTables::Package(int number) const
{
    const CJOBXdataPkg* const package = m_packages.Find(number);
    return package == nullptr ? std::string() : std::string(package->m_sName.View());
}

std::string StepTables::Pin(int package, int number) const
{
    const CJOBXdataPkg* const found = m_packages.Find(package);
    const bool isThere = found != nullptr && number >= 0 && number < found->m_arrPins.GetSize();
    const CJOBXdataPkgPin* const pin = isThere ? found->m_arrPins.GetAt(number) : nullptr;
    return pin == nullptr ? fmt::format("#{}", number) : std::string(pin->m_sName.View());
}

std::string StepTables::Layer(int number) const
{
    return NameIn(m_data.m_arrLayerNames, number);
}

const CJOBXcmp* StepTables::FindComponent(const CString& side, int number) const
{
    const std::vector<const CJOBXcmp*>& components = m_components.at(side == "B" ? 1 : 0);
    return number >= 0 && static_cast<std::size_t>(number) < components.size()
               ? components[static_cast<std::size_t>(number)]
               : nullptr;
}

std::string StepTables::Component(const CString& side, int number) const
{
    const CJOBXcmp* const component = FindComponent(side, number);
    return component == nullptr ? std::string() : std::string(component->m_sName.View());
}

std::string StepTables::ToeprintOf(const CString& side, int component, int number) const
{
    const CJOBXcmp* const found = FindComponent(side, component);
    const CJOBXcmpTop* const toeprint = found != nullptr && number >= 0 && number < found->m_arrTops.GetSize()
                                            ? found->m_arrTops.GetAt(number)
                                            : nullptr;
    return toeprint == nullptr ? std::string() : Pin(found->m_nPkgRef, toeprint->m_nPin);
}

std::string FileView::NumberOf(const std::string& layerName, int index) const
{
    if (features == nullptr || index < 0)
        return {};
    const auto found = features->find(layerName);
    const auto at = static_cast<std::size_t>(index);
    if (found == features->end() || at >= found->second.size() || found->second[at] < 0)
        return {};
    return std::to_string(found->second[at]);
}
