#include "change/FlippedLayers.h"

#include "foundation/framework/AsciiText.h"
#include "job/CJOBXmatrix.h"

#include <algorithm>
#include <utility>

namespace
{
bool IsCopper(const std::string& type)
{
    return type == "signal" || type == "power_ground" || type == "mixed";
}

bool HasSpan(const std::string& type)
{
    return type == "drill" || type == "rout";
}
} // namespace

CFlippedLayers::CFlippedLayers(const CJOBXmatrix& matrix)
{
    std::vector<std::pair<int, __int64>> rows; // with their places in the file
    for (__int64 i = 0; i < matrix.m_arrLayers.GetSize(); ++i)
        if (const CJOBXmatrixLayer* const layer = matrix.m_arrLayers.GetAt(i))
            rows.emplace_back(layer->m_nRow, i);
    std::sort(rows.begin(), rows.end());
    m_others = {{"comp_+_top", "comp_+_bot"}, {"comp_+_bot", "comp_+_top"}};
    std::vector<Row> board;
    for (const auto& [number, place] : rows)
    {
        const CJOBXmatrixLayer& layer = *matrix.m_arrLayers.GetAt(place);
        if (AsciiEqualNoCase(layer.m_sContext.View(), "BOARD") && !AsciiEqualNoCase(layer.m_sType.View(), "DOCUMENT"))
            board.push_back({Lower(layer.m_sName.View()), Lower(layer.m_sType.View()), Lower(layer.m_sStartName.View()),
                             Lower(layer.m_sEndName.View())});
    }
    PairAll(board);
}

std::optional<std::string> CFlippedLayers::Of(std::string_view name) const
{
    const std::string lower = Lower(name);
    const auto found = m_others.find(lower);
    return found != m_others.end() ? found->second : std::optional(lower);
}

std::string CFlippedLayers::Lower(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
    return lower;
}

void CFlippedLayers::PairAll(const std::vector<Row>& board)
{
    const auto isCopper = [](const Row& row) { return IsCopper(row.type); };
    const auto first = std::find_if(board.begin(), board.end(), isCopper);
    const auto last = std::find_if(board.rbegin(), board.rend(), isCopper).base(); // behind the last one
    // By type, from the outermost copper outwards, and between the copper layers from the top.
    std::map<std::string, std::vector<std::string>> above;
    std::map<std::string, std::vector<std::string>> below;
    std::map<std::string, std::vector<std::string>> between;
    for (auto row = board.begin(); row != board.end(); ++row)
    {
        if (HasSpan(row->type) || row->type == "component")
            continue;
        m_others[row->name] = std::nullopt;
        if (row < first)
            above[row->type].insert(above[row->type].begin(), row->name);
        else if (row >= last)
            below[row->type].push_back(row->name);
        else
            between[IsCopper(row->type) ? "copper" : row->type].push_back(row->name);
    }
    for (const auto& [type, names] : above)
        Pair(names, below[type]);
    for (const auto& [type, names] : between)
        Pair(names, {names.rbegin(), names.rend()});
    for (const Row& row : board)
        if (HasSpan(row.type))
            PairSpan(row, board);
}

void CFlippedLayers::Pair(const std::vector<std::string>& one, const std::vector<std::string>& other)
{
    for (std::size_t i = 0; i < std::min(one.size(), other.size()); ++i)
    {
        m_others[one[i]] = other[i];
        m_others[other[i]] = one[i];
    }
}

void CFlippedLayers::PairSpan(const Row& row, const std::vector<Row>& board)
{
    const auto across = [this](const std::string& name) { return name.empty() ? name : Of(name).value_or(""); };
    const auto isSpan = [&](const Row& other)
    { return other.type == row.type && other.start == across(row.end) && other.end == across(row.start); };
    m_others[row.name] = std::nullopt;
    if (isSpan(row) || (row.start.empty() && row.end.empty()))
        m_others[row.name] = row.name;
    else if (const auto found = std::find_if(board.begin(), board.end(), isSpan); found != board.end())
        m_others[row.name] = found->name;
}
