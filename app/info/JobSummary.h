// The contents of a job in numbers.
#pragma once

#include "info/Extents.h"
#include "model/SubnetCounts.h"

#include "JOBXCLSDLL.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

// The kinds of features, by their record letters.
inline constexpr std::array<char, 6> kFeatureKinds = {'L', 'P', 'A', 'T', 'B', 'S'};

struct LayerSummary
{
    CString name;
    CString units; // as the file has it
    std::int64_t symbols = 0;
    std::int64_t features = 0;
    std::array<std::int64_t, kFeatureKinds.size()> byKind{}; // in the order of kFeatureKinds
    std::int64_t contours = 0;
    CStringArray attributeNames;
    CStringArray attributeTexts;
};

struct ComponentsSummary
{
    CString layerName;
    std::int64_t components = 0;
    std::int64_t toeprints = 0;
    std::int64_t properties = 0;
    std::int64_t attributes = 0;
    CStringArray attributeNames;
    CStringArray attributeTexts;
};

struct StepSummary
{
    CString name;
    const CJOBXstephdr* header = nullptr; // the job's
    LayerSummary profile;
    Extents extents;                  // of the profile
    std::vector<LayerSummary> layers; // in the order of the matrix, then the others
    std::vector<ComponentsSummary> components;
    CString edaHeader;
    CStringArray edaLayers;
    std::int64_t nets = 0;
    SubnetCounts subnets;
    std::int64_t packages = 0;
    std::int64_t pins = 0;
    std::int64_t netlistNets = 0;
    std::int64_t netlistPoints = 0;
};

// Ownership: borrows the job, which must outlive it.
struct JobSummary
{
    explicit JobSummary(const CJOBX& job);

    const CJOBX& job;
    std::vector<StepSummary> steps;
    std::vector<LayerSummary> symbols; // each named by the last component of its path, sorted by path
    std::int64_t strokes = 0;          // of all characters of the font
};
