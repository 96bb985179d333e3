#include "diff/FeaturePairs.h"

#include "features/FeatureShape.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>
#include <utility>

namespace
{
constexpr std::size_t kMostVoters = 64; // of each job in a group of like features
constexpr std::size_t kMostVotes = 1U << 18U;
constexpr std::size_t kMostWays = 8; // that are looked for in all groups

using Way = std::pair<double, double>; // from the old to the new place, in nanometres

// A feature without a partner.
struct Unpaired
{
    std::size_t position = 0; // in its list
    CPointD place;
    Meaning meaning;
};

double Nanometres(double millimetres)
{
    return std::round(millimetres * 1e6) + 0.0; // no negative zero
}

Way WayOf(const Unpaired& a, const Unpaired& b)
{
    return {Nanometres(b.place.x - a.place.x), Nanometres(b.place.y - a.place.y)};
}

// The place of a pad or text, where anything else begins.
CPointD AnchorOf(const CJOBXlayObj& feature, const CJOBXlayer& layer)
{
    const FeatureShape shape = ShapeOf(feature, layer);
    return shape.paths.empty() || shape.paths.front().empty()
               ? CPointD()
               : CPointD(shape.paths.front().front().x, shape.paths.front().front().y);
}

Meaning MeaningButAttributes(const CJOBXlayObj& feature, const FileView& view)
{
    Meaning meaning;
    jobx::ForEachShownField<CJOBXlayObj>(
        [&](auto field)
        {
            if constexpr (decltype(field)::kField.key != "properties")
                AddField<decltype(field)>(meaning, feature, view);
        });
    return meaning;
}

// What the feature says wherever it is.
Meaning MeaningButPlace(const CJOBXlayObj& feature, FileView view, const CPointD& anchor)
{
    view.shift = CPointD(-anchor.x, -anchor.y);
    Meaning meaning;
    AddMeaning(meaning, feature, view);
    return meaning;
}

template <class MeaningOf>
std::vector<Unpaired> UnpairedOf(const std::vector<Listed<CJOBXlayObj>>& features, const FileView& view,
                                 const std::vector<std::int64_t>& numbers, MeaningOf meaningOf)
{
    std::vector<Unpaired> unpaired;
    for (std::size_t i = 0; i < features.size(); ++i)
        if (numbers[i] < 0)
        {
            const CPointD anchor = AnchorOf(*features[i].record, *view.layer);
            Meaning meaning = meaningOf(*features[i].record, view, anchor);
            meaning.id = features[i].record->GetID();
            unpaired.push_back({i, CPointD(anchor.x + view.shift.x, anchor.y + view.shift.y), std::move(meaning)});
        }
    return unpaired;
}

// Pairs the features of each group of like ones in several passes.
class MovedPairing
{
public:
    MovedPairing(std::vector<Unpaired> a, std::vector<Unpaired> b) : m_a(std::move(a)), m_b(std::move(b))
    {
        const auto isBefore = [](const Unpaired& one, const Unpaired& other)
        { return std::pair(one.place.x, one.place.y) < std::pair(other.place.x, other.place.y); };
        std::stable_sort(m_a.begin(), m_a.end(), isBefore);
        std::stable_sort(m_b.begin(), m_b.end(), isBefore);
        for (std::size_t i = 0; i < m_a.size(); ++i)
            m_groups[KeyOf(m_a[i].meaning)].a.push_back(i);
        for (std::size_t i = 0; i < m_b.size(); ++i)
            if (const auto found = m_groups.find(KeyOf(m_b[i].meaning)); found != m_groups.end())
                found->second.b.push_back(i);
        m_isPairedA.resize(m_a.size());
        m_isPairedB.resize(m_b.size());
    }

    std::vector<MovedPair> Take()
    {
        PairIDs();
        for (const Way& way : CommonWays())
            PairWay(way);
        PairRest();
        std::sort(m_pairs.begin(), m_pairs.end(),
                  [](const MovedPair& one, const MovedPair& other) { return one.pair.a < other.pair.a; });
        return std::move(m_pairs);
    }

private:
    // Positions in m_a and m_b.
    struct Group
    {
        std::vector<std::size_t> a;
        std::vector<std::size_t> b;
    };

    void Pair(std::size_t a, std::size_t b)
    {
        m_isPairedA[a] = true;
        m_isPairedB[b] = true;
        m_pairs.push_back({{m_a[a].position, m_b[b].position}, m_a[a].place, m_b[b].place});
    }

    void PairIDs()
    {
        for (const auto& [key, group] : m_groups)
        {
            std::unordered_map<__int64, std::size_t> ids;
            for (const std::size_t b : group.b)
                if (m_b[b].meaning.id >= 0)
                    ids.try_emplace(m_b[b].meaning.id, b);
            for (const std::size_t a : group.a)
                if (const auto found = ids.find(m_a[a].meaning.id); found != ids.end() && !m_isPairedB[found->second])
                    Pair(a, found->second);
        }
    }

