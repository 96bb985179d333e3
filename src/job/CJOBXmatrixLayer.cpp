#include "job/CJOBXmatrixLayer.h"

#include "job/MatrixFile.h"

template class CExPtrArray<CJOBXmatrixLayer*, CJOBXmatrixLayer*>;

using namespace matrix_file;

namespace
{
void SetTextOfAll(const CJOBXmatrixLayerArray& layers, CString CJOBXmatrixLayer::*member, const CString& text)
{
    for (__int64 i = 0; i < layers.GetSize(); ++i)
        if (CJOBXmatrixLayer* const layer = layers.GetAt(i))
            layer->*member = text;
}
} // namespace

CJOBXmatrixLayer::CJOBXmatrixLayer() = default;

CJOBXmatrixLayer::~CJOBXmatrixLayer() = default;

void CJOBXmatrixLayer::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    WriteBlock(out, *this);
}

CJOBXmatrixLayerArray::CJOBXmatrixLayerArray() = default;

CJOBXmatrixLayerArray::~CJOBXmatrixLayerArray() = default;

void CJOBXmatrixLayerArray::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    WriteBlocks(out, *this);
}

int CJOBXmatrixLayerArray::IsDrillLayer(const CString& name) const
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (const CJOBXmatrixLayer* const layer = GetAt(i);
            layer != nullptr && layer->m_sType == "DRILL" && layer->m_sName.CompareNoCase(name) == 0)
            return 1;
    return 0;
}

CJOBXmatrixLayer* CJOBXmatrixLayerArray::GetMatrixLayer(const CString& name) const
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXmatrixLayer* const layer = GetAt(i); layer != nullptr && layer->m_sName.CompareNoCase(name) == 0)
            return layer;
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

void matrix_file::WriteBlock(CTextWriter& out, const CJOBXmatrixLayer& layer)
{
    out << '\n' << kLayer << " {\n";
    WriteKey(out, kRow, layer.m_nRow);
    WriteKey(out, kContext, layer.m_sContext);
    WriteKey(out, kType, layer.m_sType);
    WriteKey(out, kName, layer.m_sName);
    WriteKey(out, kPolarity, layer.m_sPolarity);
    WriteKey(out, kStartName, layer.m_sStartName);
    WriteKey(out, kEndName, layer.m_sEndName);
    WriteKey(out, kOldName, layer.m_sOldName);
    WriteKey(out, kAddType, layer.m_sAddType);
    WriteKey(out, kColor, layer.m_sColor);
    out << '}';
}

void matrix_file::WriteBlocks(CTextWriter& out, const CJOBXmatrixLayerArray& layers)
{
    for (__int64 i = 0; i < layers.GetSize(); ++i)
        if (const CJOBXmatrixLayer* const layer = layers.GetAt(i))
        {
            WriteBlock(out, *layer);
            out << '\n';
        }
}
