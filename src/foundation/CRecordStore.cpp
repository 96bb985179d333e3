#include "foundation/CRecordStore.h"

#include <algorithm>

namespace
{
// With memory checkers, every record has its own block, so that use after free is found.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kOneRecordABlock = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kOneRecordABlock = true;
#else
constexpr bool kOneRecordABlock = false;
#endif
#else
constexpr bool kOneRecordABlock = false;
#endif

constexpr std::size_t kHeader =
    (sizeof(CRecordBlock) + CRecordBlock::kUnit - 1) / CRecordBlock::kUnit * CRecordBlock::kUnit;
} // namespace

void CRecordBlock::Release(int records) noexcept
{
    if (m_living.fetch_sub(records, std::memory_order_acq_rel) != records)
        return;
    CRecordKeep* const keep = m_keep;
    this->~CRecordBlock();
    ::operator delete(static_cast<void*>(this));
    keep->Release();
}

void CRecordStore::OpenBlock(std::size_t recordSize)
{
    const std::size_t size = kOneRecordABlock ? kHeader + recordSize : std::max(m_nextSize, kHeader + recordSize);
    void* const memory = ::operator new(size);
    CloseBlock();
    ::new (memory) CRecordBlock(size, m_keep);
    m_start = static_cast<char*>(memory);
    m_at = m_start + kHeader;
    m_left = size - kHeader;
    m_nextSize = std::min(2 * m_nextSize, CRecordBlock::kMaxSize);
}

void CRecordStore::CloseBlock() noexcept
{
    if (m_start != nullptr)
        std::launder(reinterpret_cast<CRecordBlock*>(m_start))->Release(CRecordBlock::kFilling - m_made);
    m_start = nullptr;
    m_left = 0;
    m_made = 0;
}
