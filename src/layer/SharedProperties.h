// The attribute list that features with equal attribute texts have in common.
#pragma once

#include "foundation/CJOBXProperty.h"

#include <atomic>

// A counted list; whoever drops the last reference deletes it. Threads: the count may change on any thread, the list
// may only be changed by the holder of the only reference.
class CSharedProperties
{
public:
    void AddReference() noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    void Release() noexcept
    {
        if (IsOnlyReference() || m_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }
    bool IsOnlyReference() const noexcept { return m_references.load(std::memory_order_acquire) == 1; }

    CJOBXPropertyArray m_list;

private:
    ~CSharedProperties() = default;

    std::atomic<int> m_references{1};
};
