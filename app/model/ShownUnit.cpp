#include "model/ShownUnit.h"

#include <fmt/core.h>

#include <charconv>
#include <string>

namespace
{
JOBXunit UnitOfJob(const CJOBX& job)
{
    if (job.m_pMisc->GetUnit() == JOBXunit::Millimetre)
        return JOBXunit::Millimetre;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        return step.GetProfile()->GetUnit();
    return JOBXunit::Inch;
}
} // namespace

ShownUnit::ShownUnit(const CJOBX& job, std::optional<JOBXunit> wanted) : m_unit(wanted.value_or(UnitOfJob(job))) {}

double ShownUnit::Length(double length, JOBXunit unit) const
{
    return unit == m_unit ? length : RoundedLength(length * JOBXfactorToMM(unit) / JOBXfactorToMM(m_unit));
}

double RoundedLength(double length)
{
    const std::string text = fmt::format("{:.12g}", length);
    double rounded = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), rounded);
    return rounded;
}
