#pragma once

#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

#include <cstdint>

// A record that may have a number of its own in the whole job. Complete reading sets it.
// Memory: half a word, so the number has 32 bits; CJOBXtailed takes larger ones.
class JOBX_API CJOBXidentified
{
public:
    // The number of a record that has none, and the largest that fits.
    static constexpr __int64 kNoID = -1;
    static constexpr __int64 kLargestID = 0xFFFFFFFE;

    // The unique number; kNoID if the record has none.
    __int64 GetID() const noexcept { return static_cast<__int64>(m_nIDPlusOne) - 1; }
    // A number below 0 or above the largest takes the number away.
    void SetID(__int64 id) noexcept
    {
        m_nIDPlusOne = id >= 0 && id <= kLargestID ? static_cast<std::uint32_t>(id + 1) : 0;
    }

protected:
    CJOBXidentified() = default;
    CJOBXidentified(const CJOBXidentified&) = default;
    CJOBXidentified& operator=(const CJOBXidentified&) = default;
    ~CJOBXidentified() = default;

private:
    std::uint32_t m_nIDPlusOne = 0;
};
