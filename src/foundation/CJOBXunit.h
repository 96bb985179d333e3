#pragma once

#include "foundation/framework/JobxExport.h"

// The unit of lengths.
enum class JOBXunit : unsigned char
{
    Inch,
    Millimetre
};

// How many millimetres one of the unit is: 25.4 or 1.
constexpr double JOBXfactorToMM(JOBXunit unit) noexcept
{
    return unit == JOBXunit::Millimetre ? 1.0 : 25.4;
}

// An object with all its lengths in one unit: a file, or a record with its own unit.
// Units:     complete reading takes it from the record, the file, the job's information or the format's default, inch,
//            in this order. Classic reading leaves inch, whatever the file says. A change of lengths does not change
//            it.
class JOBX_API CJOBXmeasured
{
public:
    JOBXunit GetUnit() const noexcept { return m_nUnit; }
    void SetUnit(JOBXunit unit) noexcept { m_nUnit = unit; }
    // Multiply a length of the object by this to get millimetres.
    double dGetFactorToMM() const noexcept { return JOBXfactorToMM(m_nUnit); }

protected:
    CJOBXmeasured() = default;
    CJOBXmeasured(const CJOBXmeasured&) = default;
    CJOBXmeasured& operator=(const CJOBXmeasured&) = default;
    ~CJOBXmeasured() = default;

private:
    JOBXunit m_nUnit = JOBXunit::Inch;
};
