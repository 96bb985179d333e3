// Pairs of features of a layer of two jobs that are not equal, but nearly.
#pragma once

#include "diff/MeaningMatch.h"
#include "diff/NamedDiff.h"

#include <vector>

// The positions of both features in their lists.
struct FeaturePair
{
    std::size_t a;
    std::size_t b;
};

struct MovedPair
{
    FeaturePair pair;
    CPointD from; // in millimetres, moved by the shifts of the views
    CPointD to;
};

struct FeaturePairs
{
    std::vector<FeaturePair> otherAttributes; // the same but for their attributes
    std::vector<MovedPair> moved;             // the same but for their place
};

// Pairs features that have no partner yet. Among those that could be moved in several ways, equal unique numbers make a
// pair first, then those with the most common ways.
// Time:      n log n.
FeaturePairs PairFeatures(const std::vector<Listed<CJOBXlayObj>>& a, const FileView& viewA,
                          const std::vector<Listed<CJOBXlayObj>>& b, const FileView& viewB, const MeaningMatch& match);

// Gives each pair a number that no other has.
void AddPair(MeaningMatch& match, const FeaturePair& pair);
