#include "step/MendReferences.h"

#include "components/ComponentsFormat.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "eda/EdaFormat.h"
#include "foundation/framework/AsciiText.h"
#include "reading/SavingMessageKinds.h"
#include "step/CJOBXstepObj.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

using namespace saving_message;

namespace
{
constexpr int kGone = -1;

int LineOf(const CJOBXsourced& record)
{
    return record.GetSourceLine();
}
int LineOf(const CJOBXSnt& record)
{
    return record.m_nLineNumber;
}
int LineOf(const CJOBXdataNetObj& record)
{
    return record.m_nLineNumber;
}
int LineOf(const CJOBXdataFgr& record)
{
    return record.m_nLineNumber;
}

// Where the records of a list are now. A list that was not there before is empty.
class CMoves
{
public:
    CMoves() = default;
    template <class List>
    CMoves(const List& before, const List& now)
    {
        m_count = before.GetSize();
        __int64 same = 0;
        while (same < before.GetSize() && same < now.GetSize() && LineAt(before, same) == LineAt(now, same))
            ++same;
        if (same == before.GetSize())
            return;
        std::unordered_map<int, int> places;
        for (__int64 i = 0; i < now.GetSize(); ++i)
            if (const int line = LineAt(now, i); line > 0)
                places.try_emplace(line, static_cast<int>(i));
        for (__int64 i = 0; i < before.GetSize(); ++i)
        {
            const auto found = places.find(LineAt(before, i));
            m_places.push_back(found != places.end() ? found->second : kGone);
        }
    }
    // Everything before is gone.
    static CMoves AllGone(__int64 count)
    {
        CMoves moves;
        moves.m_count = count;
        moves.m_places.assign(static_cast<std::size_t>(count), kGone);
        return moves;
    }

    bool HasMoved() const noexcept { return !m_places.empty(); }
    // A number that named nothing before is left as it is.
    int PlaceOf(int before) const
    {
        return before < 0 || before >= m_count || m_places.empty() ? before
                                                                   : m_places[static_cast<std::size_t>(before)];
    }

private:
    template <class List>
    static int LineAt(const List& list, __int64 at)
    {
        const auto* const record = list.GetAt(at);
        return record != nullptr ? LineOf(*record) : 0;
    }

    __int64 m_count = 0;
    std::vector<int> m_places; // empty if none has moved
};

// The record of `list` that came from the same line. The list is as it was read, in the order of the lines; `hint` is
// where the record may be.
template <class List, class Record>
const Record* FindSameLine(const List& list, const Record& record, __int64& hint)
{
    const auto isIt = [&](__int64 at)
    { return at < list.GetSize() && list.GetAt(at) != nullptr && LineOf(*list.GetAt(at)) == LineOf(record); };
    if (LineOf(record) <= 0)
        return nullptr;
    if (isIt(hint))
        return list.GetAt(hint++);
    __int64 first = 0;
    for (__int64 end = list.GetSize(); first < end;)
    {
        const __int64 middle = first + (end - first) / 2;
        if (LineOf(*list.GetAt(middle)) < LineOf(record))
            first = middle + 1;
        else
            end = middle;
    }
    if (!isIt(first))
        return nullptr;
    hint = first + 1;
    return list.GetAt(first);
}

template <class List>
auto FindSameFolder(const List& list, const CString& folder) -> decltype(list.GetAt(0))
{
    for (__int64 i = 0; i < list.GetSize(); ++i)
        if (const auto part = list.GetAt(i); part != nullptr && !folder.IsEmpty() && part->GetSourceFolder() == folder)
            return part;
    return nullptr;
}

template <class Record, class List>
const Record* At(const List& list, int index)
{
    return index >= 0 && index < list.GetSize() ? list.GetAt(index) : nullptr;
}

// The layers of the EDA data: what they are called now, at which place, and where their features are.
class CEdaLayers
{
public:
    CEdaLayers(const CJOBXstepObj& before, const CJOBXstepObj& now)
    {
        const CStringArray& namesBefore = before.GetEda()->m_pData->m_arrLayerNames;
        const CStringArray& namesNow = now.GetEda()->m_pData->m_arrLayerNames;
        for (INT_PTR i = 0; i < namesNow.GetSize(); ++i)
            m_own.emplace_back(namesNow[i].View());
        for (INT_PTR i = 0; i < namesBefore.GetSize(); ++i)
            AddBefore(before, now, namesBefore[i]);
        const bool isSame =
            std::equal(m_own.begin(), m_own.end(), m_layers.begin(), m_layers.end(),
                       [](const std::string& own, const Layer& layer) { return own == layer.nameBefore; });
        if (isSame)
            TakeNames();
        else
            m_names = m_own;
        for (Layer& layer : m_layers)
            layer.place = PlaceOf(layer);
    }

