#include "change/FlatNets.h"

#include "change/CopyFields.h"
#include "change/PackageUnits.h"
#include "change/References.h"
#include "components/CJOBXcomponentsFields.h"
#include "eda/CJOBXdataFields.h"
#include "eda/EdaFormat.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/AsciiText.h"
#include "netlist/CJOBXnetlistFields.h"
#include "step/CJOBXstepObj.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <tuple>
#include <utility>

namespace
{
constexpr std::string_view kNoNet = "$NONE$"; // the net of what is in no net: one, however many copies
constexpr std::string_view kTop = "comp_+_top";
constexpr std::string_view kBottom = "comp_+_bot";

const CJOBXdata& DataOf(const CJOBXstepObj& step)
{
    return *step.GetEda()->m_pData;
}

const CJOBXcomponents* ComponentsOf(const CJOBXstepObj& step, std::string_view layer)
{
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        if (AsciiEqualNoCase(file.m_sLayerName.View(), layer))
            return &file;
    return nullptr;
}

// All that a record says, but for its place in the file and its numbers.
class CSaying
{
public:
    template <class Record>
    void Add(const Record& record)
    {
        jobx::ForEachField<Record>([&](auto field) { AddField<decltype(field)>(record); });
    }

    std::string text;

private:
    template <class Field, class Record>
    void AddField(const Record& record)
    {
        using Kind = jobx::FieldKind;
        constexpr Kind kKind = Field::kKind;
        if constexpr (kKind == Kind::Class)
            Field::kField.access.Find(record, [&](const auto& classed) { Add(classed); });
        else if constexpr (kKind == Kind::Records)
        {
            text += '(';
            const auto& list = Field::Get(record);
            jobx::ForEachRecord(list, [&](const auto& each) { Add(each); });
            text += ')';
        }
        else if constexpr (kKind == Kind::Text)
            AddText(Field::Get(record));
        else if constexpr (kKind == Kind::Texts || kKind == Kind::Parameters)
            for (INT_PTR i = 0; i < Field::Get(record).GetSize(); ++i)
                AddText(Field::Get(record)[i]);
        else if constexpr (kKind == Kind::Coordinate)
        {
            AddNumber(Field::Get(record).GetX());
            AddNumber(Field::Get(record).GetY());
        }
        else if constexpr (kKind == Kind::Length || kKind == Kind::Real || kKind == Kind::Angle)
            AddNumber(Field::Get(record));
    }
    void AddText(const CString& value)
    {
        text += value.View();
        text += '\0';
    }
    void AddNumber(double number)
    {
        std::array<char, 32> digits{};
        text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
        text += '\0';
    }
};

std::string SayingOf(const CJOBXdataPkg& package)
{
    CSaying saying;
    saying.Add(package);
    return saying.text;
}

// "T" and "B", exchanged where the board is turned over.
void FlipSide(CString& side, bool isFlipped)
{
    if (isFlipped && side == "T")
        side = "B";
    else if (isFlipped && side == "B")
        side = "T";
}

bool IsInside(int index, __int64 size)
{
    return index >= 0 && index < size;
}

// On the bottom a component is turned, then mirrored, whatever its mirror flag.
double PlacedRotation(double rotation, bool isBottom, const CPose& pose)
{
    const bool isAsItWas = pose.angle == 0.0;
    return isAsItWas ? rotation : CPose{rotation, isBottom}.In(pose).angle;
}

// Whether the components of the bottom have the mirror flag; if there are none, they would have it.
bool MirrorsFollowTheSide(const CJOBXstepObj& step)
{
    const CJOBXcomponents* const bottom = ComponentsOf(step, kBottom);
    if (bottom == nullptr || bottom->m_arrCmps.GetSize() == 0)
        return true;
    const auto records = bottom->m_arrCmps.Records();
    return std::any_of(records.begin(), records.end(), [](const CJOBXcmp& each) { return each.m_nMirror != 0; });
}

void PlacePoint(CJOBXnetPt& point, const CPlacedFile& file, bool isFlipped)
{
    constexpr double kQuarter = 90.0;
    const bool isStaggered = point.m_dStaggeredRadius != 0.0 || !(point.m_ptStaggeredPosition == CPointD(0.0, 0.0));
    point.m_ptPosition = file.Point(point.m_ptPosition);
    if (isStaggered)
        point.m_ptStaggeredPosition = file.Point(point.m_ptStaggeredPosition);
    for (double* const length : {&point.m_dRadius, &point.m_dStaggeredRadius, &point.m_dWidth, &point.m_dHeight})
        *length = file.Length(*length);
    if (static_cast<int>(std::lround(file.Pose().angle / kQuarter)) % 2 == 1)
        std::swap(point.m_dWidth, point.m_dHeight);
    FlipSide(point.m_sSide, isFlipped);
}

void AddPoints(const CJOBXnetPtArray& from, const CPlacedFile& file, bool isFlipped, CJOBXnetPtArray& to)
{
    for (const CJOBXnetPt& point : from.Records())
    {
        auto copy = jobx::NewCopyOf(point);
        copy->ShareFlags(point);
        PlacePoint(*copy, file, isFlipped);
        to.Own(std::move(copy));
    }
}
} // namespace

