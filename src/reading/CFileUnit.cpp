#include "reading/CFileUnit.h"

#include "foundation/CLineScanner.h"
#include "reading/UnitMessageKinds.h"

bool IsUnit(std::string_view text, JOBXunit& unit) noexcept
{
    const bool isMetric = AsciiEqualNoCase(text, "MM") || AsciiEqualNoCase(text, "M");
    if (!isMetric && !AsciiEqualNoCase(text, "INCH") && !AsciiEqualNoCase(text, "I"))
        return false;
    unit = isMetric ? JOBXunit::Millimetre : JOBXunit::Inch;
    return true;
}

bool CFileUnit::TakeUnit(std::string_view line, int lineNumber)
{
    const std::size_t separator = line.find_first_of("= \t");
    const std::string_view key = line.substr(0, separator);
    if (separator == std::string_view::npos || (!AsciiEqualNoCase(key, "UNITS") && !AsciiEqualNoCase(key, "U")))
        return false;
    const std::string_view value = Trimmed(WithoutLeading(Trimmed(line.substr(separator)), '='));
    JOBXunit unit = JOBXunit::Inch;
    if (!IsUnit(value, unit))
    {
        m_messages.Say(unit_message::kUnknown, lineNumber, "The unit ", Quoted{value}, " is not known.");
        return true;
    }
    if (m_isSaid && unit != m_measured.GetUnit())
        m_messages.Say(unit_message::kContradicts, lineNumber, "The unit ", Quoted{value},
                       " contradicts a units line before.");
    m_isSaid = true;
    m_measured.SetUnit(unit);
    return true;
}
