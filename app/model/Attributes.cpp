#include "model/Attributes.h"

#include <charconv>
#include <cmath>
#include <string_view>

std::optional<double> NumberInText(const CString& text)
{
    const std::string_view view = text.View();
    double number = 0.0;
    const auto [rest, problem] = std::from_chars(view.data(), view.data() + view.size(), number);
    if (problem != std::errc() || rest != view.data() + view.size() || !std::isfinite(number))
        return std::nullopt;
    return number;
}
