// Where the records of a job lie, and the short lists in them: side by side in chunks, so that making and destroying one
// costs next to nothing and no bytes are spent between them.
//
// A chunk is a block of memory: a header, then pages. A page begins kPageOffset behind a multiple of kRecordPage with the
// address of its chunk, so that a record's address leads there. The header itself begins with it too: where the block
// begins like a page, as large blocks do, records lie right behind the header. The chunk is freed as a whole when the last of its records is
// deleted. Each thread fills chunks of its own, one for each kind of record; they begin small and double, so that a
// small job takes little. A record that a host keeps therefore keeps its chunk, at most half a megabyte.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

class CJOBXrecord;

// Where memory errors are looked for, every record has a block of its own, so that using one that is gone is seen.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kRecordsHaveOwnBlocks = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr bool kRecordsHaveOwnBlocks = true;
#else
inline constexpr bool kRecordsHaveOwnBlocks = false;
#endif
#else
inline constexpr bool kRecordsHaveOwnBlocks = false;
#endif

inline constexpr std::size_t kRecordPage = 4096;
// What an allocator puts in front of a block that it got from the system.
inline constexpr std::size_t kPageOffset = 16;

// What the records of a file have in common; lives until its maker and the last chunk that keeps it are gone. It may
// own no record that lies in a chunk which keeps it: neither would ever go.
// Threads: the count may change on any thread.
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

// The header of a chunk.
// Threads: records of one chunk may be deleted on any threads at once; only the thread that makes its records says what
//          it keeps.
class CRecordChunk
{
public:
    // A chunk in that block, whose records' destructors have to run or, as long as none owns anything, have not.
    CRecordChunk(std::size_t size, bool owning) noexcept : m_owning(owning), m_size(size) {}
    CRecordChunk(const CRecordChunk&) = delete;
    CRecordChunk& operator=(const CRecordChunk&) = delete;
    ~CRecordChunk();

    // The chunk of an object: of a record or, in a pooled build, of any part of one.
    static CRecordChunk& Of(void* object) noexcept;

    // How much of the block lies behind that place in it.
    std::size_t RoomBehind(const char* place) const noexcept;
    std::size_t Size() const noexcept { return m_size; }
    bool IsOwning() const noexcept { return m_owning.load(std::memory_order_relaxed); }
    void RecordOwnsSomething() noexcept { m_owning.store(true, std::memory_order_relaxed); }
    // Holds on to `keep` as long as any of the chunk's records lives.
    void Keep(CRecordKeep& keep);
    bool KeptLast(const CRecordKeep& keep) const noexcept { return m_lastKept == &keep; }

    // How many records live, as far as threads have said so; far more while a thread fills the chunk.
    std::int64_t Living() const noexcept { return m_living.load(std::memory_order_relaxed); }
    // That many of its records are gone; with the last the chunk goes.
    void Subtract(std::int64_t records) noexcept;

    static constexpr std::int64_t kFilling = std::int64_t{1} << 40; // more than a chunk's records

private:
    struct Kept;

    [[maybe_unused]] CRecordChunk* const m_self = this; // what a page begins with
    std::atomic<std::int64_t> m_living{kFilling};
    std::atomic<bool> m_owning;
    std::size_t m_size;
    CRecordKeep* m_lastKept = nullptr;
    Kept* m_kept = nullptr;
};

// The chunk that a thread fills with records of one kind, and where in it the next record goes.
// Threads: for its own thread only.
class CRecordRoom
{
public:
    explicit constexpr CRecordRoom(bool owning) noexcept : m_owning(owning) {}

    // Room for an object of that size, a multiple of 8, at most kLargestRecord; Take has to follow.
    void* Find(std::size_t size)
    {
        if (kRecordsHaveOwnBlocks || static_cast<std::size_t>(m_end - m_at) < size)
            OpenPage(size);
        return m_at;
    }
    void* FindAligned(std::size_t size, std::size_t alignment);
    void Take(std::size_t size) noexcept
    {
        m_at += size;
        ++m_living;
    }
    // Room for a block of that size, which is taken: at the end of an earlier page, where a record did not fit, if there
    // is enough left.
    void* TakeBlock(std::size_t size);

    CRecordChunk* Chunk() const noexcept { return m_chunk; }
    // That many records that were made here are gone.
    void Released(std::int64_t records) noexcept;
    // Fills this chunk no more.
    void Close() noexcept;

private:
    void OpenPage(std::size_t size);
    void OpenChunk(std::size_t size);
    void BeginPage(char* page, std::size_t header) noexcept;
    void KeepRest() noexcept;

