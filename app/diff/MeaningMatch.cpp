#include "diff/MeaningMatch.h"

#include <cmath>
#include <cstring>
#include <unordered_map>

namespace
{
constexpr double kSteps = 1e6; // nanometres

bool AreNear(const Meaning& a, const Meaning& b, double tolerance)
{
    return a.words == b.words && a.numbers.size() == b.numbers.size() &&
           std::equal(a.numbers.begin(), a.numbers.end(), b.numbers.begin(),
                      [&](double x, double y) { return ::AreNear(x, y, tolerance); });
}

double FirstNumber(const Meaning& meaning)
{
    return meaning.numbers.empty() || std::isnan(meaning.numbers.front()) ? 0.0 : meaning.numbers.front();
}

class Matcher
{
public:
    Matcher(const std::vector<Meaning>& a, const std::vector<Meaning>& b) : m_a(a), m_b(b)
    {
        m_match.a.assign(a.size(), -1);
        m_match.b.assign(b.size(), -1);
    }

    // `withIDs`: only those with the same unique number.
    void PairEqual(bool withIDs)
    {
        const auto keyOf = [&](const Meaning& meaning)
        { return withIDs ? KeyOf(meaning) + std::to_string(meaning.id) : KeyOf(meaning); };
        std::unordered_map<std::string, std::vector<std::size_t>> waiting; // the first at the end
        for (std::size_t i = m_b.size(); i-- > 0;)
            if (m_match.b[i] < 0)
                waiting[keyOf(m_b[i])].push_back(i);
        for (std::size_t i = 0; i < m_a.size(); ++i)
        {
            const auto found = m_match.a[i] < 0 ? waiting.find(keyOf(m_a[i])) : waiting.end();
            if (found == waiting.end() || found->second.empty())
                continue;
            Pair(i, found->second.back());
            found->second.pop_back();
        }
    }

    // Among the records that are left.
    void PairNear(double tolerance)
    {
        std::unordered_map<std::string, std::vector<std::size_t>> waiting; // by words, sorted by the first number
        for (std::size_t i = 0; i < m_b.size(); ++i)
            if (m_match.b[i] < 0)
                waiting[m_b[i].words].push_back(i);
        const auto isBefore = [&](std::size_t i, std::size_t k) { return FirstNumber(m_b[i]) < FirstNumber(m_b[k]); };
        for (auto& [words, records] : waiting)
            std::stable_sort(records.begin(), records.end(), isBefore);
        for (std::size_t i = 0; i < m_a.size(); ++i)
            if (const auto found = waiting.find(m_a[i].words); m_match.a[i] < 0 && found != waiting.end())
                PairWithNear(i, found->second, tolerance);
    }

    MeaningMatch Take() { return std::move(m_match); }

private:
    void Pair(std::size_t a, std::size_t b)
    {
        m_match.a[a] = m_next;
        m_match.b[b] = m_next++;
    }

    void PairWithNear(std::size_t a, const std::vector<std::size_t>& records, double tolerance)
    {
        const double first = FirstNumber(m_a[a]);
        auto at = std::lower_bound(records.begin(), records.end(), first - tolerance,
                                   [&](std::size_t i, double number) { return FirstNumber(m_b[i]) < number; });
        for (; at != records.end() && FirstNumber(m_b[*at]) <= first + tolerance; ++at)
            if (m_match.b[*at] < 0 && AreNear(m_a[a], m_b[*at], tolerance))
            {
                Pair(a, *at);
                return;
            }
    }

    const std::vector<Meaning>& m_a;
    const std::vector<Meaning>& m_b;
    MeaningMatch m_match;
    std::int64_t m_next = 0;
};
} // namespace

std::string KeyOf(const Meaning& meaning)
{
    std::string key = meaning.words;
    for (const double number : meaning.numbers)
    {
        const double rounded = std::round(number * kSteps) + 0.0; // no negative zero
        char bytes[sizeof rounded];
        std::memcpy(bytes, &rounded, sizeof rounded);
        key.append(bytes, sizeof rounded);
    }
    return key;
}

bool AreNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance || a == b || (std::isnan(a) && std::isnan(b));
}

MeaningMatch MatchMeanings(const std::vector<Meaning>& a, const std::vector<Meaning>& b, double tolerance)
{
    Matcher matcher(a, b);
    matcher.PairEqual(true);
    matcher.PairEqual(false);
    matcher.PairNear(tolerance);
    return matcher.Take();
}

MeaningMatch MatchEqualMeanings(const std::vector<Meaning>& a, const std::vector<Meaning>& b)
{
    Matcher matcher(a, b);
    matcher.PairEqual(true);
    matcher.PairEqual(false);
    return matcher.Take();
}
