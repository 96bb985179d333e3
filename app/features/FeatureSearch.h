// Finds features of a job by layer, net, symbol, attribute and place.
#pragma once

#include "JOBXCLSDLL.h"
#include "features/FeatureShape.h"
#include "output/ProgressLine.h"

#include <functional>
#include <optional>
#include <string>

struct FeatureAttribute
{
    std::string name;                 // with wildcards, like the value
    std::optional<std::string> value; // none: any
};

struct FeaturePlace
{
    ShapePoint point; // in millimetres, like the radius
    double radius = 0.0;
};

// What to look for; patterns are "" for anything.
struct FeatureQuery
{
    std::string layer;
    std::string net;
    std::string symbol;
    std::optional<FeatureAttribute> attribute;
    std::optional<FeaturePlace> place;
};

// A feature that was found. Everything is borrowed from the job.
struct FoundFeature
{
    const CJOBXstepObj& step;
    const CJOBXlayer& layer;
    const CJOBXlayObj& feature;
    const CJOBXdataNet* net; // null if it belongs to none
};

// Calls `take` for the features found: step by step, layers in the order of the matrix, features in that of the file.
// Results: raises ExitError if no layer, or no net, has such a name.
// Counts the features that it has looked at as progress.
void FindFeatures(const CJOBX& job, const FeatureQuery& query, CountedProgress& progress,
                  const std::function<void(const FoundFeature&)>& take);