CFlatNets::Side::Side(CJOBXcomponents& owner, const CLengthAttributes& lengths)
    : file(owner),
      attributes(owner.m_arrAttributeNames, owner.m_arrAttributeNameNumbers, owner.m_arrAttributeTexts,
                 owner.m_arrAttributeTextNumbers, lengths)
{
}

CFlatNets::CFlatNets(CFlattening& flattening)
    : m_flattening(flattening),
      m_data(::DataOf(flattening.root)),
      m_attributes(m_data.m_arrAttributeNames, *m_data.GetAttributeNameNumbers(), m_data.m_arrAttributeTexts,
                   *m_data.GetAttributeTextNumbers(), flattening.lengths)
{
    for (__int64 i = 0; i < m_data.m_arrPkgs.GetSize(); ++i)
        if (const CJOBXdataPkg* const package = m_data.m_arrPkgs.GetAt(i))
            m_packages.try_emplace(SayingOf(*package), static_cast<int>(i));
    for (INT_PTR i = 0; i < m_data.m_arrLayerNames.GetSize(); ++i)
        m_layerNumbers.try_emplace(LowerName(m_data.m_arrLayerNames[i].View()), static_cast<int>(i));
    for (__int64 i = m_data.m_arrNets.GetSize() - 1; i >= 0; --i)
        if (const CJOBXdataNet* const net = m_data.m_arrNets.GetAt(i); net != nullptr && net->m_sName.View() == kNoNet)
            m_noNet = static_cast<int>(i);
}

void CFlatNets::Add(const CStepCopy& copy, const CFlatLayers::Starts& layers)
{
    const CJOBXdata& data = DataOf(copy.Step());
    if (data.m_arrNets.GetSize() > 0 || data.m_arrPkgs.GetSize() > 0 || data.GetFeatureGroups()->GetSize() > 0)
        PrepareData(data);
    const CPlacedFile file = m_flattening.FileOf(copy, data.GetUnit(), m_data.GetUnit());
    if (!m_packagesOf.contains(&copy.Step()))
    {
        m_mirrorsFollow[&copy.Step()] = MirrorsFollowTheSide(copy.Step());
        m_packagesOf[&copy.Step()] = AddPackages(data, file);
    }
    AddNets(copy, data, file, layers);
    AddComponents(copy);
}

// EDA data that the root did not have are like those of the first step that has some.
void CFlatNets::PrepareData(const CJOBXdata& like)
{
    if (m_data.m_arrNets.GetSize() > 0 || m_data.m_arrPkgs.GetSize() > 0 || m_data.m_arrLayerNames.GetSize() > 0)
        return;
    m_data.SetUnit(m_flattening.unit);
    m_data.m_sUnits = UnitsText(m_flattening.unit);
    if (m_data.m_sHeader.IsEmpty())
        m_data.m_sHeader = like.m_sHeader;
}