    char* m_at = nullptr;
    char* m_end = nullptr; // of the page
    // The rest of an earlier page of the chunk.
    char* m_restAt = nullptr;
    char* m_restEnd = nullptr;
    CRecordChunk* m_chunk = nullptr;
    std::int64_t m_living = 0; // records taken, less those that this thread released meanwhile
    std::size_t m_nextSize = kSmallestChunk;
    bool m_owning;

    static constexpr std::size_t kSmallestChunk = std::size_t{8} * 1024;
};

// Of the sizes and addresses of all records.
inline constexpr std::size_t kRecordAlignment = 8;
// What is larger than this has a block of its own.
inline constexpr std::size_t kLargestRecord = 1024;
// A list of more bytes has a block of its own, of which the allocator takes little.
inline constexpr std::size_t kLargestBlock = 512;

// The chunks of this thread and what happens to records.
namespace record_pool
{
// Where the records go that are made with `new`.
CRecordRoom& GeneralRoom() noexcept;
// Where the features and contour elements of files go: those that own nothing apart from the others.
CRecordRoom& PlainRoom() noexcept;
CRecordRoom& OwningRoom() noexcept;

// Lets the chunk of the record that was just taken keep `keep`. When that fails the record's room is given back.
void KeepForTaken(CRecordRoom& room, CRecordKeep& keep);

// A T at that place of the room, which is given back when the constructor raises.
template <class T>
T* Construct(CRecordRoom& room, void* place)
{
    try
    {
        return ::new (place) T;
    }
    catch (...)
    {
        room.Released(1);
        throw;
    }
}

// A new T in that room, whose chunk keeps `keep` unless that is null.
template <class T>
T* Make(CRecordRoom& room, CRecordKeep* keep)
{
    static_assert(alignof(T) <= kRecordAlignment);
    static_assert(sizeof(T) <= kLargestRecord);
    static_assert(sizeof(T) % kRecordAlignment == 0);
    void* const place = room.Find(sizeof(T));
    room.Take(sizeof(T));
    if (keep != nullptr && !room.Chunk()->KeptLast(*keep))
        KeepForTaken(room, *keep);
    if constexpr (std::is_nothrow_default_constructible_v<T>)
        return ::new (place) T;
    else
        return Construct<T>(room, place);
}

// The same as std::make_unique, but for classes that are no more aligned than a pointer: between their records there is
// no gap, which `new` has to leave for classes of hosts.
template <class T>
std::unique_ptr<T> New()
{
    static_assert(std::is_base_of_v<CJOBXrecord, T>);
    return std::unique_ptr<T>(Make<T>(GeneralRoom(), nullptr));
}

// That many records of the chunk are gone.
void Released(CRecordChunk& chunk, std::int64_t records) noexcept;

// Room of that size among the records that this thread makes with `new`; JobxReturnBlock takes it back.
void* NewBlock(std::size_t size);

// Makes the array so much longer, by value-initialised elements: among the records if it has no block and they are few.
template <class Array>
void Extend(Array& array, std::ptrdiff_t count)
{
    struct Open : Array
    {
        static void UseBlock(Array& opened, void* block, std::ptrdiff_t size) { Array::UseBlock(opened, block, size); }
    };
    const std::size_t size = static_cast<std::size_t>(count) * sizeof *array.GetData();
    if (array.GetData() == nullptr && size - 1 < kLargestBlock)
        Open::UseBlock(array, NewBlock(size), count);
    else
        array.SetSize(array.GetSize() + count);
}

// Whether a record of a host's may have a block of its own somewhere.
bool AreThereOwnBlocks() noexcept;

// Deletes `count` records, null entries left out, in order. Records of a chunk that owns nothing are not even looked
// at: they are given back together.
template <class T>
void Delete(T* const* records, std::ptrdiff_t count) noexcept
{
    const bool mayLookUp = !AreThereOwnBlocks();
    CRecordChunk* chunk = nullptr; // of the run of records that are released together
    std::uintptr_t begin = 0;
    std::size_t size = 0;
    std::int64_t released = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i)
    {
        T* const record = records[i];
        if (reinterpret_cast<std::uintptr_t>(record) - begin < size)
        {
            ++released;
            continue;
        }
        if (record == nullptr)
            continue;
        if (chunk != nullptr)
            Released(*chunk, released);
        chunk = mayLookUp ? &CRecordChunk::Of(record) : nullptr;
        if (chunk != nullptr && !chunk->IsOwning())
        {
            begin = reinterpret_cast<std::uintptr_t>(chunk);
            size = chunk->Size();
            released = 1;
            continue;
        }
        chunk = nullptr;
        size = 0;
        delete record;
    }
    if (chunk != nullptr)
        Released(*chunk, released);
}
} // namespace record_pool
