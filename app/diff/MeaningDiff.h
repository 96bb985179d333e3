#pragma once

#include "diff/DiffCollector.h"
#include "diff/JobChanges.h"
#include "reading/JobReader.h"

#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

// The parts of a job that a comparison may be limited to.
enum class DiffPart : std::uint8_t
{
    Info,
    Matrix,
    Font,
    Symbols,
    Headers, // of the steps, with their attributes
    Layers,  // with the profile and tools
    Components,
    Packages,
    Nets,
    Netlists,
    Files, // that no reader takes
};
inline constexpr std::array<std::string_view, 11> kDiffParts = {
    "info", "matrix", "font", "symbols", "headers", "layers", "components", "packages", "nets", "netlists", "files"};

struct MeaningRules
{
    double tolerance = 1e-6;   // of lengths and places in millimetres
    bool align = false;        // finds a common shift of the second job first
    std::set<DiffPart> only{}; // all if empty
    bool isQuiet = false;      // no progress line
};

// Compares what two completely read jobs say, whatever the numbering of their tables, the order of their records and
// the unit of their files. Line numbers are not compared. Steps and layers are paired by name
// ignoring letter case; components, nets, packages and pins by name; features and other records without names are equal
// or belong to one job only. Files that no reader takes are compared byte by byte.
JobChanges CompareMeanings(DiffCollector& collector, const ReadJob& a, const ReadJob& b, const std::string& pathA,
                           const std::string& pathB, const MeaningRules& rules);
