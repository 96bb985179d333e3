// The units lines of a file: "UNITS=MM", "U MM", "UNITS INCH".
#pragma once

#include "foundation/CJOBXunit.h"
#include "foundation/framework/AsciiText.h"
#include "reading/CFileMessages.h"

#include <string_view>

// Sets the unit of an object read from a file.
class CFileUnit
{
public:
    // Sets the unit of `measured` to that of a file without a units line. Borrows both.
    CFileUnit(CFileMessages& messages, CJOBXmeasured& measured, JOBXunit withoutLine)
        : m_messages(messages), m_measured(measured)
    {
        m_measured.SetUnit(withoutLine);
    }

    // Whether the line is a units line; takes its unit.
    bool Take(std::string_view line, int lineNumber)
    {
        return !line.empty() && AsciiUpper(line.front()) == 'U' && TakeUnit(line, lineNumber);
    }

private:
    bool TakeUnit(std::string_view line, int lineNumber);

    CFileMessages& m_messages;
    CJOBXmeasured& m_measured;
    bool m_isSaid = false;
};

// Whether the text names a unit: "I", "INCH", "M" or "MM", in any letter case.
bool IsUnit(std::string_view text, JOBXunit& unit) noexcept;
