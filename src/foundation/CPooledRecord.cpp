#include "foundation/CPooledRecord.h"

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/Guarded.h"

#include <atomic>
#include <cstdint>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define JOBX_CHECKED_MEMORY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define JOBX_CHECKED_MEMORY 1
#endif
#endif

// The fastest way for a shared library to reach a thread-local variable.
#if defined(__GNUC__)
#define JOBX_NEAR_THREAD_LOCAL __attribute__((tls_model("initial-exec")))
#else
#define JOBX_NEAR_THREAD_LOCAL
#endif

namespace
{
// A chunk begins at a multiple of kChunkPlace, so that it can be found from an object's address. The gap between two
// chunks is for the bookkeeping of the allocator. Not larger: to align a chunk the allocator first takes twice its
// size. A block above 128 KiB it would take directly from the system and waste half of it.
constexpr std::size_t kChunkPlace = std::size_t{32} * 1024;
constexpr std::size_t kChunkSize = kChunkPlace - 64;

// The start of a chunk.
struct Chunk
{
    // The number of its objects not deleted yet; more than there can ever be while a thread still takes objects from
    // it.
    std::atomic<std::int64_t> live;
};
constexpr std::size_t kFirst = 64; // where the chunk's objects begin
constexpr std::int64_t kTaken = std::int64_t{1} << 40;

void Subtract(Chunk* chunk, std::int64_t count) noexcept
{
    if (chunk->live.fetch_sub(count, std::memory_order_acq_rel) == count)
        ::operator delete (static_cast<void*>(chunk), std::align_val_t{kChunkPlace});
}

// A thread counts the objects of its current chunk itself, and updates the chunk when it moves on to another.
struct Own
{
    char* at = nullptr; // where the next object goes
    char* end = nullptr;
    Chunk* taking = nullptr;
    std::int64_t taken = 0;
    Chunk* deleting = nullptr;
    std::int64_t deleted = 0;

    void FinishTaking() noexcept
    {
        if (taking != nullptr)
            Subtract(taking, kTaken - taken);
        at = nullptr;
        end = nullptr;
        taking = nullptr;
        taken = 0;
    }
    void FinishDeleting() noexcept
    {
        if (deleting != nullptr)
            Subtract(deleting, deleted);
        deleting = nullptr;
        deleted = 0;
    }
};
constinit thread_local Own ofThread JOBX_NEAR_THREAD_LOCAL;

// Updates the chunks at the end of the thread.
class AtThreadEnd
{
public:
    AtThreadEnd() = default;
    AtThreadEnd(const AtThreadEnd&) = delete;
    AtThreadEnd& operator=(const AtThreadEnd&) = delete;
    ~AtThreadEnd()
    {
        ofThread.FinishTaking();
        ofThread.FinishDeleting();
    }
    void Need() noexcept { m_needed = true; }

private:
    bool m_needed = false;
};
thread_local AtThreadEnd atThreadEnd;

void BeginChunk()
{
    void* const memory = Guarded([] { return ::operator new (kChunkSize, std::align_val_t{kChunkPlace}); });
    atThreadEnd.Need();
    ofThread.FinishTaking();
    ofThread.taking = new (memory) Chunk{{kTaken}};
    ofThread.at = static_cast<char*>(memory) + kFirst;
    ofThread.end = static_cast<char*>(memory) + kChunkSize;
}

void BeginDeleting(Chunk* chunk) noexcept
{
    atThreadEnd.Need();
    ofThread.FinishDeleting();
    ofThread.deleting = chunk;
}

// The alignment of an object of that size: sizes are multiples of the alignment.
constexpr std::size_t AlignmentOf(std::size_t size) noexcept
{
    return size % 16 == 0 ? 16 : 8;
}

// Rounds up to a multiple of a power of two.
constexpr std::size_t RoundedUp(std::size_t value, std::size_t to) noexcept
{
    return (value + to - 1) & ~(to - 1);
}

// With separate blocks, memory checkers see each object.
constexpr bool HasOwnBlock(std::size_t size) noexcept
{
#if defined(JOBX_CHECKED_MEMORY)
    static_cast<void>(size);
    return true;
#else
    constexpr std::size_t kLargestPooled = 1024;
    return size > kLargestPooled;
#endif
}
} // namespace

void* CPooledRecord::operator new(std::size_t size)
{
    if (HasOwnBlock(size))
        return CRaisingNew::operator new(size);
    const std::size_t room = RoundedUp(size, 8);
    const auto address = reinterpret_cast<std::uintptr_t>(ofThread.at);
    std::size_t gap = RoundedUp(address, AlignmentOf(room)) - address;
    if (static_cast<std::size_t>(ofThread.end - ofThread.at) < gap + room)
    {
        BeginChunk();
        gap = 0;
    }
    char* const object = ofThread.at + gap;
    ofThread.at = object + room;
    ++ofThread.taken;
    return object;
}

void CPooledRecord::operator delete(void* record, std::size_t size) noexcept
{
    if (record == nullptr)
        return;
    if (HasOwnBlock(size))
    {
        ::operator delete(record);
        return;
    }
    const auto offset = reinterpret_cast<std::uintptr_t>(record) % kChunkPlace;
    auto* const chunk = reinterpret_cast<Chunk*>(static_cast<char*>(record) - offset);
    if (chunk != ofThread.deleting)
        BeginDeleting(chunk);
    ++ofThread.deleted;
}
