#pragma once

#include "JOBXCLSDLL.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

// How many features, and the area that they cover: the sum of their own areas, whether they overlap or not.
// Units:   square millimetres.
struct FeatureSum
{
    std::int64_t count = 0;
    double area = 0.0;         // of the positive ones
    std::int64_t negative = 0; // of all; they erase
    double negativeArea = 0.0;
    std::int64_t withoutArea = 0; // of all; texts, barcodes, and figures that AreaOf does not know
};

// The areas of the features of one job.
// Ownership: borrows the user symbols.
class FeatureAreas
{
public:
    explicit FeatureAreas(const CJOBXSpecialSymbolArray& symbols);

    // Of a pad: the area of its symbol, resized; that of a user symbol is the sum of its positive features less its
    // negative ones, and is not resized. Of a line: what a round or rectangular symbol sweeps. Of an arc with a round
    // symbol: length times width, and both ends; a full circle is a ring. Of a surface: its islands less its holes.
    // Results: square millimetres; nothing for any other feature.
    std::optional<double> AreaOf(const CJOBXlayObj& feature, const CJOBXlayer& layer);

    void Add(FeatureSum& sum, const CJOBXlayObj& feature, const CJOBXlayer& layer);

private:
    struct UserSymbol
    {
        const CJOBXlayer* layer;
        bool isMeasured = false;
        std::optional<double> area;
    };

    std::optional<double> AreaOfPad(const CJOBXlayObjPad& pad, const CJOBXlayer& layer);
    std::optional<double> AreaOfUserSymbol(UserSymbol& symbol);

    std::unordered_map<std::string, UserSymbol> m_symbols; // by name in lower case
    int m_depth = 0;                                       // of the symbols that are being measured
};