std::vector<int> CFlatNets::AddPackages(const CJOBXdata& data, const CPlacedFile& file)
{
    const CPlacedFile converted({}, file.Unit(), file.Unit(), file.Unit());
    std::vector<int> places;
    for (__int64 i = 0; i < data.m_arrPkgs.GetSize(); ++i)
    {
        places.push_back(-1);
        if (data.m_arrPkgs.GetAt(i) == nullptr)
            continue;
        auto package = jobx::NewCopyOf(*data.m_arrPkgs.GetAt(i));
        if (file.IsConverted())
            ConvertPackage(m_flattening.job, *package, file.Unit());
        const auto [found, isNew] =
            m_packages.try_emplace(SayingOf(*package), static_cast<int>(m_data.m_arrPkgs.GetSize()));
        places.back() = found->second;
        if (!isNew)
            continue;
        package->m_nNumber = found->second;
        m_attributes.Adopt(*package, converted);
        for (CJOBXdataPkgObj& outline : package->m_arrOutlines.Records())
            m_attributes.Adopt(outline, converted);
        for (CJOBXdataPkgPin& pin : package->m_arrPins.Records())
        {
            m_attributes.Adopt(pin, converted);
            for (CJOBXdataPkgObj& outline : pin.m_arrOutlines.Records())
                m_attributes.Adopt(outline, converted);
        }
        m_data.m_arrPkgs.Own(std::move(package));
    }
    return places;
}

void CFlatNets::FindLayers(const CStepCopy& copy, const CJOBXdata& data, const CFlatLayers::Starts& layers)
{
    m_layers.clear();
    for (INT_PTR i = 0; i < data.m_arrLayerNames.GetSize(); ++i)
    {
        const std::string name = LowerName(data.m_arrLayerNames[i].View());
        const auto start = layers.find(name);
        const std::string target =
            start != layers.end() ? LowerName(start->second.name.View()) : copy.Target(name).value_or(name);
        const auto [number, isNew] =
            m_layerNumbers.try_emplace(target, static_cast<int>(m_data.m_arrLayerNames.GetSize()));
        if (isNew)
            m_data.m_arrLayerNames.Add(CString(std::string_view(target)));
        const CJOBXlayer* const layer = copy.Step().ScanLayerObjDataInLayer(data.m_arrLayerNames[i]);
        m_layers.push_back({number->second, start != layers.end() ? start->second.features : 0,
                            layer != nullptr ? layer->GetFeatures()->GetSize() : 0});
    }
}

void CFlatNets::AddNets(const CStepCopy& copy, const CJOBXdata& data, const CPlacedFile& file,
                        const CFlatLayers::Starts& layers)
{
    FindLayers(copy, data, layers);
    m_nets.clear();
    for (__int64 i = 0; i < data.m_arrNets.GetSize(); ++i)
        if (const CJOBXdataNet* const net = data.m_arrNets.GetAt(i))
            AddNet(copy, *net, file);
        else
            m_nets.push_back({});
    for (const CJOBXdataFgr& group : data.GetFeatureGroups()->Records())
    {
        auto added = jobx::NewCopyOf(group);
        m_attributes.Adopt(*added, file);
        MoveFeatures(added->m_arrNetObjs);
        m_data.GetFeatureGroups()->Own(std::move(added));
    }
}

void CFlatNets::AddNet(const CStepCopy& copy, const CJOBXdataNet& net, const CPlacedFile& file)
{
    auto added = jobx::NewCopyOf(net);
    for (CJOBXSnt& subnet : added->m_arrSnts.Records())
        PlaceSubnet(copy, subnet, file);
    const bool isNone = net.m_sName.View() == kNoNet;
    if (isNone && m_noNet >= 0)
    {
        CJOBXSntArray& subnets = m_data.m_arrNets.GetAt(m_noNet)->m_arrSnts;
        m_nets.push_back({m_noNet, static_cast<int>(subnets.GetSize())});
        added->m_arrSnts.MoveElementTo(subnets, 0, static_cast<int>(added->m_arrSnts.GetSize()) - 1);
        return;
    }
    const int place = static_cast<int>(m_data.m_arrNets.GetSize());
    if (isNone)
        m_noNet = place;
    else
        added->m_sName = copy.Named(net.m_sName);
    added->m_nNumber = place;
    m_attributes.Adopt(*added, file);
    m_nets.push_back({place, 0});
    m_data.m_arrNets.Own(std::move(added));
}

