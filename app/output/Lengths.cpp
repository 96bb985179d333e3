#include "output/Lengths.h"

#include <fmt/core.h>

namespace
{
constexpr double kInch = 25.4;
constexpr int kMillimetreDecimals = 3; // a micron
constexpr int kInchDecimals = 4;       // a tenth of a mil
constexpr int kMilDecimals = 2;

std::string Millimetres(double millimetres)
{
    return Rounded(millimetres, kMillimetreDecimals);
}

std::string Inches(double millimetres)
{
    return Rounded(millimetres / kInch, kInchDecimals);
}
} // namespace

std::string Rounded(double number, int decimals)
{
    std::string text = fmt::format("{:.{}f}", number, decimals);
    if (text.find('.') != std::string::npos)
    {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

std::string BoardLength(double millimetres)
{
    return fmt::format("{} mm ({} inch)", Millimetres(millimetres), Inches(millimetres));
}

std::string BoardArea(double width, double height)
{
    return fmt::format("{} x {} mm ({} x {} inch)", Millimetres(width), Millimetres(height), Inches(width),
                       Inches(height));
}

std::string SmallLength(double millimetres)
{
    return fmt::format("{} mm ({} mil)", Millimetres(millimetres), Rounded(millimetres / kInch * 1000.0, kMilDecimals));
}

std::string AreaText(double area)
{
    return fmt::format("{} sq mm", Rounded(area, kMillimetreDecimals));
}
