// Where the steps lie that a step repeats, directly and through others.
#pragma once

#include "change/CPlacement.h"

#include <string>
#include <vector>

class CJOBX;
class CJOBXstepObj;

struct CPlacedStep
{
    const CJOBXstepObj* step;
    CPlacement placement;
    int number; // counts all placements from 1; a placement comes before those in it
};

struct CStepPlacements
{
    std::vector<CPlacedStep> all;
    std::string refusal; // why they cannot be found; "" if they were
};

// The first step of that name, ignoring letter case; null if there is none.
CJOBXstepObj* FindStep(const CJOBX& job, std::string_view name);

// The placements in a step: entry by entry, column by column, then row by row. Refused if a step repeats itself, if one is
// not in the job, and if there are more than 100000.
CStepPlacements FindPlacements(const CJOBX& job, const CJOBXstepObj& root);
