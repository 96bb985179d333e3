#include "Measurement.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <numeric>

void Measurement::Print() const
{
    for (const auto& [name, value] : m_values)
        std::printf("%s %.9g\n", name.c_str(), value);
}

Measurement Measurement::FromFile(const std::string& path)
{
    Measurement measurement;
    std::ifstream file(path);
    std::string name;
    for (double value = 0.0; file >> name >> value;)
        measurement.Set(name, value);
    return measurement;
}

double Median(std::vector<double> values)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    return std::midpoint(values[(values.size() - 1) / 2], values[values.size() / 2]);
}
