#include "model/SymbolBox.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace
{
// How many of the numbers in a name are sizes of the box.
struct SymbolForm
{
    std::string_view prefix;
    int sizes;
    bool isRound = false;
};
constexpr SymbolForm kSymbolForms[] = {
    {"r", 1, true},       {"s", 1},         {"rect", 2},       {"oval", 2},    {"oval_h", 2},   {"di", 2},
    {"oct", 2},           {"hex_l", 2},     {"hex_s", 2},      {"donut_s", 1}, {"donut_sr", 1}, {"donut_rc", 2},
    {"donut_o", 2},       {"bfr", 1, true}, {"bfs", 1},        {"tri", 2},     {"el", 2},       {"thr", 1, true},
    {"ths", 1, true},     {"s_ths", 1},     {"s_tho", 1},      {"s_thr", 1},   {"sr_ths", 1},   {"rc_ths", 2},
    {"rc_tho", 2},        {"o_ths", 2},     {"oblong_ths", 2}, {"hplate", 2},  {"rhplate", 2},  {"fhplate", 2},
    {"radhplate", 2},     {"dshape", 2},    {"cross", 2},      {"dogbone", 2}, {"dpack", 2},    {"hole", 1, true},
    {"donut_r", 1, true},
};

// Takes a number and the "x" behind it.
std::optional<double> TakeSize(std::string_view& text)
{
    double number = 0.0;
    const auto [rest, problem] =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (problem != std::errc() || number < 0.0)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
    if (text.starts_with('x'))
        text.remove_prefix(1);
    return number;
}
} // namespace

std::optional<SymbolBox> BoxOfSymbol(std::string_view name)
{
    const std::string_view prefix = name.substr(0, name.find_first_of("0123456789"));
    const auto form = std::find_if(std::begin(kSymbolForms), std::end(kSymbolForms),
                                   [&](const SymbolForm& each) { return each.prefix == prefix; });
    std::string_view rest = name.substr(prefix.size());
    // A name that goes on with other letters, such as "r10_tp", is a user's.
    if (form == std::end(kSymbolForms) || rest.find_first_not_of("0123456789.xrscpnv") != std::string_view::npos)
        return std::nullopt;
    const std::optional<double> width = TakeSize(rest);
    const std::optional<double> height = form->sizes == 1 ? width : TakeSize(rest);
    if (!width || !height)
        return std::nullopt;
    return SymbolBox{*width, *height, form->isRound};
}
