#include "change/RecordDeletion.h"

#include "change/References.h"
#include "components/CJOBXcomponents.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "foundation/framework/Guarded.h"
#include "layer/CJOBXlayer.h"
#include "netlist/CJOBXnetlist.h"
#include "step/CJOBXstepObj.h"

#include <set>

namespace
{
std::vector<bool> Marked(const CArrayN& places, __int64 size)
{
    std::vector<bool> marked(static_cast<std::size_t>(size), false);
    for (INT_PTR i = 0; i < places.GetSize(); ++i)
        if (const int place = places[i]; place >= 0 && place < size)
            marked[static_cast<std::size_t>(place)] = true;
    return marked;
}

template <class T>
NewPlaces DeleteAtPlaces(COwningPtrArray<T>& list, const CArrayN& places)
{
    const std::vector<bool> marked = Marked(places, list.GetSize());
    return DeleteWhere(list, [&](const T&, int place) { return marked[static_cast<std::size_t>(place)]; });
}

// Records that know their place have the number of it.
template <class T>
void Number(COwningPtrArray<T>& list)
{
    for (__int64 i = 0; i < list.GetSize(); ++i)
        list.GetAt(i)->m_nNumber = static_cast<int>(i);
}

void DeleteNamed(CJOBXnetlist& netlist, const std::set<CString>& names)
{
    DeleteWhere(netlist.m_arrNets, [&](const CJOBXnet& net, int) { return names.contains(net.m_sName); });
}
} // namespace

void DeleteFeatures(CJOBXstepObj& step, CJOBXlayer& layer, const CArrayN& places)
{
    Guarded(
        [&]
        {
            CJOBXlayObjArray& features = *layer.GetFeatures();
            const NewPlaces now = DeleteAtPlaces(features, places);
            for (__int64 i = 0; i < features.GetSize(); ++i)
                features.GetAt(i)->SetFeatureIndex(static_cast<int>(i));
            MoveFeatureReferences(step, layer.m_sName, now);
        });
}

void DeleteComponents(CJOBXstepObj& step, CJOBXcomponents& file, const CArrayN& places)
{
    Guarded(
        [&]
        {
            const NewPlaces now = DeleteAtPlaces(file.m_arrCmps, places);
            Number(file.m_arrCmps);
            MoveComponentReferences(step, file, now);
        });
}

void DeleteNets(CJOBXstepObj& step, const CArrayN& places)
{
    Guarded(
        [&]
        {
            CJOBXdataNetArray& nets = step.GetEda()->m_pData->m_arrNets;
            std::set<CString> names;
            for (INT_PTR i = 0; i < places.GetSize(); ++i)
                if (const CJOBXdataNet* const net = nets.GetAt(places[i]))
                    names.insert(net->m_sName);
            const NewPlaces now = DeleteAtPlaces(nets, places);
            Number(nets);
            for (const CJOBXdataNet& net : nets.Records())
                names.erase(net.m_sName); // there was another one of that name
            MoveNetReferences(step, now);
            DeleteNamed(*step.GetNetlist(), names);
            if (step.pGetFurtherNetlists() != nullptr)
                for (CJOBXnetlist& netlist : step.pMakeFurtherNetlists()->Records())
                    DeleteNamed(netlist, names);
        });
}
