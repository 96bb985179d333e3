// Jobs that were read completely, and what their references lead to.
#pragma once

#include "JOBXCLSDLL.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace change_test
{
using Strings = std::vector<std::string>;

inline std::string Plain(const CString& text)
{
    return std::string(text.View());
}

inline CStringArray Texts(std::initializer_list<const char*> texts)
{
    CStringArray made;
    for (const char* const text : texts)
        made.Add(text);
    return made;
}

inline CArrayN Places(std::initializer_list<int> places)
{
    CArrayN made;
    for (const int place : places)
        made.Add(place);
    return made;
}

inline std::unique_ptr<CJOBX> ReadJob(const std::string& path)
{
    CJOBXreading reading;
    reading.way = JOBXway::Complete;
    auto job = std::make_unique<CJOBX>();
    job->SetReading(reading);
    EXPECT_EQ(job->ParseODBOfMFC(path.c_str()), 1);
    return job;
}
inline std::unique_ptr<CJOBX> ReadSample()
{
    return ReadJob(SamplesDir() + "/blinker");
}

inline CJOBXstepObj& StepOf(const CJOBX& job, std::string_view name)
{
    for (CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        if (step.m_sName.View() == name)
            return step;
    ADD_FAILURE() << "no step " << name;
    return *job.m_pSteps->m_arrSteps.GetAt(0);
}

inline CJOBXdata& DataOf(CJOBXstepObj& step)
{
    return *step.GetEda()->m_pData;
}

inline CJOBXcomponents* ComponentsOf(CJOBXstepObj& step, std::string_view layer)
{
    for (CJOBXcomponents& file : step.m_arrComponents.Records())
        if (file.m_sLayerName.View() == layer)
            return &file;
    return nullptr;
}

inline Strings LayersOfMatrix(const CJOBX& job)
{
    Strings names;
    for (const CJOBXmatrixLayer& row : job.m_pMatrix->m_arrLayers.Records())
        names.push_back(std::to_string(row.m_nRow) + ' ' + Plain(row.m_sName));
    return names;
}
inline Strings StepsOfMatrix(const CJOBX& job)
{
    Strings names;
    for (const CJOBXmatrixStep& row : job.m_pMatrix->m_arrSteps.Records())
        names.push_back(std::to_string(row.m_nColumn) + ' ' + Plain(row.m_sName));
    return names;
}

// What each record that refers to others leads to, by the address of the record: another record's address, or null for one
// that leads nowhere.
class References
{
public:
    explicit References(CJOBXstepObj& step)
    {
        for (CJOBXdataNet& net : DataOf(step).m_arrNets.Records())
            for (CJOBXSnt& subnet : net.m_arrSnts.Records())
            {
                AddToeprint(step, subnet);
                AddFeatures(step, subnet.m_arrNetObjs);
            }
        for (CJOBXdataFgr& group : DataOf(step).GetFeatureGroups()->Records())
            AddFeatures(step, group.m_arrNetObjs);
        for (CJOBXcomponents& file : step.m_arrComponents.Records())
            for (CJOBXcmp& component : file.m_arrCmps.Records())
                AddComponent(step, component);
    }

    std::map<const void*, const void*> features;   // of FID records
    std::map<const void*, const void*> components; // of subnets of pins
    std::map<const void*, const void*> nets;       // of toeprints
    std::map<const void*, const void*> subnets;    // of toeprints
    std::map<const void*, const void*> packages;   // of components

private:
    void AddFeatures(CJOBXstepObj& step, const CJOBXdataNetObjArray& objects)
    {
        const CStringArray& names = DataOf(step).m_arrLayerNames;
        for (const CJOBXdataNetObj& object : objects.Records())
        {
            const CJOBXlayer* const layer = object.m_nLayerIndex >= 0 && object.m_nLayerIndex < names.GetSize()
                                                ? step.ScanLayerObjDataInLayer(names[object.m_nLayerIndex])
                                                : nullptr;
            features[&object] = layer == nullptr ? nullptr : layer->GetFeatures()->GetAt(object.m_nFeatureIndex);
        }
    }
    void AddToeprint(CJOBXstepObj& step, const CJOBXSnt& subnet)
    {
        if (subnet.m_sKind != "TOP")
            return;
        const CJOBXcomponents* const file = ComponentsOf(step, subnet.m_sSide == "T" ? "comp_+_top" : "comp_+_bot");
        components[&subnet] = file == nullptr ? nullptr : file->m_arrCmps.GetAt(subnet.m_nComponentNumber);
    }
    void AddComponent(CJOBXstepObj& step, const CJOBXcmp& component)
    {
        packages[&component] = DataOf(step).m_arrPkgs.GetAt(component.m_nPkgRef);
        for (const CJOBXcmpTop& top : component.m_arrTops.Records())
        {
            const CJOBXdataNet* const net = DataOf(step).m_arrNets.GetAt(top.m_nNet);
            nets[&top] = net;
            subnets[&top] = net == nullptr ? nullptr : net->m_arrSnts.GetAt(top.m_nSubnet);
        }
    }
};

// Every reference that is left leads to what it led to before, and some are left.
inline void ExpectSame(const std::map<const void*, const void*>& before, const std::map<const void*, const void*>& now)
{
    EXPECT_FALSE(now.empty());
    int wrong = 0;
    for (const auto& [record, target] : now)
        wrong += target == nullptr || before.at(record) != target ? 1 : 0;
    EXPECT_EQ(wrong, 0);
}
} // namespace change_test
