// The differences between two jobs that a person asks for first.
#pragma once

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
    std::vector<std::string> otherSide;
};

struct NetChanges
{
    std::vector<std::string> added;
    std::vector<std::string> removed;
    std::vector<std::string> movedPins; // "U1.3 from GND to VCC"
};

// Features that only one of the jobs has.
struct LayerChanges
{
    std::string name;
    std::int64_t added = 0;
    std::int64_t removed = 0;
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