void CFlatNets::PlaceSubnet(const CStepCopy& copy, CJOBXSnt& subnet, const CPlacedFile& file)
{
    m_attributes.Adopt(subnet, file);
    subnet.m_dFillSize = file.Length(subnet.m_dFillSize);
    subnet.m_ptPosition = file.Size(subnet.m_ptPosition);
    MoveFeatures(subnet.m_arrNetObjs);
    if (subnet.m_sKind.View() != eda_format::kToeprint)
        return;
    const bool isBottom = subnet.m_sSide.View() == eda_format::kBottomSide;
    const std::string_view layer = isBottom ? kBottom : kTop;
    const CJOBXcomponents* const from = ComponentsOf(copy.Step(), layer);
    const CJOBXcomponents* const to = ComponentsOf(m_flattening.root, copy.Target(layer).value_or(""));
    if (from == nullptr || !IsInside(subnet.m_nComponentNumber, from->m_arrCmps.GetSize()))
        subnet.m_nComponentNumber = -1;
    else if (to != nullptr)
        subnet.m_nComponentNumber += static_cast<int>(to->m_arrCmps.GetSize());
    FlipSide(subnet.m_sSide, copy.placed.placement.isFlipped);
}

// To the features of the copy in the layers of the root.
void CFlatNets::MoveFeatures(CJOBXdataNetObjArray& objects) const
{
    for (CJOBXdataNetObj& object : objects.Records())
    {
        if (!IsInside(object.m_nLayerIndex, static_cast<__int64>(m_layers.size())))
        {
            object.m_nLayerIndex = -1;
            object.m_nFeatureIndex = -1;
            continue;
        }
        const LayerPlace& layer = m_layers[static_cast<std::size_t>(object.m_nLayerIndex)];
        const bool isThere = IsInside(object.m_nFeatureIndex, layer.count);
        object.m_nLayerIndex = layer.number;
        object.m_nFeatureIndex = isThere ? object.m_nFeatureIndex + static_cast<int>(layer.features) : -1;
    }
}

CFlatNets::Side& CFlatNets::SideFor(const std::string& name, const CStepCopy& copy)
{
    const auto found = m_sides.find(name);
    if (found != m_sides.end())
        return found->second;
    CJOBXcomponents* file = nullptr;
    for (CJOBXcomponents& each : m_flattening.root.m_arrComponents.Records())
        if (file == nullptr && AsciiEqualNoCase(each.m_sLayerName.View(), name))
            file = &each;
    if (file == nullptr)
    {
        auto made = std::make_unique<CJOBXcomponents>();
        made->m_sLayerName = std::string_view(name);
        made->m_sRelativePath = CKUtility::GetInstance()->CKPathCombine(made->m_sLayerName, "components");
        made->SetUnit(m_flattening.unit);
        made->m_sUnits = UnitsText(m_flattening.unit);
        if (const CJOBXcomponents* const like = ComponentsOf(copy.Step(), name))
            CopyAttributeList(*like, *made);
        file = m_flattening.root.m_arrComponents.Own(std::move(made));
    }
    return m_sides
        .emplace(std::piecewise_construct, std::forward_as_tuple(name),
                 std::forward_as_tuple(*file, m_flattening.lengths))
        .first->second;
}

void CFlatNets::AddComponents(const CStepCopy& copy)
{
    for (const CJOBXcomponents& from : copy.Step().m_arrComponents.Records())
    {
        Side& to = SideFor(copy.Target(from.m_sLayerName.View()).value_or(""), copy);
        const bool isBottom = AsciiEqualNoCase(from.m_sLayerName.View(), kBottom);
        const CPlacedFile file = m_flattening.FileOf(copy, from.GetUnit(), to.file.GetUnit());
        for (__int64 i = 0; i < from.m_arrCmps.GetSize(); ++i)
            if (const CJOBXcmp* const component = from.m_arrCmps.GetAt(i))
                AddComponent(copy, *component, isBottom, file, to);
            else
                to.file.m_arrCmps.Add(nullptr); // those behind it keep their distance
    }
}

