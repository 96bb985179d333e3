// What one child process of bench_table found out, as it hands it to its parent: lines of a name and a number.
#pragma once

#include <ctime>
#include <map>
#include <string>
#include <vector>

class Measurement
{
public:
    void Set(const std::string& name, double value) { m_values[name] = value; }
    bool Has(const std::string& name) const { return m_values.count(name) != 0; }
    double Get(const std::string& name) const { return m_values.at(name); }

    void Print() const; // to standard output
    static Measurement FromFile(const std::string& path);

private:
    std::map<std::string, double> m_values;
};

// The middle one; of an even number the mean of the two.
double Median(std::vector<double> values);

// The processor seconds, of all threads, that the work took.
template <class Work>
double ProcessorSeconds(Work work)
{
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

// Pairs of times taken in turn, so that what disturbs the machine hits both.
class Alternated
{
public:
    void Add(double work, double floor)
    {
        m_work.push_back(work);
        m_floor.push_back(floor);
        m_ratios.push_back(work / floor);
    }
    double Work() const { return Median(m_work); }
    double Floor() const { return Median(m_floor); }
    double Ratio() const { return Median(m_ratios); }

private:
    std::vector<double> m_work;
    std::vector<double> m_floor;
    std::vector<double> m_ratios;
};
