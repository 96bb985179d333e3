#include "job/CJOBXmatrix.h"

namespace
{
bool IsCopper(const CJOBXmatrixLayer* layer)
{
    return layer != nullptr &&
           ((layer->m_sContext == "BOARD" && layer->m_sType == "SIGNAL") || layer->m_sType == "POWER_GROUND");
}
} // namespace

CJOBXmatrix::CJOBXmatrix() = default;

CJOBXmatrix::~CJOBXmatrix() = default;

CString CJOBXmatrix::sGetMatrixLayerType(int index) const
{
    const CJOBXmatrixLayer* const layer = m_arrLayers[index];
    return layer != nullptr ? layer->m_sType : CString();
}

CString CJOBXmatrix::GetTopLayerName() const
{
    for (__int64 i = 0; i < m_arrLayers.GetSize(); ++i)
        if (const CJOBXmatrixLayer* const layer = m_arrLayers.GetAt(i); IsCopper(layer))
            return layer->m_sName;
    return {};
}

CString CJOBXmatrix::GetBottomLayerName() const
{
    for (__int64 i = m_arrLayers.GetLastIndex(); i >= 0; --i)
        if (const CJOBXmatrixLayer* const layer = m_arrLayers.GetAt(i); IsCopper(layer))
            return layer->m_sName;
    return {};
}

CJOBXmatrixLayer* CJOBXmatrix::pGetMatrixLayerFromName(CString& name) const
{
    name.MakeUpper();
    for (CJOBXmatrixLayer& layer : m_arrLayers.Records())
        if (layer.m_sName == name)
            return &layer;
    return nullptr;
}

CJOBXmatrixLayer* CJOBXmatrix::GetMatrixLayerFromName(const CString& name) const
{
    return m_arrLayers.GetMatrixLayer(name);
}
