#include "change/MatrixPlaces.h"

#include "foundation/framework/AsciiText.h"
#include "job/CJOBXmatrixLayer.h"

#include <algorithm>

namespace
{
bool IsCopperLayer(const CJOBXmatrixLayer& layer)
{
    for (const std::string_view type : {"SIGNAL", "POWER_GROUND", "MIXED"})
        if (AsciiEqualNoCase(layer.m_sType.View(), type))
            return true;
    return false;
}

// The copper layers between the ends of a span, both included, in the order of their rows and without the unwanted.
std::vector<const CJOBXmatrixLayer*> CopperLeft(const CJOBXmatrixLayerArray& layers, const CJOBXmatrixLayer& span,
                                                const std::function<bool(const CString&)>& isUnwanted)
{
    const CJOBXmatrixLayer* const start = layers.GetMatrixLayer(span.m_sStartName);
    const CJOBXmatrixLayer* const end = layers.GetMatrixLayer(span.m_sEndName);
    std::vector<const CJOBXmatrixLayer*> left;
    if (start == nullptr || end == nullptr)
        return left;
    const auto [first, last] = std::minmax(start->m_nRow, end->m_nRow);
    for (const CJOBXmatrixLayer& layer : layers.Records())
        if (layer.m_nRow >= first && layer.m_nRow <= last && IsCopperLayer(layer) && !isUnwanted(layer.m_sName))
            left.push_back(&layer);
    std::sort(left.begin(), left.end(), [](const auto* a, const auto* b) { return a->m_nRow < b->m_nRow; });
    if (start->m_nRow > end->m_nRow)
        std::reverse(left.begin(), left.end());
    return left;
}
} // namespace

void ShortenSpans(CJOBXmatrixLayerArray& layers, const std::function<bool(const CString&)>& isUnwanted)
{
    for (CJOBXmatrixLayer& span : layers.Records())
    {
        const bool losesStart = !span.m_sStartName.IsEmpty() && isUnwanted(span.m_sStartName);
        const bool losesEnd = !span.m_sEndName.IsEmpty() && isUnwanted(span.m_sEndName);
        if (!losesStart && !losesEnd)
            continue;
        const auto left = CopperLeft(layers, span, isUnwanted);
        const CString start = left.empty() ? CString() : left.front()->m_sName;
        const CString end = left.empty() ? CString() : left.back()->m_sName;
        if (losesStart || left.empty())
            span.m_sStartName = start;
        if (losesEnd || left.empty())
            span.m_sEndName = end;
    }
}
