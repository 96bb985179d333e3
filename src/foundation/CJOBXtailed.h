#pragma once

#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

#include <cstdint>

class CJOBXPropertyArray;

// What a record may have after the first ";" of its line: attributes, and a number that is unique in the job. Complete
// reading fills it; classic reading leaves it empty.
// Ownership: owns its attributes; copies are deep.
// Memory:    half a word, even for a record with only a number, if that is below 2^31.
class JOBX_API CJOBXtailed
{
public:
    // Means no number.
    static constexpr __int64 kNoID = -1;

    // The unique number; kNoID if the record has none.
    __int64 GetID() const noexcept;
    // Sets the number. A negative number, or one above 2^62, removes it.
    void SetID(__int64 id);

    // The attributes, borrowed; null if there are none.
    const CJOBXPropertyArray* pGetTailAttributes() const noexcept;
    // The list for changes, borrowed; made if there is none.
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
    JOBX_LOCAL Tail& MakeTail();
    template <class... Args>
    JOBX_LOCAL static std::uint32_t LinkToNew(const Args&... args);

    // 0 for nothing; twice the unique number plus 1; or twice the number of a tail in the table of all, plus 2.
    std::uint32_t m_nLink = 0;
};
