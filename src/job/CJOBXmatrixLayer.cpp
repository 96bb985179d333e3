#include "job/CJOBXmatrixLayer.h"

template class CExPtrArray<CJOBXmatrixLayer*, CJOBXmatrixLayer*>;

namespace
{
void SetTextOfAll(const CJOBXmatrixLayerArray& layers, CString CJOBXmatrixLayer::*member, const CString& text)
{
    for (CJOBXmatrixLayer& layer : layers.Records())
        layer.*member = text;
}
} // namespace

CJOBXmatrixLayer::CJOBXmatrixLayer() = default;

CJOBXmatrixLayer::~CJOBXmatrixLayer() = default;

CJOBXmatrixLayerArray::CJOBXmatrixLayerArray() = default;

CJOBXmatrixLayerArray::~CJOBXmatrixLayerArray() = default;

int CJOBXmatrixLayerArray::IsDrillLayer(const CString& name) const
{
    for (const CJOBXmatrixLayer& layer : Records())
        if (layer.m_sType == "DRILL" && layer.m_sName.CompareNoCase(name) == 0)
            return 1;
    return 0;
}

CJOBXmatrixLayer* CJOBXmatrixLayerArray::GetMatrixLayer(const CString& name) const
{
    for (CJOBXmatrixLayer& layer : Records())
        if (layer.m_sName.CompareNoCase(name) == 0)
            return &layer;
    return nullptr;
}

void CJOBXmatrixLayerArray::SetODBmatrixLayerName(const CString& name)
{
    SetTextOfAll(*this, &CJOBXmatrixLayer::m_sName, name);
}

void CJOBXmatrixLayerArray::SetODBmatrixLayerPolarity(const CString& polarity)
{
    SetTextOfAll(*this, &CJOBXmatrixLayer::m_sPolarity, polarity);
}

void CJOBXmatrixLayerArray::SetODBmatrixLayerType(const CString& type)
{
    SetTextOfAll(*this, &CJOBXmatrixLayer::m_sType, type);
}

void CJOBXmatrixLayerArray::SetODBmatrixLayerContext(const CString& context)
{
    SetTextOfAll(*this, &CJOBXmatrixLayer::m_sContext, context);
}

void CJOBXmatrixLayerArray::SetODBmatrixLayerRow(int first)
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXmatrixLayer* const layer = GetAt(i))
            layer->m_nRow = static_cast<int>(first + i);
}
