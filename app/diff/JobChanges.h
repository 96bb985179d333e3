// The differences between two jobs that a person asks for first.
#pragma once

#include "diff/FeatureArea.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

struct ComponentChanges
{
    std::vector<std::string> added; // reference designators
    std::vector<std::string> removed;
    std::vector<std::string> moved;
    double farthest = 0.0; // that one of them moved, in millimetres
    std::vector<std::string> rotated;
    std::vector<std::string> otherPart;
    std::vector<std::string> otherPackage;
    std::vector<std::string> otherProperty; // "R5 VALUE 10K -> 12K"
    std::vector<std::string> otherSide;
};

struct NetChanges
{
    std::vector<std::string> added;
    std::vector<std::string> removed;
    std::vector<std::string> movedPins; // "U1.3 from GND to VCC"
};

// Features that are the same but for their place, in millimetres.
struct FeatureMoves
{
    std::int64_t count = 0;
    std::pair<double, double> way; // of all, unless they differ
    bool areAlike = true;
    double farthest = 0.0;
};

// Features that only one of the jobs has, and those that were moved.
struct LayerChanges
{
    std::string name;
    FeatureSum added;
    FeatureSum removed;
    FeatureMoves moved;
};

struct StepChanges
{
    std::string name;
    ComponentChanges components;
    NetChanges nets;
    std::vector<LayerChanges> layers; // those with changes, in the order of the first job
    // Diameters in millimetres with the number of holes in both jobs, where they differ.
    std::map<double, std::pair<std::int64_t, std::int64_t>> drills;
    // How far the second job lies from the first, in millimetres; where it was asked for and is not 0.
    std::optional<std::pair<double, double>> shift;
};

struct JobChanges
{
    std::vector<StepChanges> steps;      // that both jobs have
    std::vector<std::string> otherFiles; // files that no reader takes, with other bytes or in only one job
};
