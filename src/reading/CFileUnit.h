// The units lines of a file: "UNITS=MM", "U MM", "UNITS INCH".
#pragma once

#include "foundation/CJOBXunit.h"
#include "reading/CFileMessages.h"

#include <string_view>

// Gives what a file holds its unit.
class CFileUnit
{
public:
    // Gives `measured` the unit of a file without units line. Borrows both.
    CFileUnit(CFileMessages& messages, CJOBXmeasured& measured, JOBXunit withoutLine)
        : m_messages(messages), m_measured(measured)
    {
        m_measured.SetUnit(withoutLine);
    }

    // Whether the line is a units line; its unit is taken over then.
    bool Take(std::string_view line, int lineNumber);

private:
    CFileMessages& m_messages;
    CJOBXmeasured& m_measured;
    bool m_isSaid = false;
};

// Whether the text, letters in any case, names the unit: "I", "INCH", "M", "MM".
bool IsUnit(std::string_view text, JOBXunit& unit) noexcept;
