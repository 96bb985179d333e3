// What the numbers in the files of a job refer to, so that records mean the same however tables are numbered.
#pragma once

#include "model/PackageIndex.h"

#include "JOBXCLSDLL.h"

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// The names of a job's user symbols; all other symbols are standard ones, whose names hold lengths.
class UserSymbolNames
{
public:
    explicit UserSymbolNames(const CJOBXSpecialSymbolArray& symbols);

    // The name of a symbol with its lengths in microns: "r10" of a file in inches is "r254".
    std::string MetricName(const CString& name, double factorToMicrons) const;

private:
    std::unordered_set<std::string> m_names; // in lower case
};

// The nets, packages, components and layers that records of a step refer to by number.
// Ownership: borrows the step.
class StepTables
{
public:
    explicit StepTables(const CJOBXstepObj& step);

    // The names, "" for a number that leads nowhere.
    std::string Net(int number) const;
    std::string Package(int number) const;
    // A pin of that package.
    std::string Pin(int package, int number) const;
    // In lower case.
    std::string Layer(int number) const;
    // "R5" and "R5.2"; the side is "T" or "B".
    std::string Component(const CString& side, int number) const;
    std::string ToeprintOf(const CString& side, int component, int number) const;

private:
    const CJOBXcmp* FindComponent(const CString& side, int number) const;

    const CJOBXdata& m_data;
    PackageIndex m_packages;
    std::array<std::vector<const CJOBXcmp*>, 2> m_components; // of the top and of the bottom
};

// Which features of two jobs are the same: for each layer, by its name in lower case, the numbers that MatchMeanings gave
// to its features in their order.
using FeatureNumbers = std::unordered_map<std::string, std::vector<std::int64_t>>;

// The unit and the tables of one file, as its records need them.
struct FileView
{
    double factor = 1.0; // of lengths, to millimetres
    const UserSymbolNames* symbols = nullptr;
    const CJOBXlayer* layer = nullptr;        // of features
    const StepTables* step = nullptr;         // of components, EDA data and netlists
    const CJOBXcmp* component = nullptr;      // of toeprints
    const FeatureNumbers* features = nullptr; // of net objects
    CPointD shift;                            // added to places on the board, in millimetres

    // The number of a feature that both jobs have, "" for any other.
    std::string NumberOf(const std::string& layerName, int index) const;
};
