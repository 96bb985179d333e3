#include "diff/DiffCollector.h"

#include "output/Text.h"

std::string ShortenedText(std::string_view text)
{
    constexpr std::size_t kShownBytes = 200;
    return text.size() <= kShownBytes ? std::string(text) : std::string(text.substr(0, kShownBytes)) + "...";
}

namespace
{
DiffValue Kept(const DiffValueView& value)
{
    if (const auto* const text = std::get_if<std::string_view>(&value))
        return ShortenedText(*text);
    if (const auto* const number = std::get_if<std::int64_t>(&value))
        return *number;
    if (const auto* const real = std::get_if<double>(&value))
        return *real;
    if (const auto* const point = std::get_if<CPointD>(&value))
        return *point;
    return {};
}
} // namespace

void DiffCollector::Add(std::string_view kind, DiffChange change, std::string_view field, const DiffValueView& a,
                        const DiffValueView& b)
{
    ++m_nDifferences;
    const auto [position, isNew] = m_positions.try_emplace(GroupKey(m_place, kind, change, field), m_groups.size());
    if (isNew)
    {
        m_groups.push_back({m_place, kind, change, field, 0, {}});
        ++m_placesWithDifferences[m_place];
    }
    DiffGroup& group = m_groups[position->second];
    ++group.count;
    if (group.examples.size() < kExamples)
        group.examples.push_back({Path(), Kept(a), Kept(b)});
}

std::string DiffCollector::Path() const
{
    std::string path = m_place;
    for (const Segment& segment : m_segments)
    {
        const RecordPlace& place = segment.place;
        path += " / ";
        path += place.word;
        path += ' ';
        path += place.name.empty() ? std::to_string(segment.index) : Printable(ShortenedText(place.name));
        if (!place.mark.empty())
        {
            path += " (";
            path += Printable(ShortenedText(place.mark));
            path += ')';
        }
    }
    return path;
}