    bool HaveChanged() const { return m_names != m_own; }
    const std::vector<std::string>& Names() const noexcept { return m_names; }
    bool HasMoved() const
    {
        for (std::size_t i = 0; i < m_layers.size(); ++i)
            if (m_layers[i].place != static_cast<int>(i) || m_layers[i].features.HasMoved())
                return true;
        return HaveChanged();
    }

    // Where the feature is that `layer` and `feature` meant when they were read. False if it is gone.
    bool Follow(int& layer, int& feature) const
    {
        if (layer < 0 || static_cast<std::size_t>(layer) >= m_layers.size())
            return true;
        const Layer& known = m_layers[static_cast<std::size_t>(layer)];
        layer = known.place;
        if (layer != kGone)
            feature = known.features.PlaceOf(feature);
        return layer != kGone && feature != kGone;
    }
    // The place of a layer of the list as it is now.
    int FollowOwn(int layer) const
    {
        if (!HaveChanged() || layer < 0 || static_cast<std::size_t>(layer) >= m_layers.size())
            return layer;
        return m_layers[static_cast<std::size_t>(layer)].place;
    }

private:
    struct Layer
    {
        std::string nameBefore;
        std::string name; // "" if the layer is gone
        CMoves features;
        int place = kGone; // in the list
    };

    void AddBefore(const CJOBXstepObj& before, const CJOBXstepObj& now, const CString& name)
    {
        Layer layer{std::string(name.View()), std::string(name.View()), {}, kGone};
        if (const CJOBXlayer* const was = before.ScanLayerObjDataInLayer(name))
        {
            const CJOBXlayer* const is = FindSameFolder(now.m_arrLayers, was->GetSourceFolder());
            if (is == nullptr)
                layer.name.clear();
            else if (!AsciiEqualNoCase(is->m_sName.View(), was->m_sName.View()))
                layer.name = is->m_sName.View();
            layer.features = is != nullptr ? CMoves(*was->GetFeatures(), *is->GetFeatures())
                                           : CMoves::AllGone(was->GetFeatures()->GetSize());
        }
        m_layers.push_back(std::move(layer));
    }
    void TakeNames()
    {
        for (const Layer& layer : m_layers)
            if (!layer.name.empty())
                m_names.push_back(layer.name);
    }
    int PlaceOf(const Layer& layer) const
    {
        const auto found = std::find_if(m_names.begin(), m_names.end(),
                                        [&](const std::string& name) { return AsciiEqualNoCase(name, layer.name); });
        return layer.name.empty() || found == m_names.end() ? kGone : static_cast<int>(found - m_names.begin());
    }

    std::vector<Layer> m_layers;      // before, by number
    std::vector<std::string> m_own;   // of the model
    std::vector<std::string> m_names; // as they are saved
};

class CReferenceMending
{
public:
    CReferenceMending(const CJOBXstepObj& before, const CJOBXstepObj& now, CMessageList& messages,
                      CMendedReferences& references)
        : m_before(before),
          m_now(now),
          m_dataBefore(*before.GetEda()->m_pData),
          m_data(*now.GetEda()->m_pData),
          m_layers(before, now),
          m_nets(m_dataBefore.m_arrNets, m_data.m_arrNets),
          m_packages(m_dataBefore.m_arrPkgs, m_data.m_arrPkgs),
          m_messages(messages),
          m_references(references)
    {
        for (const CJOBXdataNet& net : m_data.m_arrNets.Records())
            if (const CJOBXdataNet* const was = Was(m_dataBefore.m_arrNets, net, m_netHint))
                m_subnets.emplace(was, CMoves(was->m_arrSnts, net.m_arrSnts));
        for (const CJOBXdataPkg& package : m_data.m_arrPkgs.Records())
            if (const CJOBXdataPkg* const was = Was(m_dataBefore.m_arrPkgs, package, m_packageHint))
                m_pins.emplace(was, CMoves(was->m_arrPins, package.m_arrPins));
        m_top = SideOf(components_format::kTopLayer);
        m_bottom = SideOf(components_format::kBottomLayer);
    }

