// Corrects the numbers by which the records of a step refer to each other, after some were deleted.
#pragma once

#include "change/DeleteWhere.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "step/CJOBXstepObj.h"

inline CJOBXdata& DataOf(CJOBXstepObj& step)
{
    return *step.GetEda()->m_pData;
}

// Calls `use` with each list of features of the EDA data: those of subnets and those of feature groups.
template <class Data, class Use>
void ForEachFeatureList(Data& data, Use use)
{
    for (auto& net : data.m_arrNets.Records())
        for (auto& subnet : net.m_arrSnts.Records())
            use(subnet.m_arrNetObjs);
    for (auto& group : data.GetFeatureGroups()->Records())
        use(group.m_arrNetObjs);
}

// The features of the layer of that name are at these places now.
void MoveFeatureReferences(CJOBXstepObj& step, const CString& layer, const NewPlaces& places);
// The components of that file are at these places now; so the subnets of its side. Subnets without a component become
// traces.
void MoveComponentReferences(CJOBXstepObj& step, const CJOBXcomponents& file, const NewPlaces& places);
// The nets of the EDA data are at these places now.
void MoveNetReferences(CJOBXstepObj& step, const NewPlaces& places);
// The entries in the list of layers of the EDA data are to be at these places; removes the others, with their features.
void RemoveLayerReferences(CJOBXstepObj& step, const NewPlaces& places);
