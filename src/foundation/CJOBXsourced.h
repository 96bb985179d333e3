#pragma once

#include "foundation/framework/JobxExport.h"

#include <cstdint>

// A record that knows the line of its file from which complete reading made it. Saving a job takes the record's own line
// from the file by it.
// Ownership: copies are new records, which come from no line; an assignment does not change the line.
// Memory:    half a word.
class JOBX_API CJOBXsourced
{
public:
    // The line, counted from 1; 0 for a record that was not read completely, or made by a host.
    int GetSourceLine() const noexcept { return static_cast<int>(m_nSourceLine); }
    void SetSourceLine(int line) noexcept { m_nSourceLine = line > 0 ? static_cast<std::uint32_t>(line) : 0; }

protected:
    CJOBXsourced() = default;
    CJOBXsourced(const CJOBXsourced& /*other*/) noexcept {}
    CJOBXsourced& operator=(const CJOBXsourced& /*other*/) noexcept { return *this; }
    ~CJOBXsourced() = default;

private:
    std::uint32_t m_nSourceLine = 0;
};
