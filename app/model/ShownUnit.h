#pragma once

#include "JOBXCLSDLL.h"

#include <optional>

// The unit in which a command shows lengths.
class ShownUnit
{
public:
    explicit ShownUnit(JOBXunit unit) : m_unit(unit) {}
    // The unit that a user wants, or else the job's: mm if its information or its first step's profile says so. Inch
    // after classic reading.
    ShownUnit(const CJOBX& job, std::optional<JOBXunit> wanted);

    JOBXunit Unit() const noexcept { return m_unit; }
    // A length of a file in that unit. One in the same unit stays as it is; others are rounded to 12 digits.
    double Length(double length, JOBXunit unit) const;
    double Length(double length, const CJOBXmeasured& file) const { return Length(length, file.GetUnit()); }

private:
    JOBXunit m_unit;
};

// Rounds a calculated length to what a person writes: 2.15, not 2.1500000000000004.
double RoundedLength(double length);
