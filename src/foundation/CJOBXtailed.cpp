#include "foundation/CJOBXtailed.h"

#include "foundation/CJOBXProperty.h"
#include "foundation/framework/Guarded.h"

#include <memory>
#include <utility>

static_assert(sizeof(std::uintptr_t) >= sizeof(std::uint32_t));

struct CJOBXtailed::Tail
{
    __int64 id = kNoID;
    CJOBXPropertyArray attributes;
};

namespace
{
constexpr std::uintptr_t kIsNumber = 1;
constexpr __int64 kLargest = static_cast<__int64>(UINTPTR_MAX >> 2U); // the largest that fits beside the mark
} // namespace

bool CJOBXtailed::HasTail() const noexcept
{
    return m_nLink != 0 && (m_nLink & kIsNumber) == 0;
}

CJOBXtailed::Tail* CJOBXtailed::GetTail() const noexcept
{
    return HasTail() ? reinterpret_cast<Tail*>(m_nLink) : nullptr; // NOLINT(performance-no-int-to-ptr): shares its word
}

CJOBXtailed::CJOBXtailed(const CJOBXtailed& other)
{
    const Tail* const tail = other.GetTail();
    m_nLink = tail == nullptr ? other.m_nLink
                              : Guarded(
                                    [&] {
                                        return reinterpret_cast<std::uintptr_t>(new Tail{tail->id, tail->attributes});
                                    });
}

CJOBXtailed& CJOBXtailed::operator=(const CJOBXtailed& other)
{
    CJOBXtailed copy(other);
    std::swap(m_nLink, copy.m_nLink);
    return *this;
}

CJOBXtailed::~CJOBXtailed()
{
    delete GetTail();
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
    if (Tail* const tail = GetTail())
        tail->id = fitting;
    else
        m_nLink = fitting == kNoID ? 0 : (static_cast<std::uintptr_t>(fitting) << 1U) | kIsNumber;
}

const CJOBXPropertyArray* CJOBXtailed::pGetTailAttributes() const noexcept
{
    const Tail* const tail = GetTail();
    return tail != nullptr && tail->attributes.GetSize() > 0 ? &tail->attributes : nullptr;
}

CJOBXPropertyArray* CJOBXtailed::pMakeTailAttributes()
{
    return Guarded(
        [&]
        {
            if (!HasTail())
            {
                auto tail = std::make_unique<Tail>();
                tail->id = GetID();
                m_nLink = reinterpret_cast<std::uintptr_t>(tail.release());
            }
            return &GetTail()->attributes;
        });
}