    void Mend()
    {
        if (m_layers.HaveChanged())
            m_references.SetLayerNames(&m_data, m_layers.Names());
        MendEda();
        for (const CJOBXcomponents& file : m_now.m_arrComponents.Records())
            if (const CJOBXcomponents* const was = FindSameFolder(m_before.m_arrComponents, file.GetSourceFolder()))
                MendComponents(*was, file);
    }

private:
    struct Side
    {
        const CJOBXcomponents* before = nullptr;
        CMoves components;
        std::map<int, CMoves> toeprints; // by the number of the component before
    };

    template <class List, class Record>
    static const Record* Was(const List& before, const Record& record, __int64& hint)
    {
        return FindSameLine(before, record, hint);
    }

    Side SideOf(std::string_view layer) const
    {
        Side side;
        for (const CJOBXcomponents& file : m_before.m_arrComponents.Records())
            if (AsciiEqualNoCase(file.m_sLayerName.View(), layer))
                side.before = &file;
        if (side.before == nullptr)
            return side;
        const CJOBXcmpArray& before = side.before->m_arrCmps;
        const CJOBXcomponents* const now = FindSameFolder(m_now.m_arrComponents, side.before->GetSourceFolder());
        side.components = now != nullptr ? CMoves(before, now->m_arrCmps) : CMoves::AllGone(before.GetSize());
        for (int i = 0; i < static_cast<int>(before.GetSize()); ++i)
            if (const int place = side.components.PlaceOf(i); place != kGone && before.GetAt(i) != nullptr)
                if (CMoves moves(before.GetAt(i)->m_arrTops, now->m_arrCmps.GetAt(place)->m_arrTops); moves.HasMoved())
                    side.toeprints.emplace(i, std::move(moves));
        return side;
    }

    bool HasMoved(const Side& side) const { return side.components.HasMoved() || !side.toeprints.empty(); }

    void MendEda()
    {
        const bool features = m_layers.HasMoved();
        const bool toeprints = HasMoved(m_top) || HasMoved(m_bottom);
        if (!features && !toeprints)
            return;
        __int64 netHint = 0;
        for (const CJOBXdataNet& net : m_data.m_arrNets.Records())
        {
            const CJOBXdataNet* const was = Was(m_dataBefore.m_arrNets, net, netHint);
            __int64 hint = 0;
            for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
                MendSubnet(was != nullptr ? Was(was->m_arrSnts, subnet, hint) : nullptr, subnet, net);
        }
        __int64 groupHint = 0;
        for (const CJOBXdataFgr& group : m_data.GetFeatureGroups()->Records())
        {
            const CJOBXdataFgr* const was = Was(*m_dataBefore.GetFeatureGroups(), group, groupHint);
            MendFeatures(was != nullptr ? &was->m_arrNetObjs : nullptr, group.m_arrNetObjs, "a feature group");
        }
    }
    void MendSubnet(const CJOBXSnt* was, const CJOBXSnt& subnet, const CJOBXdataNet& net)
    {
        MendFeatures(was != nullptr ? &was->m_arrNetObjs : nullptr, subnet.m_arrNetObjs, net.m_sName.View());
        if (was == nullptr || subnet.m_sKind.View() != eda_format::kToeprint || was->m_sSide != subnet.m_sSide ||
            was->m_nComponentNumber != subnet.m_nComponentNumber || was->m_nToeprintNumber != subnet.m_nToeprintNumber)
            return;
        const Side& side = subnet.m_sSide.View() == eda_format::kTopSide ? m_top : m_bottom;
        const int component = side.components.PlaceOf(subnet.m_nComponentNumber);
        int toeprint = subnet.m_nToeprintNumber;
        if (const auto moves = side.toeprints.find(subnet.m_nComponentNumber); moves != side.toeprints.end())
            toeprint = moves->second.PlaceOf(toeprint);
        if (component == subnet.m_nComponentNumber && toeprint == subnet.m_nToeprintNumber)
            return;
        m_references.Set(&m_data, &subnet, {{component, toeprint, 0}, component == kGone || toeprint == kGone});
        if (component == kGone || toeprint == kGone)
            Eda().Say(kGoneReference, subnet.m_nLineNumber, "A pin of the net ", Quoted{net.m_sName.View()},
                      " is no longer there; its subnet is left out.");
    }

