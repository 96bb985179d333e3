#pragma once

#include <optional>
#include <string_view>

// The area that a standard symbol covers, in the square of the unit of its name (mils or microns): a circle, a rectangle,
// an ellipse and so on, each by its formula, without what is open in rings. `growth` makes it larger all around, by so
// much in total, as a resized pad does.
// Results: nothing for names of users' symbols, and for thermals, crosses, moires and other figures of many parts.
std::optional<double> AreaOfSymbol(std::string_view name, double growth = 0.0);

// What lines are drawn with.
struct SymbolPen
{
    double width = 0.0; // in the unit of the name
    double height = 0.0;
    bool isRound = false; // else a rectangle
};

// Of the round, square and rectangular symbols; nothing for any other.
std::optional<SymbolPen> PenOfSymbol(std::string_view name);
