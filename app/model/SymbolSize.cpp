#include "model/SymbolSize.h"

#include <charconv>
#include <string_view>

std::optional<double> SizeOfSymbol(const CJOBXlayer& layer, int number)
{
    const CString name = layer.GetSymbolName(number);
    const std::string_view text = name.View();
    if (text.size() < 2 || (text[0] != 'r' && text[0] != 's'))
        return std::nullopt;
    double size = 0.0;
    const char* const end = text.data() + text.size();
    const auto [rest, problem] = std::from_chars(text.data() + 1, end, size, std::chars_format::fixed);
    if (problem != std::errc() || rest != end || !(size > 0.0))
        return std::nullopt;
    return size * layer.dGetSymbolFactorToMM(number);
}
