#pragma once

#include <optional>
#include <string_view>

// The box around a standard symbol, in the unit of its name: mils or microns.
struct SymbolBox
{
    double width = 0.0;
    double height = 0.0;
    bool isRound = false;
};

// What the name of a standard symbol says, such as "rect40x20"; nothing for other names and for symbols without a size.
std::optional<SymbolBox> BoxOfSymbol(std::string_view name);
