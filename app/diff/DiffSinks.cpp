#include "diff/DiffSinks.h"

#include <charconv>
#include <cmath>
#include <optional>

namespace
{
std::optional<double> NumberOf(std::string_view text)
{
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

bool AreEqualParameters(const CString& a, const CString& b, double tolerance)
{
    if (a.View() == b.View())
        return true;
    if (!(tolerance > 0.0))
        return false;
    const std::optional<double> numberA = NumberOf(a.View());
    const std::optional<double> numberB = NumberOf(b.View());
    return numberA && numberB && AreEqualLengths(*numberA, *numberB, tolerance);
}
} // namespace

bool AreEqualLengths(double a, double b, double tolerance)
{
    return AreEqualReals(a, b) || std::abs(a - b) <= tolerance;
}

bool AreEqualReals(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool AreEqualTexts(const CStringArray& a, const CStringArray& b)
{
    return AreEqualParameters(a, b, 0.0);
}

bool AreEqualParameters(const CStringArray& a, const CStringArray& b, double tolerance)
{
    if (a.GetSize() != b.GetSize())
        return false;
    for (INT_PTR i = 0; i < a.GetSize(); ++i)
        if (!AreEqualParameters(a[i], b[i], tolerance))
            return false;
    return true;
}

std::string JoinedWords(const CStringArray& texts)
{
    std::string words;
    for (INT_PTR i = 0; i < texts.GetSize(); ++i)
    {
        words += i == 0 ? "" : " ";
        words += texts[i].View();
    }
    return words;
}