    void MendFeatures(const CJOBXdataNetObjArray* before, const CJOBXdataNetObjArray& objects, std::string_view owner)
    {
        __int64 hint = 0;
        for (const CJOBXdataNetObj& object : objects.Records())
        {
            const CJOBXdataNetObj* const was = before != nullptr ? Was(*before, object, hint) : nullptr;
            int layer = object.m_nLayerIndex;
            int feature = object.m_nFeatureIndex;
            bool isThere = true;
            if (was != nullptr && was->m_nLayerIndex == layer && was->m_nFeatureIndex == feature)
                isThere = m_layers.Follow(layer, feature);
            else
                layer = m_layers.FollowOwn(layer);
            if (isThere && layer == object.m_nLayerIndex && feature == object.m_nFeatureIndex)
                continue;
            m_references.Set(&m_data, &object, {{layer, feature, 0}, !isThere || layer == kGone});
            if (!isThere)
                Eda().Say(kGoneReference, object.m_nLineNumber, "A feature of ", Quoted{owner},
                          " is no longer there; its reference is left out.");
        }
    }

    void MendComponents(const CJOBXcomponents& before, const CJOBXcomponents& file)
    {
        const auto haveMoved = [](const auto& all)
        { return std::any_of(all.begin(), all.end(), [](const auto& one) { return one.second.HasMoved(); }); };
        if (!m_nets.HasMoved() && !m_packages.HasMoved() && !haveMoved(m_subnets) && !haveMoved(m_pins))
            return;
        __int64 hint = 0;
        for (const CJOBXcmp& component : file.m_arrCmps.Records())
            if (const CJOBXcmp* const was = Was(before.m_arrCmps, component, hint))
                MendComponent(file, *was, component);
    }
    void MendComponent(const CJOBXcomponents& file, const CJOBXcmp& was, const CJOBXcmp& component)
    {
        const bool isSamePackage = was.m_nPkgRef == component.m_nPkgRef;
        const CJOBXdataPkg* const package = At<CJOBXdataPkg>(m_dataBefore.m_arrPkgs, was.m_nPkgRef);
        if (const int place = m_packages.PlaceOf(was.m_nPkgRef); isSamePackage && place != was.m_nPkgRef)
        {
            m_references.Set(&file, &component, {{place, 0, 0}, place == kGone});
            if (place == kGone)
                Of(file).Say(kGoneReference, component.GetLine(), "The package of ", Quoted{component.m_sName.View()},
                             " is no longer there.");
        }
        __int64 hint = 0;
        for (const CJOBXcmpTop& top : component.m_arrTops.Records())
            if (const CJOBXcmpTop* const topWas = Was(was.m_arrTops, top, hint))
                MendToeprint(file, *topWas, top, isSamePackage ? package : nullptr);
    }
    void MendToeprint(const CJOBXcomponents& file, const CJOBXcmpTop& was, const CJOBXcmpTop& top,
                      const CJOBXdataPkg* package)
    {
        CMendedReferences::Numbers numbers{{top.m_nPin, top.m_nNet, top.m_nSubnet}, false};
        auto& [pin, net, subnet] = numbers.values;
        if (const auto moves = m_pins.find(package); was.m_nPin == top.m_nPin && moves != m_pins.end())
            pin = moves->second.PlaceOf(pin);
        if (was.m_nNet == top.m_nNet && was.m_nSubnet == top.m_nSubnet)
        {
            const CJOBXdataNet* const netWas = At<CJOBXdataNet>(m_dataBefore.m_arrNets, net);
            net = m_nets.PlaceOf(net);
            if (const auto moves = m_subnets.find(netWas); moves != m_subnets.end())
                subnet = moves->second.PlaceOf(subnet);
            if (net == kGone)
                subnet = kGone;
        }
        if (pin != top.m_nPin || net != top.m_nNet || subnet != top.m_nSubnet)
            m_references.Set(&file, &top, numbers);
    }

    CFileMessages& Eda() { return m_messages.Of(std::string(m_now.GetSourceFolder().View()) + "/eda/data"); }
    CFileMessages& Of(const CJOBXcomponents& file)
    {
        return m_messages.Of(std::string(file.GetSourceFolder().View()) + "/components");
    }

    const CJOBXstepObj& m_before;
    const CJOBXstepObj& m_now;
    const CJOBXdata& m_dataBefore;
    const CJOBXdata& m_data;
    const CEdaLayers m_layers;
    const CMoves m_nets;
    const CMoves m_packages;
    std::map<const CJOBXdataNet*, CMoves> m_subnets; // by the net before
    std::map<const CJOBXdataPkg*, CMoves> m_pins;    // by the package before
    __int64 m_netHint = 0;
    __int64 m_packageHint = 0;
    Side m_top;
    Side m_bottom;
    CMessageList& m_messages;
    CMendedReferences& m_references;
};
} // namespace

void MendReferences(const CJOBXstepObj& before, const CJOBXstepObj& now, CMessageList& messages,
                    CMendedReferences& references)
{
    CReferenceMending(before, now, messages, references).Mend();
}