    std::vector<Way> CommonWays() const
    {
        std::map<Way, std::int64_t> votes;
        std::size_t count = 0;
        for (const auto& [key, group] : m_groups)
            for (std::size_t i = 0; i < std::min(group.a.size(), kMostVoters); ++i)
                for (std::size_t k = 0; k < std::min(group.b.size(), kMostVoters) && count < kMostVotes; ++k)
                    if (!m_isPairedA[group.a[i]] && !m_isPairedB[group.b[k]])
                        ++votes[WayOf(m_a[group.a[i]], m_b[group.b[k]])], ++count;
        std::vector<std::pair<std::int64_t, Way>> byVotes;
        byVotes.reserve(votes.size());
        for (const auto& [way, number] : votes)
            byVotes.emplace_back(-number, way);
        std::sort(byVotes.begin(), byVotes.end());
        std::vector<Way> ways;
        for (std::size_t i = 0; i < std::min(byVotes.size(), kMostWays); ++i)
            ways.push_back(byVotes[i].second);
        return ways;
    }

    void PairWay(const Way& way)
    {
        for (const auto& [key, group] : m_groups)
        {
            std::map<Way, std::vector<std::size_t>> waiting; // by place
            for (const std::size_t b : group.b)
                if (!m_isPairedB[b])
                    waiting[{Nanometres(m_b[b].place.x), Nanometres(m_b[b].place.y)}].push_back(b);
            for (const std::size_t a : group.a)
            {
                const auto found = waiting.find(
                    {Nanometres(m_a[a].place.x + way.first / 1e6), Nanometres(m_a[a].place.y + way.second / 1e6)});
                if (m_isPairedA[a] || found == waiting.end() || found->second.empty())
                    continue;
                Pair(a, found->second.back());
                found->second.pop_back();
            }
        }
    }

    void PairRest()
    {
        for (const auto& [key, group] : m_groups)
        {
            auto b = group.b.begin();
            for (const std::size_t a : group.a)
            {
                b = std::find_if(b, group.b.end(), [&](std::size_t i) { return !m_isPairedB[i]; });
                if (b == group.b.end())
                    break;
                if (!m_isPairedA[a])
                    Pair(a, *b);
            }
        }
    }

    std::vector<Unpaired> m_a; // sorted by place, like m_b
    std::vector<Unpaired> m_b;
    std::vector<bool> m_isPairedA;
    std::vector<bool> m_isPairedB;
    std::map<std::string, Group> m_groups; // by everything but the position
    std::vector<MovedPair> m_pairs;
};

std::vector<Meaning> MeaningsIn(const std::vector<Unpaired>& unpaired)
{
    std::vector<Meaning> meanings;
    meanings.reserve(unpaired.size());
    for (const Unpaired& each : unpaired)
        meanings.push_back(each.meaning);
    return meanings;
}

std::vector<FeaturePair> PairsIn(const MeaningMatch& match, const std::vector<Unpaired>& a,
                                 const std::vector<Unpaired>& b)
{
    std::unordered_map<std::int64_t, std::size_t> positions; // in the second list, by number
    for (std::size_t i = 0; i < b.size(); ++i)
        positions[match.b[i]] = b[i].position;
    std::vector<FeaturePair> pairs;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (match.a[i] >= 0)
            pairs.push_back({a[i].position, positions.at(match.a[i])});
    return pairs;
}
} // namespace

FeaturePairs PairFeatures(const std::vector<Listed<CJOBXlayObj>>& a, const FileView& viewA,
                          const std::vector<Listed<CJOBXlayObj>>& b, const FileView& viewB, const MeaningMatch& match)
{
    FeaturePairs pairs;
    const auto inPlace = [](const CJOBXlayObj& feature, const FileView& view, const CPointD&)
    { return MeaningButAttributes(feature, view); };
    const std::vector<Unpaired> inPlaceA = UnpairedOf(a, viewA, match.a, inPlace);
    const std::vector<Unpaired> inPlaceB = UnpairedOf(b, viewB, match.b, inPlace);
    pairs.otherAttributes = PairsIn(MatchEqualMeanings(MeaningsIn(inPlaceA), MeaningsIn(inPlaceB)), inPlaceA, inPlaceB);
    MeaningMatch rest = match;
    for (const FeaturePair& pair : pairs.otherAttributes)
        AddPair(rest, pair);
    pairs.moved =
        MovedPairing(UnpairedOf(a, viewA, rest.a, MeaningButPlace), UnpairedOf(b, viewB, rest.b, MeaningButPlace))
            .Take();
    return pairs;
}

void AddPair(MeaningMatch& match, const FeaturePair& pair)
{
    // The numbers of equal records are less than that of all records.
    const auto number = static_cast<std::int64_t>(match.b.size() + pair.b);
    match.a[pair.a] = number;
    match.b[pair.b] = number;
}
