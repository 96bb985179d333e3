#pragma once

#include "JOBXCLSDLL.h"

#include <span>
#include <unordered_map>
#include <vector>

// The nets of a step's features, as the FID records of its EDA data say.
// Ownership: borrows the EDA data, which must outlive it.
class FeatureNets
{
public:
    explicit FeatureNets(const CJOBXdata& eda);

    // The first net of each feature of the layer, by the feature's index; null if it has none. Features behind the end
    // have none either.
    std::span<const CJOBXdataNet* const> Find(const CString& layer) const;

private:
    std::unordered_map<CString, std::vector<const CJOBXdataNet*>> m_nets; // by layer in lower case, then by index
};
