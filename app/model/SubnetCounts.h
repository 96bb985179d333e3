#pragma once

#include "JOBXCLSDLL.h"

#include <cstdint>

// How many subnets of each kind there are, and how many features they refer to.
struct SubnetCounts
{
    std::int64_t toeprints = 0;
    std::int64_t vias = 0;
    std::int64_t traces = 0;
    std::int64_t planes = 0;
    std::int64_t others = 0;
    std::int64_t features = 0;

    std::int64_t Total() const { return toeprints + vias + traces + planes + others; }
    SubnetCounts& operator+=(const SubnetCounts& other);
};

SubnetCounts CountSubnets(const CJOBXdataNet& net);
