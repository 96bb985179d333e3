#pragma once

#include "JOBXCLSDLL.h"
#include "model/ShownUnit.h"

#include <cstdint>
#include <memory>
#include <unordered_set>
#include <vector>

// One step placed once, somewhere in a panel.
struct Placement
{
    std::unique_ptr<CODBstepRepeat> entry; // its position in the panel; its count is 1
    int level = 1;                         // 1 in the panel itself, 2 in a step repeated by the panel, and so on
    std::int64_t parent = -1;              // index of the enclosing placement in the list; -1 if there is none
};

struct Placements
{
    std::vector<Placement> all;               // each before those inside it; by column, then row, then entry of a table
    std::unordered_set<CString> unknownSteps; // placed, but not in the job
};

// More placements than this are refused, because a wrong count in a file could ask for any number.
inline constexpr std::int64_t kMaxPlacements = 100000;

// Follows the step-and-repeat tables of a job down to the last repeated step. Steps are found by name, ignoring the
// case of ASCII letters; the first of a name counts. Any depth of nesting works, because nothing is recursive.
// Ownership: borrows the job, which must outlive it and not change.
class PlacementFinder
{
public:
    // All lengths found are in `unit`.
    PlacementFinder(const CJOBX& job, const ShownUnit& unit);
    PlacementFinder(const PlacementFinder&) = delete;
    PlacementFinder& operator=(const PlacementFinder&) = delete;
    ~PlacementFinder();

    // The placements in the step, including nested ones.
    // Results: raises ExitError, and places nothing, if a step repeats itself, directly or through others, or if there
    //          are more than `room` placements.
    Placements Find(const CJOBXstepObj& step, std::int64_t room = kMaxPlacements);

private:
    struct Parts;

    std::unique_ptr<Parts> m_pParts;
};