void CFlatNets::AddComponent(const CStepCopy& copy, const CJOBXcmp& component, bool isBottom, const CPlacedFile& file,
                             Side& to)
{
    const std::vector<int>& packages = m_packagesOf.at(&copy.Step());
    const bool isTurned = file.Pose().isMirrored && m_mirrorsFollow.at(&copy.Step());
    auto added = jobx::NewCopyOf(component);
    added->m_sName = copy.Named(component.m_sName);
    added->m_nNumber = static_cast<int>(to.file.m_arrCmps.GetSize());
    added->m_nPkgRef = IsInside(component.m_nPkgRef, static_cast<__int64>(packages.size()))
                           ? packages[static_cast<std::size_t>(component.m_nPkgRef)]
                           : -1;
    added->m_ptLocation = file.Point(component.m_ptLocation);
    added->m_dRotation = PlacedRotation(component.m_dRotation, isBottom, file.Pose());
    added->m_nMirror = isTurned ? 1 - component.m_nMirror : component.m_nMirror;
    if (copy.placed.placement.isFlipped && (component.m_nSide == 0 || component.m_nSide == 1))
        added->m_nSide = 1 - component.m_nSide;
    to.attributes.Adopt(added->m_arrAttributes, file);
    for (CJOBXcmpTop& top : added->m_arrTops.Records())
    {
        top.m_ptLocation = file.Point(top.m_ptLocation);
        top.m_dRotation = PlacedRotation(top.m_dRotation, isBottom, file.Pose());
        top.m_nMirror = isTurned ? 1 - top.m_nMirror : top.m_nMirror;
        to.attributes.Adopt(top, file);
        const bool isThere = IsInside(top.m_nNet, static_cast<__int64>(m_nets.size()));
        const NetPlace place = isThere ? m_nets[static_cast<std::size_t>(top.m_nNet)] : NetPlace();
        top.m_nNet = place.net;
        top.m_nSubnet = place.net < 0 || top.m_nSubnet < 0 ? -1 : top.m_nSubnet + place.subnets;
    }
    to.file.m_arrCmps.Own(std::move(added));
}

void AddNetlist(const CFlattening& flattening, const CStepCopy& copy, const CJOBXnetlist& from, CJOBXnetlist& to)
{
    if (from.m_arrNets.GetSize() == 0 && from.m_arrPts.GetSize() == 0)
        return;
    if (to.m_arrNets.GetSize() == 0 && to.m_arrPts.GetSize() == 0)
    {
        to.SetUnit(flattening.unit);
        to.m_arrNets.m_sUnits = UnitsText(flattening.unit);
        to.SetName(from.GetName());
        to.SetOptimize(from.GetOptimize());
        to.SetStaggered(from.GetStaggered());
    }
    const CPlacedFile file = flattening.FileOf(copy, from.GetUnit(), to.GetUnit());
    const bool isFlipped = copy.placed.placement.isFlipped;
    CJOBXnet* none = nullptr;
    int next = 0;
    for (CJOBXnet& net : to.m_arrNets.Records())
    {
        next = std::max(next, net.m_nNumber + 1);
        if (none == nullptr && net.m_sName.View() == kNoNet)
            none = &net;
    }
    AddPoints(from.m_arrPts, file, isFlipped, to.m_arrPts);
    for (const CJOBXnet& net : from.m_arrNets.Records())
    {
        const bool isNone = net.m_sName.View() == kNoNet;
        if (isNone && none != nullptr)
        {
            AddPoints(net.m_arrPts, file, isFlipped, none->m_arrPts);
            continue;
        }
        auto added = std::make_unique<CJOBXnet>();
        added->m_nNumber = next++;
        added->m_sName = isNone ? net.m_sName : copy.Named(net.m_sName);
        AddPoints(net.m_arrPts, file, isFlipped, added->m_arrPts);
        to.m_arrNets.Own(std::move(added));
    }
}
