#include "model/LayerRoles.h"

#include <algorithm>
#include <array>

namespace
{
constexpr std::array<std::string_view, 2> kSideWords = {"top", "bottom"};
constexpr std::array<std::string_view, 3> kSpanWords = {"through", "blind", "buried"};
constexpr std::array<std::string_view, 3> kCopperTypes = {"SIGNAL", "POWER_GROUND", "MIXED"};

bool Is(const CString& text, std::string_view word)
{
    return text.CompareNoCase(CString(word)) == 0;
}

bool IsCopper(const CJOBXmatrixLayer& row)
{
    return Is(row.m_sContext, "BOARD") && std::any_of(kCopperTypes.begin(), kCopperTypes.end(),
                                                      [&](std::string_view type) { return Is(row.m_sType, type); });
}

// The place of the layer of that name among the copper layers from the top; their number if it is none of them.
std::size_t DepthOf(const CString& name, const std::vector<const CJOBXmatrixLayer*>& copper)
{
    const auto found =
        std::find_if(copper.begin(), copper.end(),
                     [&](const CJOBXmatrixLayer* layer) { return layer->m_sName.CompareNoCase(name) == 0; });
    return static_cast<std::size_t>(found - copper.begin());
}
} // namespace

std::string_view WordFor(BoardSide side)
{
    return kSideWords.at(static_cast<std::size_t>(side));
}

std::string_view WordFor(HoleSpan span)
{
    return kSpanWords.at(static_cast<std::size_t>(span));
}

std::optional<BoardSide> SideOf(const CJOBXcomponents& file, const CJOBXmatrix& matrix)
{
    bool isBelowCopper = false;
    for (const CJOBXmatrixLayer& row : matrix.m_arrLayers.Records())
    {
        isBelowCopper = isBelowCopper || IsCopper(row);
        if (row.m_sName.CompareNoCase(file.m_sLayerName) == 0 && !CopperLayers(matrix).empty())
            return isBelowCopper ? BoardSide::Bottom : BoardSide::Top;
    }
    if (file.m_sLayerName.Right(3).CompareNoCase("bot") == 0)
        return BoardSide::Bottom;
    if (file.m_sLayerName.Right(3).CompareNoCase("top") == 0)
        return BoardSide::Top;
    return std::nullopt;
}

bool IsDrill(const CJOBXmatrixLayer& row)
{
    return Is(row.m_sType, "DRILL") && Is(row.m_sContext, "BOARD");
}

std::vector<const CJOBXmatrixLayer*> CopperLayers(const CJOBXmatrix& matrix)
{
    std::vector<const CJOBXmatrixLayer*> layers;
    for (const CJOBXmatrixLayer& row : matrix.m_arrLayers.Records())
        if (IsCopper(row))
            layers.push_back(&row);
    return layers;
}

std::optional<HoleSpan> SpanOf(const CJOBXmatrixLayer& drill, const std::vector<const CJOBXmatrixLayer*>& copper)
{
    if (drill.m_sStartName.IsEmpty() && drill.m_sEndName.IsEmpty())
        return HoleSpan::Through;
    const std::size_t start = DepthOf(drill.m_sStartName, copper);
    const std::size_t end = DepthOf(drill.m_sEndName, copper);
    if (start == copper.size() || end == copper.size())
        return std::nullopt;
    const bool reachesTop = std::min(start, end) == 0;
    const bool reachesBottom = std::max(start, end) == copper.size() - 1;
    if (reachesTop && reachesBottom)
        return HoleSpan::Through;
    return reachesTop || reachesBottom ? HoleSpan::Blind : HoleSpan::Buried;
}
