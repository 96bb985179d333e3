// Where the readers put the many small records of one file: side by side in blocks, so that making and destroying a
// record costs next to nothing and there are no gaps between them.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>

// What the records of a store borrow from their file. Lives until the store and its last block are gone.
// Threads:   the count may change on any thread.
class CRecordKeep
{
public:
    CRecordKeep() = default;
    CRecordKeep(const CRecordKeep&) = delete;
    CRecordKeep& operator=(const CRecordKeep&) = delete;
    virtual ~CRecordKeep() = default;

    void AddReference() noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    void Release() noexcept
    {
        if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

private:
    std::atomic<int> m_references{1};
};

// One block of a store: a header, then records. A record knows its distance from the header, its "place"; this is 0 for
// a record allocated separately with `new`.
// Memory:    the block is freed as a whole when its last record is deleted. So a record that a host removes from its
//            array and keeps also keeps its block, at most kMaxSize bytes, and the attribute lists of the file. A host
//            that keeps a few records of a large file for long should copy what it needs.
// Threads:   records of one block may be destroyed on any threads at once.
class CRecordBlock
{
public:
    static constexpr std::size_t kUnit = alignof(double); // of places
    static constexpr std::size_t kMaxSize = kUnit << 16U;

    static CRecordBlock& Of(void* record, std::size_t place) noexcept
    {
        return *std::launder(reinterpret_cast<CRecordBlock*>(static_cast<char*>(record) - place * kUnit));
    }

    bool Holds(const void* record) const noexcept
    {
        const auto distance = reinterpret_cast<std::uintptr_t>(record) - reinterpret_cast<std::uintptr_t>(this);
        return distance < m_size;
    }
    // Call this when a record of the block owns something, so that its destructor has to run.
    void RecordOwnsSomething() noexcept { m_owning.store(true, std::memory_order_relaxed); }
    bool IsOwning() const noexcept { return m_owning.load(std::memory_order_relaxed); }

    // Counts that many records as deleted; frees the block with the last one.
    void Release(int records) noexcept;

private:
    friend class CRecordStore;

    CRecordBlock(std::size_t size, CRecordKeep* keep) noexcept : m_size(size), m_keep(keep) { m_keep->AddReference(); }

    std::atomic<int> m_living{kFilling};
    std::atomic<bool> m_owning{false};
    std::size_t m_size;
    CRecordKeep* m_keep;

    static constexpr int kFilling = 1 << 30; // more than a block's records; replaced by their number when the block is
                                             // full
};

// Makes the records of one file. Blocks begin small and double in size, so that a file of three records needs little
// memory.
// Ownership: the caller deletes a record with `delete` or in its array; the store may already be gone.
// Results:   exhausted memory raises std::bad_alloc.
class CRecordStore
{
public:
    // The records borrow from `keep`, which every block keeps alive.
    explicit CRecordStore(CRecordKeep* keep) noexcept : m_keep(keep) {}
    CRecordStore(const CRecordStore&) = delete;
    CRecordStore& operator=(const CRecordStore&) = delete;
    ~CRecordStore() { CloseBlock(); }

    // A new T. The store sets its member m_nPlace.
    template <class T>
    T* Make()
    {
        static_assert(alignof(T) <= CRecordBlock::kUnit);
        constexpr std::size_t kSize = (sizeof(T) + CRecordBlock::kUnit - 1) / CRecordBlock::kUnit * CRecordBlock::kUnit;
        if (m_left < kSize)
            OpenBlock(kSize);
        T* const record = ::new (static_cast<void*>(m_at)) T;
        record->m_nPlace = static_cast<unsigned short>(static_cast<std::size_t>(m_at - m_start) / CRecordBlock::kUnit);
        m_at += kSize;
        m_left -= kSize;
        ++m_made;
        return record;
    }

    // As above, for a record that owns something from the start, so that its destructor has to run.
    template <class T>
    T* MakeOwning()
    {
        T* const record = Make<T>();
        CRecordBlock::Of(record, record->m_nPlace).RecordOwnsSomething();
        return record;
    }

private:
    void OpenBlock(std::size_t recordSize);
    void CloseBlock() noexcept;

    CRecordKeep* m_keep;
    char* m_start = nullptr; // of the block being filled
    char* m_at = nullptr;
    std::size_t m_left = 0;
    int m_made = 0;
    std::size_t m_nextSize = 1024;
};

// Deletes `count` records, skipping null entries, in order. Records of one block that own nothing are released
// together, without looking at them.
template <class T>
void DeleteRecords(T* const* records, std::ptrdiff_t count) noexcept
{
    CRecordBlock* block = nullptr;
    int released = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i)
    {
        T* const record = records[i];
        if (record == nullptr)
            continue;
        if (block == nullptr || !block->Holds(record))
        {
            if (block != nullptr)
                block->Release(released);
            block = nullptr;
            released = 0;
            if (record->m_nPlace == 0)
            {
                delete record;
                continue;
            }
            block = &CRecordBlock::Of(record, record->m_nPlace);
        }
        if (block->IsOwning())
            record->~T();
        ++released;
    }
    if (block != nullptr)
        block->Release(released);
}

// The effect of `delete` on a record of either kind. Runs the destructor of its dynamic type.
template <class T>
void DeleteRecord(T* record) noexcept
{
    const std::size_t place = record->m_nPlace;
    void* const whole = place == 0 ? dynamic_cast<void*>(record) : record;
    record->~T();
    if (place == 0)
        ::operator delete(whole);
    else
        CRecordBlock::Of(record, place).Release(1);
}
