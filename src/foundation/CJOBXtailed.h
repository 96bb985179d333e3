#pragma once

#include "foundation/JobxExport.h"
#include "foundation/framework/FrameworkTypes.h"

#include <cstdint>

class CJOBXPropertyArray;

// What a record may have behind the first ";" of its line: attributes and a number that is its own in the whole job.
// Complete reading fills it; classic reading leaves it empty.
// Ownership: owns its attributes; copies are deep.
// Memory:    one word, also for a record with a number alone.
class JOBX_API CJOBXtailed
{
public:
    static constexpr __int64 kNoID = -1;

    // The unique number; kNoID when the record has none.
    __int64 GetID() const noexcept;
    // A number below 0 takes the number away; those above 2^62 do not fit and do the same.
    void SetID(__int64 id);

    // The attributes, borrowed; null when there are none.
    const CJOBXPropertyArray* pGetTailAttributes() const noexcept;
    // The list for changing, borrowed; made when there is none.
    CJOBXPropertyArray* pMakeTailAttributes();

protected:
    CJOBXtailed() = default;
    CJOBXtailed(const CJOBXtailed& other);
    CJOBXtailed& operator=(const CJOBXtailed& other);
    ~CJOBXtailed();

private:
    struct Tail;

    JOBX_LOCAL bool HasTail() const noexcept;
    JOBX_LOCAL Tail* GetTail() const noexcept;

    // 0 for nothing; the number, doubled, plus 1; or the address of a tail.
    std::uintptr_t m_nLink = 0;
};
