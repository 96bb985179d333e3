#include "foundation/CJOBXtailed.h"

#include "foundation/CJOBXProperty.h"
#include "foundation/CPointerTable.h"
#include "foundation/framework/Guarded.h"

#include <memory>
#include <utility>

struct CJOBXtailed::Tail
{
    __int64 id = kNoID;
    CJOBXPropertyArray attributes{};

    // Of all records.
    JOBX_LOCAL static constinit CPointerTable<Tail> table;
};

constinit CPointerTable<CJOBXtailed::Tail> CJOBXtailed::Tail::table;

namespace
{
constexpr std::uint32_t kIsNumber = 1;
constexpr __int64 kLargestInside = static_cast<__int64>(UINT32_MAX >> 1U); // the largest that fits beside the mark
constexpr __int64 kLargest = (__int64{1} << 62U) - 1;
} // namespace

bool CJOBXtailed::HasTail() const noexcept
{
    return m_nLink != 0 && (m_nLink & kIsNumber) == 0;
}

CJOBXtailed::Tail* CJOBXtailed::GetTail() const noexcept
{
    return HasTail() ? Tail::table.Find((m_nLink >> 1U) - 1) : nullptr;
}

// Makes a tail with these arguments and gives it a number.
template <class... Args>
std::uint32_t CJOBXtailed::LinkToNew(const Args&... args)
{
    return Guarded(
        [&]
        {
            std::unique_ptr<Tail> tail(new Tail{args...});
            const std::uint32_t link = (Tail::table.Add(tail.get()) + 1) << 1U;
            tail.release(); // NOLINT(bugprone-unused-return-value): the record with the link is going to own it
            return link;
        });
}

CJOBXtailed::Tail& CJOBXtailed::MakeTail()
{
    if (!HasTail())
        m_nLink = LinkToNew(GetID());
    return *GetTail();
}

CJOBXtailed::CJOBXtailed(const CJOBXtailed& other)
{
    const Tail* const tail = other.GetTail();
    m_nLink = tail == nullptr ? other.m_nLink : LinkToNew(tail->id, tail->attributes);
}

CJOBXtailed& CJOBXtailed::operator=(const CJOBXtailed& other)
{
    CJOBXtailed copy(other);
    std::swap(m_nLink, copy.m_nLink);
    return *this;
}

CJOBXtailed::~CJOBXtailed()
{
    if (const Tail* const tail = GetTail())
    {
        Tail::table.Remove((m_nLink >> 1U) - 1);
        delete tail;
    }
}

__int64 CJOBXtailed::GetID() const noexcept
{
    if (const Tail* const tail = GetTail())
        return tail->id;
    return m_nLink != 0 ? static_cast<__int64>(m_nLink >> 1U) : kNoID;
}

void CJOBXtailed::SetID(__int64 id)
{
    const __int64 fitting = id >= 0 && id <= kLargest ? id : kNoID;
    if (HasTail() || fitting > kLargestInside)
        MakeTail().id = fitting;
    else
        m_nLink = fitting == kNoID ? 0 : (static_cast<std::uint32_t>(fitting) << 1U) | kIsNumber;
}

const CJOBXPropertyArray* CJOBXtailed::pGetTailAttributes() const noexcept
{
    const Tail* const tail = GetTail();
    return tail != nullptr && tail->attributes.GetSize() > 0 ? &tail->attributes : nullptr;
}

CJOBXPropertyArray* CJOBXtailed::pMakeTailAttributes()
{
    return &MakeTail().attributes;
}
