#include "layer/CJOBXlayer.h"

#include "components/CJOBXcomponents.h"
#include "foundation/CLineScanner.h"
#include "foundation/CTextWriter.h"
#include "foundation/NumberedTable.h"
#include "foundation/ScaleLengths.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/FreshDirectory.h"
#include "foundation/framework/Guarded.h"
#include "layer/CJOBXlayerFields.h"
#include "layer/CJOBXtool.h"
#include "layer/FeaturesReader.h"
#include "layer/FeaturesWriter.h"
#include "layer/LayerWrites.h"

template class CExPtrArray<CJOBXlayer*, CJOBXlayer*>;

namespace
{

bool IsDielectric(const CString& layerName)
{
    const std::string_view name = layerName.View(); // only these two spellings; intended
    return name.starts_with("DIELECTRIC_") || name.starts_with("dielectric_");
}

// The path of a layer's attribute list file: beside the features if the folder is the layer's own.
CString AttributeListFile(const CString& folder, const CString& layerName)
{
    const CKUtility* const files = CKUtility::GetInstance();
    const CString last = files->GetSegmntFromFilePath(folder, 2);
    CString own = folder;
    if (!AsciiEqualNoCase(last.View(), layerName.View()))
        own = IsEntryName(layerName) ? files->CKPathCombine(folder, layerName, __FILE__, __LINE__) : CString();
    return own.IsEmpty() ? own : files->CKPathCombine(own, "attrlist", __FILE__, __LINE__);
}
} // namespace

CJOBXlayer::CJOBXlayer()
    : m_pComponents(std::make_unique<CJOBXcomponentsArray>()), m_pTool(std::make_unique<CJOBXtool>())
{
}

CJOBXlayer::~CJOBXlayer() = default;

int CJOBXlayer::ParseODBOfMFC(CString path)
{
    Guarded(
        [&]
        {
            CLineScanner scanner(CLineScanner::InPieces{}, path, __FILE__, __LINE__);
            ReadFeatures(scanner, *this);
        });
    return 1;
}

void CJOBXlayer::WriteODBData(CString folder, int recreateFolder, int isLayer) const
{
    Guarded(
        [&]
        {
            if (recreateFolder == 1 && MakeFreshDirectory(folder, __FILE__, __LINE__).IsEmpty())
                return;
            if (m_pTool->GetToolDataArray()->GetSize() > 0)
                m_pTool->WriteODBData(folder);
            if (isLayer != 0)
                m_pComponents->WriteODBData(folder);
            const CKUtility* const files = CKUtility::GetInstance();
            {
                CTextWriter out(files->CKPathCombine(folder, isLayer != 0 ? "features" : "profile", __FILE__, __LINE__),
                                __FILE__, __LINE__);
                WriteFeatures(out, *this);
            }
            if (isLayer == 0 || !(m_dCopperWeightOrDielectric > 0))
                return;
            const CString path = AttributeListFile(folder, m_sName);
            if (path.IsEmpty())
                return;
            CTextWriter out(path, __FILE__, __LINE__);
            out << "UNITS=MM\n"
                << (IsDielectric(m_sName) ? ".layer_dielectric=" : ".copper_weight=")
                << General{m_dCopperWeightOrDielectric} << '\n';
        });
}

void CJOBXlayer::AddPropertyData(CString attributeText, CJOBXlayObj* feature)
{
    if (feature != nullptr)
        Guarded(
            [&]
            {
                const auto name = [this](int number) { return GetAttributeName(number); };
                const auto text = [this](int number) { return GetAttributeText(number); };
                AppendProperties(attributeText.View(), *feature->GetPropertyArray(), name, text);
            });
}

__int64 CJOBXlayer::GEtODBFeatureLineNo() const
{
    return m_nFeatureLineNo;
}

int CJOBXlayer::nGetSymbolIndex(const CString& name) const
{
    for (__int64 i = 0; i < m_arrSymbolNames.GetSize(); ++i)
        if (m_arrSymbolNames[i] == name)
            return static_cast<int>(i);
    return -1;
}

CString CJOBXlayer::GetSymbolName(int number) const
{
    return FirstTextOfNumber(m_arrSymbolNumbers, m_arrSymbolNames, number);
}

CString CJOBXlayer::GetAttributeName(int number) const
{
    return FirstTextOfNumber(m_arrAttributeNameNumbers, m_arrAttributeNames, number);
}

CString CJOBXlayer::GetAttributeText(int number) const
{
    return FirstTextOfNumber(m_arrAttributeTextNumbers, m_arrAttributeTexts, number);
}

JOBXunit CJOBXlayer::GetSymbolUnit(int number) const
{
    const CString own = FirstTextOfNumber(m_arrSymbolNumbers, m_arrSymbolSecondFields, number);
    if (AsciiEqualNoCase(own.View(), "M"))
        return JOBXunit::Millimetre;
    return AsciiEqualNoCase(own.View(), "I") ? JOBXunit::Inch : GetUnit();
}

int CJOBXlayer::nGetLayObjIndexFromSurfaceIndex(int n) const
{
    for (__int64 i = n; i >= 0 && i < m_arrFeatures.GetSize(); ++i)
        if (const CJOBXlayObj* const feature = m_arrFeatures.GetAt(i);
            feature != nullptr && feature->GetSurfaceIndex() == n)
            return static_cast<int>(i);
    return -1;
}

CString CJOBXlayer::GetViaPadStackName(int i) const
{
    const CJOBXlayObj* const feature = m_arrFeatures.GetAt(i);
    return feature != nullptr ? feature->GetViaPadStackName() : CString();
}

void CJOBXlayer::vRescale()
{
    m_arrFeatures.vRescale(m_dRescaleFactor);
}

void CJOBXlayer::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXlayerArray::CJOBXlayerArray() = default;

CJOBXlayerArray::~CJOBXlayerArray() = default;

CJOBXlayer* CJOBXlayerArray::GetODBlayerFromName(const CString& name) const
{
    for (CJOBXlayer& layer : Records())
        if (AsciiEqualNoCase(layer.m_sName.View(), name.View()))
            return &layer;
    return nullptr;
}

void CJOBXlayerArray::WriteODBData(CString stepDirectory) const
{
    Guarded(
        [&]
        {
            CWriteTasks tasks;
            AddLayerWrites(tasks, *this, stepDirectory);
            tasks.Run();
        });
}

void CJOBXlayerArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXlayer& layer : Records())
        layer.UnitConvert(by);
}

void AddLayerWrites(CWriteTasks& tasks, const CJOBXlayerArray& layers, const CString& stepDirectory)
{
    const CString directory = tasks.MakeFreshDirectory(stepDirectory, "layers", __FILE__, __LINE__);
    if (directory.IsEmpty())
        return;
    for (__int64 i = 0; i < layers.GetSize(); ++i)
    {
        const CJOBXlayer* const layer = layers.GetAt(i);
        if (layer == nullptr || !IsEntryName(layer->m_sName))
            continue;
        const CString folder = tasks.MakeFreshDirectory(directory, layer->m_sName, __FILE__, __LINE__);
        if (!folder.IsEmpty())
            tasks.Add(layer->GetFeatures()->GetSize(), [layer, folder] { layer->WriteODBData(folder, 0, 1); });
    }
}
