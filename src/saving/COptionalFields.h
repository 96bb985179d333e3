// Fields at the end of a line that may be missing.
#pragma once

#include "foundation/corekit/CPointD.h"
#include "saving/CRecordLines.h"

#include <string>
#include <string_view>

// Prints the fields of a record behind its keyword. An empty text has no place in a line, so the line ends before it if
// all behind it has the values that readers give to missing fields. If not, the text is printed as nothing between two
// blanks, which does not read back as the record.
// Ownership: borrows the lines.
class COptionalFields
{
public:
    explicit COptionalFields(CRecordLines& lines) : m_lines(lines) {}

    COptionalFields& Text(std::string_view text, std::string_view missing = {})
    {
        if (IsHeld(text.empty() || text == missing, text.empty()))
            m_held.append(1, ' ').append(text);
        else
            Flush().Word(text);
        return *this;
    }
    COptionalFields& Integer(int number, int missing)
    {
        if (!IsHeld(number == missing, false))
        {
            Flush().Integer(number);
            return *this;
        }
        m_held += ' ';
        AppendInteger(m_held, number);
        return *this;
    }
    COptionalFields& Real(double number)
    {
        if (IsHeld(number == 0.0, false))
            m_held += " 0";
        else
            Flush().Real(number);
        return *this;
    }
    COptionalFields& Point(const CPointD& point) { return Real(point.x).Real(point.y); }

private:
    // An empty text begins to hold fields back, those that could be missing are held back as well.
    bool IsHeld(bool isMissing, bool isEmpty) const { return isEmpty || (isMissing && !m_held.empty()); }
    CRecordLines& Flush()
    {
        m_lines.Glue(m_held);
        m_held.clear();
        return m_lines;
    }

    CRecordLines& m_lines;
    std::string m_held; // printed if something follows that is not missing
};
