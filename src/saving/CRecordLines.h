// The lines of a file as the model has them, for saving a job.
#pragma once

#include "foundation/framework/FrameworkTypes.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Collects the lines of one file in the order in which a new file has them: for each record its own line, then those of
// the records below it, one level deeper. A line is printed from the model alone: fields between single blanks, numbers
// with the fewest digits that read back equal, without exponent. Whatever the model holds is printed, also what readers
// of other programs would assume if it were left out; a line of the file that says the same stays as it is.
class CRecordLines
{
public:
    // The record does not know its line; it is found among those of the record above by its key.
    static constexpr int kUnknownLine = -1;

    struct Line
    {
        std::size_t begin = 0; // in the text
        std::size_t end = 0;
        std::size_t keyEnd = 0; // up to here the text identifies the line among its siblings
        int depth = 0;
        int sourceLine = 0; // 0 for a new record
        bool isKeyValue = false;
        bool isAbove = false;    // a comment that belongs to the next line, the one of its record
        bool isOptional = false; // it is not added to a file that does not have it
    };

    // Begins a line; `depth` is 0 for one that is below no other.
    void Begin(int depth, int sourceLine);
    // Begins a comment above the record whose line comes next, such as "# NET 3". It has no line of its own: in the file
    // it is directly above that record.
    void BeginAbove(int depth);
    // Print a field, with a blank before all but the first.
    CRecordLines& Word(std::string_view text);
    CRecordLines& Word(char letter) { return Word(std::string_view(&letter, 1)); }
    CRecordLines& Integer(__int64 number);
    CRecordLines& Real(double number);
    // Prints text directly behind what was printed before.
    CRecordLines& Glue(std::string_view text);
    CRecordLines& GlueInteger(__int64 number);
    // What was printed of this line identifies it among its siblings. Without it, the first field does. Siblings may
    // have the same key; the first belongs to the first then.
    CRecordLines& EndKey();
    // The line is not added to a file that does not have it. For one that a file need not have, and whose value depends
    // on other lines.
    CRecordLines& Optional()
    {
        m_lines.back().isOptional = true;
        return *this;
    }
    // A whole line "KEY=VALUE", which has no line of its own.
    void KeyValue(int depth, std::string_view key, std::string_view value);
    void KeyInteger(int depth, std::string_view key, __int64 value);
    void KeyReal(int depth, std::string_view key, double value);

    const std::vector<Line>& Lines() const noexcept { return m_lines; }
    std::string_view TextOf(const Line& line) const noexcept
    {
        return std::string_view(m_text).substr(line.begin, line.end - line.begin);
    }
    std::string_view KeyOf(const Line& line) const noexcept
    {
        const std::size_t end = line.keyEnd != line.begin ? line.keyEnd : line.end; // there is only one field
        return std::string_view(m_text).substr(line.begin, end - line.begin);
    }
    // The whole file, each line ended by LF.
    std::string WholeText() const;

private:
    void Separate();
    void Extend() { m_lines.back().end = m_text.size(); }
    void BeginKey(int depth, std::string_view key);

    std::string m_text;
    std::vector<Line> m_lines;
};

// Append a number: a real one with the fewest digits that read back equal, without exponent and whatever the locale; -0
// as 0.
void AppendReal(std::string& text, double number);
void AppendInteger(std::string& text, __int64 number);
