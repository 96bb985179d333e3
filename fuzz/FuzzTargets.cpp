#include "FuzzTargets.h"

#include <algorithm>
#include <iterator>

namespace
{
constexpr FuzzTarget kTargets[] = {
    {"features", FuzzFeatures},
    {"eda_data", FuzzEdaData},
    {"components", FuzzComponents},
    {"netlist", FuzzNetlist},
    {"matrix", FuzzMatrix},
    {"stephdr", FuzzStephdr},
    {"font", FuzzFont},
    {"info", FuzzInfo},
    {"sysattr", FuzzSysattr},
    {"attrlist", FuzzAttrlist},
    {"tools", FuzzTools},
    {"decompress", FuzzDecompress},
    {"numbers", FuzzNumbers},
    {"properties", FuzzProperties},
    {"job", FuzzJob},
};
} // namespace

std::span<const FuzzTarget> FuzzTargets()
{
    return kTargets;
}

const FuzzTarget* FindFuzzTarget(std::string_view name)
{
    const auto* const found = std::find_if(std::begin(kTargets), std::end(kTargets),
                                           [&](const FuzzTarget& target) { return target.name == name; });
    return found != std::end(kTargets) ? found : nullptr;
}
