#include "layer/CJOBXlayer.h"

#include "eda/CJOBXcomponents.h"
#include "foundation/CTextScanner.h"
#include "foundation/Guarded.h"
#include "layer/CJOBXtool.h"
#include "layer/FeaturesReader.h"

template class CExPtrArray<CJOBXlayer*, CJOBXlayer*>;

namespace
{
// The text at the first position that holds `number`; "" when there is none.
CString TextOfNumber(const CArrayN& numbers, const CStringArray& texts, int number)
{
    for (__int64 i = 0; i < numbers.GetSize() && i < texts.GetSize(); ++i)
        if (numbers[i] == number)
            return texts[i];
    return {};
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
            CTextScanner scanner(path, "CJOBXlayer.cpp", __LINE__);
            ReadFeatures(scanner, *this);
        });
    return 1;
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
    return TextOfNumber(m_arrSymbolNumbers, m_arrSymbolNames, number);
}

CString CJOBXlayer::GetAttributeName(int number) const
{
    return TextOfNumber(m_arrAttributeNameNumbers, m_arrAttributeNames, number);
}

CString CJOBXlayer::GetAttributeText(int number) const
{
    return TextOfNumber(m_arrAttributeTextNumbers, m_arrAttributeTexts, number);
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
    m_arrFeatures.UnitConvert(factor);
    for (__int64 i = 0; i < m_pComponents->GetSize(); ++i)
        if (CJOBXcomponents* const components = m_pComponents->GetAt(i))
            components->UnitConvert(factor);
    m_pTool->UnitConvert(factor);
}

CJOBXlayerArray::CJOBXlayerArray() = default;

CJOBXlayerArray::~CJOBXlayerArray() = default;

CJOBXlayer* CJOBXlayerArray::GetODBlayerFromName(const CString& name) const
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXlayer* const layer = GetAt(i);
            layer != nullptr && AsciiEqualNoCase(layer->m_sName.View(), name.View()))
            return layer;
    return nullptr;
}

void CJOBXlayerArray::UnitConvert(const double& factor)
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXlayer* const layer = GetAt(i))
            layer->UnitConvert(factor);
}
