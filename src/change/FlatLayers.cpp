#include "change/FlatLayers.h"

#include "change/PlacedFeatures.h"
#include "foundation/framework/AsciiText.h"
#include "job/CJOBX.h"
#include "job/CJOBXmisc.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "layer/CJOBXlayer.h"
#include "layer/CJOBXtool.h"
#include "step/CJOBXstepObj.h"
#include "step/CJOBXstephdr.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace
{
// The first layer of that name, ignoring letter case; null if there is none.
CJOBXlayer* LayerOf(const CJOBXstepObj& step, const std::string& name)
{
    return step.ScanLayerObjDataInLayer(CString(std::string_view(name)));
}

std::string SymbolKey(const CString& name, const CString& letter)
{
    return std::string(name.View()) + ' ' + std::string(letter.View());
}

CString SecondField(const CJOBXlayer& layer, INT_PTR index)
{
    return index < layer.m_arrSymbolSecondFields.GetSize() ? layer.m_arrSymbolSecondFields[index] : CString();
}

bool IsUnitLetter(const CString& letter)
{
    return letter.CompareNoCase("I") == 0 || letter.CompareNoCase("M") == 0;
}

// Appends it without the small steps in which lists grow.
void Append(CJOBXlayObjArray& features, std::unique_ptr<CJOBXlayObj> feature)
{
    const __int64 count = features.GetSize();
    features.SetSize(count + 1, std::max<__int64>(64, count));
    features.SetAt(count, feature.release());
}
} // namespace

std::optional<std::string> CStepCopy::Target(std::string_view layer) const
{
    return placed.placement.isFlipped ? flipped.Of(layer) : std::optional(LowerName(layer));
}

CString CStepCopy::Named(const CString& name) const
{
    return name + CString(('#' + std::to_string(placed.number)).c_str());
}

CFlattening::CFlattening(const CJOBX& owner, CJOBXstepObj& step)
    : job(owner),
      root(step),
      unit(step.GetHeader()->GetUnit()),
      symbols(*owner.m_pSpecialSymbols),
      lengths(*owner.m_pMisc)
{
}

CFlatLayers::CFlatLayers(CFlattening& flattening) : m_flattening(flattening) {}

CFlatLayers::Target::Target(CJOBXlayer& owner, const CLengthAttributes& lengths)
    : layer(owner),
      attributes(owner.m_arrAttributeNames, owner.m_arrAttributeNameNumbers, owner.m_arrAttributeTexts,
                 owner.m_arrAttributeTextNumbers, lengths)
{
    for (INT_PTR i = 0; i < std::min(owner.m_arrSymbolNames.GetSize(), owner.m_arrSymbolNumbers.GetSize()); ++i)
    {
        symbols.try_emplace(SymbolKey(owner.m_arrSymbolNames[i], SecondField(owner, i)), owner.m_arrSymbolNumbers[i]);
        nextSymbol = std::max(nextSymbol, owner.m_arrSymbolNumbers[i] + 1);
    }
}

CFlatLayers::Starts CFlatLayers::Add(const CStepCopy& copy)
{
    Starts starts;
    for (const CJOBXlayer& layer : copy.Step().m_arrLayers.Records())
    {
        Target& target = TargetFor(copy.Target(layer.m_sName.View()).value_or(""), copy);
        starts[LowerName(layer.m_sName.View())] = {target.layer.m_sName, target.layer.GetFeatures()->GetSize()};
        AddFeatures(layer, m_flattening.FileOf(copy, layer.GetUnit(), target.layer.GetUnit()), target);
        AddTools(*layer.GetTool(), *target.layer.GetTool());
    }
    return starts;
}

CFlatLayers::Target& CFlatLayers::TargetFor(const std::string& name, const CStepCopy& copy)
{
    const auto found = m_targets.find(name);
    if (found != m_targets.end())
        return found->second;
    CJOBXlayer* layer = LayerOf(m_flattening.root, name);
    if (layer == nullptr)
        layer = &NewLayer(name, copy);
    return m_targets
        .emplace(std::piecewise_construct, std::forward_as_tuple(name),
                 std::forward_as_tuple(*layer, m_flattening.lengths))
        .first->second;
}

// A layer that the root does not have is like that of the step.
CJOBXlayer& CFlatLayers::NewLayer(const std::string& name, const CStepCopy& copy)
{
    auto layer = std::make_unique<CJOBXlayer>();
    layer->m_sName = std::string_view(name);
    layer->SetUnit(m_flattening.unit);
    layer->m_sUnits = UnitsText(m_flattening.unit);
    if (const CJOBXlayer* const like = LayerOf(copy.Step(), name))
        CopyAttributeList(*like, *layer);
    return *m_flattening.root.m_arrLayers.Own(std::move(layer));
}

