#include "diff/MeaningMatch.h"

#include <algorithm>
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

// Space in the first numbers of records, in cells: a record near another is in its cell or in one beside it.
class Cells
{
public:
    explicit Cells(double tolerance) : m_tolerance(tolerance), m_size(std::max(4.0 * tolerance, 1.0 / kSteps)) {}

    std::string CellOf(const Meaning& meaning) const
    {
        std::string key = meaning.words;
        for (std::size_t i = 0; i < CountOf(meaning); ++i)
            Append(key, CellOf(meaning.numbers[i]));
        return key;
    }

    // All cells in which a record near this one can be.
    std::vector<std::string> CellsNear(const Meaning& meaning) const
    {
        std::vector<std::string> keys{meaning.words};
        for (std::size_t i = 0; i < CountOf(meaning); ++i)
        {
            const double number = meaning.numbers[i];
            const double low = CellOf(number - 1.5 * m_tolerance); // more than needed, because numbers are rounded
            const double high = CellOf(number + 1.5 * m_tolerance);
            const std::size_t count = keys.size();
            if (low != high)
                for (std::size_t k = 0; k < count; ++k)
                    keys.push_back(keys[k]);
            for (std::size_t k = 0; k < keys.size(); ++k)
                Append(keys[k], k < count ? low : high);
        }
        return keys;
    }

private:
    static constexpr std::size_t kMostNumbers = 4;

    static std::size_t CountOf(const Meaning& meaning) { return std::min(meaning.numbers.size(), kMostNumbers); }

    double CellOf(double number) const { return std::isnan(number) ? 0.0 : std::floor(number / m_size) + 0.0; }

    static void Append(std::string& key, double cell)
    {
        char bytes[sizeof cell];
        std::memcpy(bytes, &cell, sizeof cell);
        key.append(bytes, sizeof cell);
    }

    double m_tolerance;
    double m_size;
};

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
        const Cells cells(tolerance);
        std::unordered_map<std::string, std::vector<std::size_t>> waiting; // by cell, the first at the end
        for (std::size_t i = m_b.size(); i-- > 0;)
            if (m_match.b[i] < 0)
                waiting[cells.CellOf(m_b[i])].push_back(i);
        for (std::size_t i = 0; i < m_a.size(); ++i)
            if (m_match.a[i] < 0)
                for (const std::string& cell : cells.CellsNear(m_a[i]))
                    if (const auto found = waiting.find(cell);
                        found != waiting.end() && PairWithNear(i, found->second, tolerance))
                        break;
    }

    MeaningMatch Take() { return std::move(m_match); }

private:
    void Pair(std::size_t a, std::size_t b)
    {
        m_match.a[a] = m_next;
        m_match.b[b] = m_next++;
    }

    // Whether one of these records is near.
    bool PairWithNear(std::size_t a, std::vector<std::size_t>& records, double tolerance)
    {
        const auto near = std::find_if(records.rbegin(), records.rend(),
                                       [&](std::size_t b) { return AreNear(m_a[a], m_b[b], tolerance); });
        if (near == records.rend())
            return false;
        Pair(a, *near);
        records.erase(std::next(near).base());
        return true;
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
