#include "job/SavedFolders.h"

#include "components/CJOBXcomponents.h"
#include "foundation/corekit/FreshDirectory.h"
#include "foundation/framework/AsciiText.h"
#include "job/CJOBX.h"
#include "job/CJOBXsteps.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "netlist/CJOBXnetlist.h"

#include <utility>

__int64 CSymbolLayers::GetSize() const
{
    return job.m_pSpecialSymbols->GetSize();
}

const CJOBXlayer* CSymbolLayers::GetAt(__int64 index) const
{
    const CJOBXSpecialSymbol* const symbol = job.m_pSpecialSymbols->GetAt(index);
    return symbol != nullptr ? symbol->GetLayer() : nullptr;
}

CSavedFolders::CSavedFolders(const CSourceTree& tree, const CJOBX& before, const CJOBX& now, OnBadName onBadName)
    : m_onBadName(std::move(onBadName))
{
    for (const std::string& folder : tree.folders)
        m_names[FolderOf(folder)].push_back(LastPartOf(folder));
    m_places[""] = "";
    const CPartsByFolder<CJOBXlayer> symbols(CSymbolLayers{now});
    for (const CJOBXSpecialSymbol& symbol : before.m_pSpecialSymbols->Records())
        if (symbols.Find(symbol.GetLayer()) == nullptr)
            LeaveOut(symbol.GetLayer()->GetSourceFolder());
    for (const CJOBXSpecialSymbol& symbol : now.m_pSpecialSymbols->Records())
        PlaceOfPart(symbol.GetLayer()->GetSourceFolder(), symbol.m_sName, NameIn("", "symbols"));
    const CJOBXstepObjArray& stepsBefore = before.m_pSteps->m_arrSteps;
    const CJOBXstepObjArray& stepsNow = now.m_pSteps->m_arrSteps;
    MapParts<CJOBXstepObj>(stepsBefore, stepsNow, NameIn("", "steps"),
                           [](const CJOBXstepObj& step) { return step.m_sName; });
    const CPartsByFolder<CJOBXstepObj> steps(stepsBefore);
    for (const CJOBXstepObj& step : stepsNow.Records())
        MapStep(steps.Find(&step), step);
    for (const std::string& folder : tree.folders)
        if (const std::string& place = PlaceOf(folder); !place.empty())
            Add(place);
}

template <class Part, class List, class NameOf>
void CSavedFolders::MapParts(const List& before, const List& now, const std::string& parent, NameOf nameOf)
{
    const CPartsByFolder<Part> parts(now);
    for (const Part& part : before.Records())
        if (parts.Find(&part) == nullptr)
            LeaveOut(part.GetSourceFolder());
    for (const Part& part : now.Records())
        PlaceOfPart(part.GetSourceFolder(), nameOf(part), parent);
}

// A layer's folder may have features, components, or both; it stays as long as there is one of them.
void CSavedFolders::MapStep(const CJOBXstepObj* before, const CJOBXstepObj& now)
{
    static const CJOBXstepObj nothing;
    const CJOBXstepObj& was = before != nullptr ? *before : nothing;
    const std::string source = ToText(now.GetSourceFolder());
    const std::string place = PlaceOfPart(now.GetSourceFolder(), now.m_sName, NameIn("", "steps"));
    const std::string layers = Joined(place, NameIn(source, "layers"));
    MapParts<CJOBXcomponents>(was.m_arrComponents, now.m_arrComponents, layers,
                              [](const CJOBXcomponents& file) { return file.m_sLayerName; });
    const CPartsByFolder<CJOBXlayer> left(now.m_arrLayers);
    const CPartsByFolder<CJOBXcomponents> components(now.m_arrComponents);
    for (const CJOBXlayer& layer : was.m_arrLayers.Records())
        if (CJOBXcomponents key; left.Find(&layer) == nullptr)
        {
            key.SetSourceFolder(layer.GetSourceFolder());
            if (components.Find(&key) == nullptr)
                LeaveOut(layer.GetSourceFolder());
        }
    for (const CJOBXlayer& layer : now.m_arrLayers.Records())
        PlaceOfPart(layer.GetSourceFolder(), layer.m_sName, layers);
    const CJOBXnetlistArray none;
    MapParts<CJOBXnetlist>(was.pGetFurtherNetlists() != nullptr ? *was.pGetFurtherNetlists() : none,
                           now.pGetFurtherNetlists() != nullptr ? *now.pGetFurtherNetlists() : none,
                           Joined(place, NameIn(source, "netlists")),
                           [](const CJOBXnetlist& netlist) { return netlist.GetName(); });
}

const std::string& CSavedFolders::PlaceOf(const std::string& sourceFolder)
{
    const auto known = m_places.find(sourceFolder);
    if (known != m_places.end())
        return known->second;
    const std::string parent = FolderOf(sourceFolder);
    const std::string place = IsLeftOut(parent) ? std::string() : Joined(PlaceOf(parent), LastPartOf(sourceFolder));
    return m_places.try_emplace(sourceFolder, place).first->second;
}

void CSavedFolders::LeaveOut(const CString& sourceFolder)
{
    if (!sourceFolder.IsEmpty())
        m_places[ToText(sourceFolder)].clear();
}

// A part keeps the spelling of its folder if only the letter case of its name differs.
std::string CSavedFolders::PlaceOfPart(const CString& sourceFolder, const CString& name, const std::string& parent)
{
    const std::string source = ToText(sourceFolder);
    const std::string spelling = LastPartOf(source);
    const std::string place = Joined(parent, AsciiEqualNoCase(spelling, name.View()) ? spelling : ToText(name));
    const auto owner = m_owners.try_emplace(place, source).first;
    if (!IsEntryName(name) || owner->second != source)
        m_onBadName(place);
    if (!source.empty())
        m_places[source] = place;
    Add(place);
    return place;
}

std::string CSavedFolders::NameIn(const std::string& sourceFolder, const char* usualName) const
{
    if (const auto names = m_names.find(sourceFolder); names != m_names.end())
        for (const std::string& name : names->second)
            if (AsciiEqualNoCase(name, usualName))
                return name;
    return usualName;
}

void CSavedFolders::Add(const std::string& folder)
{
    if (!folder.empty() && m_all.insert(folder).second)
        Add(FolderOf(folder));
}
