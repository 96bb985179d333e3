// What the rows of a matrix say about layers.
#pragma once

#include "JOBXCLSDLL.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

enum class BoardSide : std::uint8_t
{
    Top,
    Bottom,
};

std::string_view WordFor(BoardSide side);

// The side of a components file: bottom if its layer's row is below the first copper layer, else top. Without such rows
// the end of the layer's name decides, and nothing if that says neither.
std::optional<BoardSide> SideOf(const CJOBXcomponents& file, const CJOBXmatrix& matrix);

bool IsDrill(const CJOBXmatrixLayer& row);

// The copper layers of the board, in the order of the matrix, which is from top to bottom; borrowed.
std::vector<const CJOBXmatrixLayer*> CopperLayers(const CJOBXmatrix& matrix);

// The kind of a hole by the copper layers at which it starts and ends.
enum class HoleSpan : std::uint8_t
{
    Through,
    Blind,  // reaches one side of the board
    Buried, // reaches none
};

std::string_view WordFor(HoleSpan span);

// The span of a drill layer. A layer without start and end goes through the board.
// Results:   nothing if it names a layer that is not a copper layer of the board.
std::optional<HoleSpan> SpanOf(const CJOBXmatrixLayer& drill, const std::vector<const CJOBXmatrixLayer*>& copper);
