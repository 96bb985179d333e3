#include "step/StepReferences.h"

#include "components/ComponentsFormat.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "eda/EdaFormat.h"
#include "foundation/framework/AsciiText.h"
#include "netlist/CJOBXnetlist.h"
#include "reading/ComponentsMessageKinds.h"
#include "reading/EdaMessageKinds.h"
#include "reading/NetlistMessageKinds.h"
#include "step/CJOBXstepObj.h"

#include <algorithm>
#include <string>
#include <vector>

namespace
{
template <class Array>
bool Holds(const Array& array, int index)
{
    return index >= 0 && index < array.GetSize();
}

// Calls `use` with each record that is not null.
template <class Array, class Use>
void ForEach(const Array& records, Use use)
{
    for (__int64 i = 0; i < records.GetSize(); ++i)
        if (const auto* const record = records.GetAt(i))
            use(*record);
}

// The first of `records` whose name, given by `nameOf`, is `name` in any letter case; null if there is none.
template <class Array, class NameOf>
auto FindNamed(const Array& records, std::string_view name, NameOf nameOf) -> decltype(records.GetAt(0))
{
    for (__int64 i = 0; i < records.GetSize(); ++i)
        if (const auto record = records.GetAt(i); record != nullptr && AsciiEqualNoCase(nameOf(*record).View(), name))
            return record;
    return nullptr;
}

class CReferenceCheck
{
public:
    CReferenceCheck(const CReadingContext& context, const CString& directory, const CJOBXstepObj& step)
        : m_context(context),
          m_directory(context.job.BelowJob(directory)),
          m_step(step),
          m_data(*step.GetEda()->m_pData),
          m_top(FindComponents(components_format::kTopLayer)),
          m_bottom(FindComponents(components_format::kBottomLayer))
    {
        for (INT_PTR i = 0; i < m_data.m_arrLayerNames.GetSize(); ++i)
        {
            const CJOBXlayer* const layer = FindNamed(step.m_arrLayers, m_data.m_arrLayerNames[i].View(),
                                                      [](const CJOBXlayer& each) { return each.m_sName; });
            m_layers.push_back({layer, layer != nullptr ? layer->GetFeatures()->GetSize() : 0});
        }
    }

    void Check()
    {
        CheckLayerNames();
        CheckNetCount();
        ForEach(m_data.m_arrNets, [this](const CJOBXdataNet& net)
                { ForEach(net.m_arrSnts, [this](const CJOBXSnt& subnet) { CheckSubnet(subnet); }); });
        ForEach(*m_data.GetFeatureGroups(), [this](const CJOBXdataFgr& group) { CheckFeatures(group.m_arrNetObjs); });
        if (m_data.m_arrNets.GetSize() == 0 && m_data.m_arrPkgs.GetSize() == 0)
            return;
        ForEach(m_step.m_arrComponents, [this](const CJOBXcomponents& file) { CheckComponents(file); });
    }

private:
    struct Layer
    {
        const CJOBXlayer* layer; // null for one that the step does not have
        __int64 features;
    };

    const CJOBXcomponents* FindComponents(std::string_view layer) const
    {
        return FindNamed(m_step.m_arrComponents, layer,
                         [](const CJOBXcomponents& components) { return components.m_sLayerName; });
    }
    // Whether the step or the matrix knows a layer of that name.
    bool IsLayer(std::string_view name) const
    {
        const auto isRow = [&](const CReadingJob::Row& row) { return AsciiEqualNoCase(row.layer.View(), name); };
        const auto isFile = [&](const CJOBXcomponents& file)
        { return AsciiEqualNoCase(file.m_sLayerName.View(), name); };
        const std::vector<CReadingJob::Row>& rows = m_context.job.rows;
        const auto files = m_step.m_arrComponents.Records();
        return std::any_of(rows.begin(), rows.end(), isRow) || std::any_of(files.begin(), files.end(), isFile);
    }
    void CheckLayerNames()
    {
        for (std::size_t i = 0; i < m_layers.size(); ++i)
            if (const CString& name = m_data.m_arrLayerNames[static_cast<INT_PTR>(i)];
                m_layers[i].layer == nullptr && !IsLayer(name.View()))
                Eda().Say(eda_message::kNoSuchLayer, 0, "There is no layer ", Quoted{name.View()}, ".");
    }
    // The nets of the main netlist are those of the EDA data, if a step has both.
    void CheckNetCount()
    {
        const __int64 inNetlist = m_step.m_pNetlist->m_arrNets.GetSize();
        const __int64 inData = m_data.m_arrNets.GetSize();
        if (inNetlist > 0 && inData > 0 && inNetlist != inData)
            m_context.messages.Of(m_directory + "/netlists/cadnet/netlist")
                .Say(netlist_message::kOtherCount, 0, "The netlist has ", static_cast<long long>(inNetlist),
                     " nets, the EDA data have ", static_cast<long long>(inData), ".");
    }