void CFlatLayers::AddFeatures(const CJOBXlayer& from, const CPlacedFile& file, Target& target)
{
    const std::map<int, int> symbols = AddSymbols(from, file, target);
    CJOBXlayObjArray& features = *target.layer.GetFeatures();
    for (__int64 i = 0; i < from.GetFeatures()->GetSize(); ++i)
    {
        const CJOBXlayObj* const feature = from.GetFeatures()->GetAt(i);
        std::unique_ptr<CJOBXlayObj> copy = feature == nullptr ? nullptr : PlacedCopy(*feature, file);
        if (copy != nullptr)
        {
            if (const auto symbol = symbols.find(copy->GetSymbolNumber()); symbol != symbols.end())
                copy->SetSymbolNumber(symbol->second);
            if (copy->nGetPropertyCount() > 0)
                target.attributes.Adopt(*copy->GetPropertyArray(), file);
            copy->SetFeatureIndex(static_cast<int>(features.GetSize()));
        }
        Append(features, std::move(copy)); // null as well: features behind it keep their distance
    }
}

std::map<int, int> CFlatLayers::AddSymbols(const CJOBXlayer& from, const CPlacedFile& file, Target& target) const
{
    std::map<int, int> numbers;
    CJOBXlayer& to = target.layer;
    for (INT_PTR i = 0; i < std::min(from.m_arrSymbolNames.GetSize(), from.m_arrSymbolNumbers.GetSize()); ++i)
    {
        const CString letter = SecondField(from, i);
        const bool isConverted = file.IsConverted() && !IsUnitLetter(letter);
        const CString name = isConverted ? m_flattening.symbols.Converted(from.m_arrSymbolNames[i], file.Unit())
                                         : from.m_arrSymbolNames[i];
        const auto [found, isNew] = target.symbols.try_emplace(SymbolKey(name, letter), target.nextSymbol);
        if (isNew)
        {
            to.m_arrSymbolNumbers.Add(target.nextSymbol++);
            to.m_arrSymbolNames.Add(name);
            to.m_arrSymbolSecondFields.SetSize(to.m_arrSymbolNames.GetSize());
            to.m_arrSymbolSecondFields[to.m_arrSymbolNames.GetSize() - 1] = letter;
        }
        numbers.try_emplace(from.m_arrSymbolNumbers[i], found->second);
    }
    return numbers;
}

// Tools that are equal but for their number are one tool.
void CFlatLayers::AddTools(const CJOBXtool& from, CJOBXtool& to) const
{
    const bool isThere = !from.m_sUnits.IsEmpty() || from.m_arrToolData.GetSize() > 0;
    if (!isThere)
        return;
    if (to.m_sUnits.IsEmpty() && to.m_arrToolData.GetSize() == 0)
    {
        to = from;
        for (CJOBXtoolData& tool : to.m_arrToolData.Records())
            tool.SetID(CJOBXidentified::kNoID);
        return;
    }
    for (const CJOBXtoolData& tool : from.m_arrToolData.Records())
    {
        auto added = std::make_unique<CJOBXtoolData>(tool);
        added->SetID(CJOBXidentified::kNoID);
        if (from.GetUnit() != to.GetUnit())
            for (double* const size :
                 {&added->m_dMinTol, &added->m_dMaxTol, &added->m_dFinishSize, &added->m_dDrillSize})
                *size = ConvertedLength(*size, to.GetUnit());
        int next = 1;
        bool isKnown = false;
        for (const CJOBXtoolData& known : to.m_arrToolData.Records())
        {
            next = std::max(next, known.m_nNum + 1);
            added->m_nNum = known.m_nNum;
            isKnown = isKnown || *added == known;
        }
        added->m_nNum = next;
        if (!isKnown)
            to.m_arrToolData.Own(std::move(added));
    }
}

std::string LowerName(std::string_view name)
{
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
    return lower;
}

void CopyAttributeList(const CJOBXattributed& from, CJOBXattributed& to)
{
    if (from.pGetAttributeList() == nullptr)
        return;
    CJOBXattributeList& list = *to.pMakeAttributeList();
    list.SetUnit(from.pGetAttributeList()->GetUnit());
    *list.GetAttributes() = *from.pGetAttributeList()->GetAttributes();
}
