// What a person asks first about a board.
#pragma once

#include "info/Extents.h"
#include "model/LayerRoles.h"

#include "JOBXCLSDLL.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

struct BoardSize
{
    double width = 0.0; // in millimetres, as is the height
    double height = 0.0;
};

struct CopperLayer
{
    CString name;
    std::optional<double> weight;   // as the layer's attribute list has it
    JOBXunit unit = JOBXunit::Inch; // of that list: the weight is in ounces per square foot, or in microns
};

// The components on one side of the board.
struct SideFacts
{
    std::int64_t components = 0;
    std::int64_t surfacePins = 0; // pads on the surface, by the pins of the packages
    std::int64_t throughPins = 0;
    std::int64_t otherPins = 0; // neither, or of an unknown package
};

// The holes of one drill layer.
struct DrillLayer
{
    CString name;
    CString start; // as the matrix names them; empty if the holes go through
    CString end;
    std::optional<HoleSpan> span;
    std::int64_t holes = 0;
    std::int64_t slots = 0; // lines and arcs
};

struct DrillFacts
{
    std::vector<DrillLayer> layers;       // in the order of the matrix
    std::map<double, std::int64_t> sizes; // the number of holes and slots of each diameter in millimetres
    std::int64_t holes = 0;
    std::int64_t slots = 0;
    std::int64_t vias = 0; // of both, by the attribute ".drill", else by the tools; the rest is unknown
    std::int64_t plated = 0;
    std::int64_t nonPlated = 0;
};

struct SmallestLine
{
    double width = 0.0; // in millimetres
    CString layer;      // the first copper layer that has it
};

// A step that repeats others.
struct PanelFacts
{
    CString name;
    std::optional<BoardSize> size;
    std::vector<std::pair<CString, std::int64_t>> repeats; // each repeated step once, with the number of its copies
};

// Facts that the job does not give are empty.
// Ownership: borrows the job, which must outlive it.
struct BoardFacts
{
    explicit BoardFacts(const CJOBX& job);

    // The step that the facts are about: among those that repeat no other, or all if there are none, the one with the
    // most components, then with the most features. Null if no step was read.
    const CJOBXstepObj* step = nullptr;
    std::optional<BoardSize> size;   // of the profile
    std::optional<double> thickness; // in millimetres
    std::vector<CopperLayer> copper; // from top to bottom
    std::array<SideFacts, 2> sides;  // by BoardSide
    std::int64_t nets = 0;           // without "$NONE$", which is for pins without a net
    std::int64_t netPins = 0;
    DrillFacts drills;
    std::optional<SmallestLine> smallestLine; // of the copper layers
    std::vector<PanelFacts> panels;
    std::vector<std::pair<CString, std::optional<BoardSize>>> otherSteps; // neither the board nor a panel
};

// The size of a step's profile.
std::optional<BoardSize> SizeOf(const CJOBXstepObj& step);