    void CheckSubnet(const CJOBXSnt& subnet)
    {
        CheckToeprint(subnet);
        CheckFeatures(subnet.m_arrNetObjs);
    }
    void CheckFeatures(const CJOBXdataNetObjArray& objects)
    {
        ForEach(objects, [this](const CJOBXdataNetObj& object) { CheckFeature(object); });
    }
    void CheckFeature(const CJOBXdataNetObj& object)
    {
        const auto index = static_cast<std::size_t>(object.m_nLayerIndex);
        if (object.m_nLayerIndex < 0 || index >= m_layers.size() || m_layers[index].layer == nullptr)
            return; // reported while reading
        const Layer& known = m_layers[index];
        if (object.m_nFeatureIndex < 0 || object.m_nFeatureIndex >= known.features)
            Eda().Say(eda_message::kNoFeature, object.m_nLineNumber, "The layer ", Quoted{known.layer->m_sName.View()},
                      " has no feature ", object.m_nFeatureIndex, "; it has ", static_cast<long long>(known.features),
                      " features.");
    }

    void CheckToeprint(const CJOBXSnt& subnet)
    {
        const std::string_view side = subnet.m_sSide.View();
        if (subnet.m_sKind.View() != eda_format::kToeprint ||
            (side != eda_format::kTopSide && side != eda_format::kBottomSide))
            return; // another side was reported while reading
        const CJOBXcomponents* const file = side == eda_format::kTopSide ? m_top : m_bottom;
        if (file == nullptr)
            return;
        if (!Holds(file->m_arrCmps, subnet.m_nComponentNumber))
            Eda().Say(eda_message::kNoComponent, subnet.m_nLineNumber, "The side ", Quoted{side}, " has no component ",
                      subnet.m_nComponentNumber, ".");
        else if (const CJOBXcmp& component = *file->m_arrCmps.GetAt(subnet.m_nComponentNumber);
                 !Holds(component.m_arrTops, subnet.m_nToeprintNumber))
            Eda().Say(eda_message::kNoComponent, subnet.m_nLineNumber, "The component ",
                      Quoted{component.m_sName.View()}, " has no toeprint ", subnet.m_nToeprintNumber, ".");
    }

    void CheckComponents(const CJOBXcomponents& file)
    {
        CFileMessages& messages =
            m_context.messages.Of(m_directory + "/layers/" + std::string(file.m_sRelativePath.View()));
        ForEach(file.m_arrCmps, [&](const CJOBXcmp& component) { CheckComponent(messages, component); });
    }
    void CheckComponent(CFileMessages& messages, const CJOBXcmp& component)
    {
        const bool hasPackage = Holds(m_data.m_arrPkgs, component.m_nPkgRef);
        if (!hasPackage)
            messages.Say(components_message::kNoPackage, component.GetLine(), "The component ",
                         Quoted{component.m_sName.View()}, " has package ", component.m_nPkgRef, " of ",
                         static_cast<long long>(m_data.m_arrPkgs.GetSize()), ".");
        ForEach(component.m_arrTops,
                [&](const CJOBXcmpTop& top)
                {
                    if (hasPackage && !Holds(m_data.m_arrPkgs.GetAt(component.m_nPkgRef)->m_arrPins, top.m_nPin))
                        messages.Say(components_message::kNoPin, component.GetLine(), "The package of ",
                                     Quoted{component.m_sName.View()}, " has no pin ", top.m_nPin, ".");
                    CheckNet(messages, component, top);
                });
    }
    // -1 means that the toeprint is not connected.
    void CheckNet(CFileMessages& messages, const CJOBXcmp& component, const CJOBXcmpTop& top)
    {
        if (top.m_nNet == -1)
            return;
        if (!Holds(m_data.m_arrNets, top.m_nNet))
            messages.Say(components_message::kNoNet, component.GetLine(), "The toeprint ", Quoted{top.m_sName.View()},
                         " of ", Quoted{component.m_sName.View()}, " names the net ", top.m_nNet, " of ",
                         static_cast<long long>(m_data.m_arrNets.GetSize()), ".");
        else if (top.m_nSubnet != -1 && !Holds(m_data.m_arrNets.GetAt(top.m_nNet)->m_arrSnts, top.m_nSubnet))
            messages.Say(components_message::kNoNet, component.GetLine(), "The toeprint ", Quoted{top.m_sName.View()},
                         " of ", Quoted{component.m_sName.View()}, " names the subnet ", top.m_nSubnet, " of the net ",
                         Quoted{m_data.m_arrNets.GetAt(top.m_nNet)->m_sName.View()}, ", which does not exist.");
    }
    CFileMessages& Eda()
    {
        if (m_messages == nullptr)
            m_messages = &m_context.messages.Of(m_directory + "/eda/data");
        return *m_messages;
    }

    const CReadingContext& m_context;
    std::string m_directory; // below the job
    const CJOBXstepObj& m_step;
    const CJOBXdata& m_data;
    // The components of the sides; null if there is no such file.
    const CJOBXcomponents* m_top;
    const CJOBXcomponents* m_bottom;
    std::vector<Layer> m_layers;         // by number
    CFileMessages* m_messages = nullptr; // of the EDA data; null until there is one
};
} // namespace

void CheckReferences(const CReadingContext& context, const CString& directory, const CJOBXstepObj& step)
{
    if (context.job.reading.pSink != nullptr)
        CReferenceCheck(context, directory, step).Check();
}
