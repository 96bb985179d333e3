// Every value of a model with its place, from the lists of fields.
#pragma once

#include "JOBXCLSDLL_fields.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct ModelValue
{
    std::string place; // "steps[0].layers[2].features[17].centre.x"
    jobx::FieldKind kind;
    std::string text;    // "" for a number
    double number = 0.0; // of a length, a coordinate, an angle or another real number
};

using ModelValues = std::vector<ModelValue>;

ModelValues ValuesOf(const CJOBX& job);
// The same without the places, in a fraction of the time.
ModelValues ValuesWithoutPlaces(const CJOBX& job);
ModelValues ValuesOf(const CJOBXlayer& layer);
ModelValues ValuesOf(const CJOBXstepObj& step);

// Fails for the first values that are not equal; numbers may differ by that much.
void ExpectSameValues(const ModelValues& actual, const ModelValues& expected, double tolerance = 0.0);

// A job that was read completely.
std::unique_ptr<CJOBX> ReadCompletely(const std::string& path);
