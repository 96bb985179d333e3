#include "model/SymbolArea.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <numbers>

namespace
{
constexpr double kPi = std::numbers::pi;
constexpr int kAllCorners = 4;

// Corners that are rounded or cut.
struct Corners
{
    double radius = 0.0;
    int count = 0;
    bool areCut = false;
};

struct Sizes
{
    std::array<double, 3> of{};
    int count = 0;
    Corners corners;
};

double Circle(double diameter)
{
    return kPi / 4.0 * diameter * diameter;
}

double Obround(double width, double height)
{
    const double round = std::min(width, height);
    return (std::max(width, height) - round) * round + Circle(round);
}

double Rectangle(double width, double height, const Corners& corners)
{
    const double radius = std::clamp(corners.radius, 0.0, std::min(width, height) / 2.0);
    const double lost = (corners.areCut ? 0.5 : 1.0 - kPi / 4.0) * radius * radius; // of one corner
    return width * height - corners.count * lost;
}

// The outside less the inside, whose corners have the same centres.
double Frame(double width, double height, double line, const Corners& corners)
{
    Corners inside = corners;
    inside.radius = std::max(corners.radius - line, 0.0);
    const double w = std::max(width - 2.0 * line, 0.0);
    const double h = std::max(height - 2.0 * line, 0.0);
    return Rectangle(width, height, corners) - Rectangle(w, h, inside);
}

// The sizes of a symbol, and how each follows when it grows: "+", "-" or "0".
struct AreaForm
{
    std::string_view prefix;
    std::string_view growing;
    bool mayHaveCorners;
    double (*area)(const Sizes& sizes);
};

constexpr AreaForm kAreaForms[] = {
    {"r", "+", false, [](const Sizes& s) { return Circle(s.of[0]); }},
    {"s", "+", false, [](const Sizes& s) { return s.of[0] * s.of[0]; }},
    {"rect", "++", true, [](const Sizes& s) { return Rectangle(s.of[0], s.of[1], s.corners); }},
    {"oval", "++", false, [](const Sizes& s) { return Obround(s.of[0], s.of[1]); }},
    // Round at one end: two corners with half the height as radius.
    {"oval_h", "++", false,
     [](const Sizes& s) {
         return Rectangle(s.of[0], s.of[1], {s.of[1] / 2.0, 2, false});
     }},
    {"di", "++", false, [](const Sizes& s) { return s.of[0] * s.of[1] / 2.0; }},
    {"oct", "++0", false, [](const Sizes& s) { return s.of[0] * s.of[1] - 2.0 * s.of[2] * s.of[2]; }},
    {"hex_l", "++0", false, [](const Sizes& s) { return (s.of[0] - s.of[2]) * s.of[1]; }},
    {"hex_s", "++0", false, [](const Sizes& s) { return s.of[0] * (s.of[1] - s.of[2]); }},
    {"donut_r", "+-", false, [](const Sizes& s) { return Circle(s.of[0]) - Circle(s.of[1]); }},
    {"donut_s", "+-", true,
     [](const Sizes& s) { return Frame(s.of[0], s.of[0], (s.of[0] - s.of[1]) / 2.0, s.corners); }},
    {"donut_sr", "+-", false, [](const Sizes& s) { return s.of[0] * s.of[0] - Circle(s.of[1]); }},
    {"donut_rc", "+++", true, [](const Sizes& s) { return Frame(s.of[0], s.of[1], s.of[2], s.corners); }},
    {"donut_o", "+++", false,
     [](const Sizes& s)
     {
         return Obround(s.of[0], s.of[1]) -
                Obround(std::max(s.of[0] - 2.0 * s.of[2], 0.0), std::max(s.of[1] - 2.0 * s.of[2], 0.0));
     }},
    {"bfr", "+", false, [](const Sizes& s) { return Circle(s.of[0]) / 2.0; }},
    {"bfs", "+", false, [](const Sizes& s) { return s.of[0] * s.of[0] / 2.0; }},
    {"tri", "++", false, [](const Sizes& s) { return s.of[0] * s.of[1] / 2.0; }},
    {"el", "++", false, [](const Sizes& s) { return kPi / 4.0 * s.of[0] * s.of[1]; }},
    {"null", "0", false, [](const Sizes&) { return 0.0; }},
};

std::optional<double> TakeLength(std::string_view& text)
{
    double number = 0.0;
    const auto [rest, problem] =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (problem != std::errc() || text.starts_with('-'))
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
    return number;
}

bool Take(std::string_view& text, std::string_view beginning)
{
    if (!text.starts_with(beginning))
        return false;
    text.remove_prefix(beginning.size());
    return true;
}

// "xr5" or "xc5", and "x13" where only some corners are meant.
std::optional<Corners> TakeCorners(std::string_view& text)
{
    if (text.empty())
        return Corners();
    Corners corners{0.0, kAllCorners, text.starts_with("xc")};
    if (!Take(text, "xr") && !Take(text, "xc"))
        return std::nullopt;
    const std::optional<double> radius = TakeLength(text);
    if (!radius)
        return std::nullopt;
    corners.radius = *radius;
    if (Take(text, "x"))
    {
        const std::string_view numbers = text.substr(0, text.find_first_not_of("1234"));
        corners.count = static_cast<int>(std::min<std::size_t>(numbers.size(), kAllCorners));
        text.remove_prefix(numbers.size());
    }
    return corners;
}

// The sizes behind a prefix, if the whole name is of that form.
std::optional<Sizes> SizesIn(std::string_view text, const AreaForm& form)
{
    Sizes sizes;
    for (const char growing : form.growing)
    {
        static_cast<void>(growing);
        if (sizes.count > 0 && !Take(text, "x"))
            return std::nullopt;
        const std::optional<double> size = TakeLength(text);
        if (!size)
            return std::nullopt;
        sizes.of[static_cast<std::size_t>(sizes.count++)] = *size;
    }
    if (form.mayHaveCorners)
    {
        const std::optional<Corners> corners = TakeCorners(text);
        if (!corners)
            return std::nullopt;
        sizes.corners = *corners;
    }
    return text.empty() ? std::optional(sizes) : std::nullopt;
}

void Grow(Sizes& sizes, std::string_view growing, double growth)
{
    for (std::size_t i = 0; i < growing.size(); ++i)
        if (growing[i] != '0')
            sizes.of[i] = std::max(sizes.of[i] + (growing[i] == '+' ? growth : -growth), 0.0);
}

const AreaForm* FormOf(std::string_view name)
{
    const std::string_view prefix = name.substr(0, name.find_first_of("0123456789."));
    const auto* const form = std::find_if(std::begin(kAreaForms), std::end(kAreaForms),
                                          [&](const AreaForm& each) { return each.prefix == prefix; });
    return form == std::end(kAreaForms) ? nullptr : form;
}
} // namespace

std::optional<double> AreaOfSymbol(std::string_view name, double growth)
{
    const AreaForm* const form = FormOf(name);
    if (form == nullptr)
        return std::nullopt;
    std::optional<Sizes> sizes = SizesIn(name.substr(form->prefix.size()), *form);
    if (!sizes)
        return std::nullopt;
    Grow(*sizes, form->growing, growth);
    return std::max(form->area(*sizes), 0.0);
}

std::optional<SymbolPen> PenOfSymbol(std::string_view name)
{
    const AreaForm* const form = FormOf(name);
    if (form == nullptr || (form->prefix != "r" && form->prefix != "s" && form->prefix != "rect"))
        return std::nullopt;
    const std::optional<Sizes> sizes = SizesIn(name.substr(form->prefix.size()), *form);
    if (!sizes || sizes->corners.count > 0)
        return std::nullopt;
    return SymbolPen{sizes->of[0], form->prefix == "rect" ? sizes->of[1] : sizes->of[0], form->prefix == "r"};
}
