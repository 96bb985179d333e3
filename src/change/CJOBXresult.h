#pragma once

#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"

// What an operation on a whole job answers: that it was done, or why it was refused. A refused operation has changed
// nothing.
class JOBX_API CJOBXresult
{
public:
    // Done.
    CJOBXresult() = default;
    // Refused; the reason is a sentence part for people, without a full stop: no layer is called "TOPP".
    explicit CJOBXresult(const CString& reason) : m_sReason(reason), m_isDone(false) {}

    bool IsDone() const noexcept { return m_isDone; }
    // "" if it was done.
    const CString& GetReason() const noexcept { return m_sReason; }

private:
    CString m_sReason;
    bool m_isDone = true;
};
