// Lengths for people to read.
// Units:     arguments in millimetres.
#pragma once

#include <string>

// Rounded to that many decimals, without zeros at the end.
std::string Rounded(double number, int decimals);

// "1.575 mm (0.062 inch)".
std::string BoardLength(double millimetres);
// "40.64 x 25.4 mm (1.6 x 1 inch)".
std::string BoardArea(double width, double height);
// "0.254 mm (10 mil)".
std::string SmallLength(double millimetres);
// "0.785 sq mm", of square millimetres.
std::string AreaText(double area);
