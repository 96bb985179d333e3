#include "foundation/CRecordPool.h"

#include "foundation/base/CJOBXrecord.h"
#include "foundation/framework/CArray.h"
#include "foundation/framework/CException.h"

#include <algorithm>
#include <utility>

// Of the ways to reach a thread's own variable the fastest that a shared library may use.
#if defined(__GNUC__)
#define JOBX_NEAR_THREAD_LOCAL __attribute__((tls_model("initial-exec")))
#else
#define JOBX_NEAR_THREAD_LOCAL
#endif

struct CRecordChunk::Kept : CRaisingNew
{
    Kept(CRecordKeep& toKeep, Kept* others) : keep(&toKeep), next(others) {}

    CRecordKeep* keep;
    Kept* next;
};

namespace
{
// What a page begins with.
struct Page
{
    CRecordChunk* chunk;
};

// What begins a block of a single object; the object begins where a page may, where none of a chunk does.
struct OwnBlock
{
    void* memory;
};

// With what the allocator adds this makes a block of a power of two.
constexpr std::size_t kLargestChunk = std::size_t{512} * 1024;
constexpr std::size_t kAllocatorsOwn = 32;

// Objects of hosts' own classes that have a block of their own.
constinit std::atomic<std::int64_t> ownBlocks{0};

// Up to a multiple of a power of two.
constexpr std::uintptr_t RoundedUp(std::uintptr_t value, std::uintptr_t to) noexcept
{
    return (value + to - 1) & ~(to - 1);
}

constexpr std::size_t kHeader = RoundedUp(sizeof(CRecordChunk), alignof(std::max_align_t));

// The next place at or behind `at` that is a multiple of `to`.
char* NextMultiple(char* at, std::size_t to) noexcept
{
    const auto address = reinterpret_cast<std::uintptr_t>(at);
    return at + (RoundedUp(address, to) - address);
}

// How far behind the place where a page may begin that address is.
std::size_t OffsetInPage(const void* address) noexcept
{
    return (reinterpret_cast<std::uintptr_t>(address) - kPageOffset) % kRecordPage;
}

// The first place at or behind `at` where a page may begin.
char* NextPage(char* at) noexcept
{
    return at + (kRecordPage - OffsetInPage(at)) % kRecordPage;
}

// An object may stand at each multiple of this: its size is a multiple of the alignment that it needs.
constexpr std::size_t AlignmentOf(std::size_t size) noexcept
{
    return size % alignof(std::max_align_t) == 0 ? alignof(std::max_align_t) : kRecordAlignment;
}

// What the thread works on. It counts the records that it deletes in the chunk of the last of them, and tells the chunk
// when it goes on to another.
struct Own
{
    CRecordRoom general{true};
    CRecordRoom owning{true};
    CRecordRoom plain{false};
    CRecordChunk* deleting = nullptr;
    std::int64_t deleted = 0;
    bool mayCount = false; // whether something at the end of the thread finishes the count
    bool isEnding = false;

    // Afterwards it counts for no chunk. A chunk that goes may delete records of other chunks, those of what it kept,
    // and so begin another count.
    void FinishDeleting() noexcept
    {
        while (CRecordChunk* const chunk = std::exchange(deleting, nullptr))
            chunk->Subtract(std::exchange(deleted, 0));
    }
};
constinit thread_local Own ofThread JOBX_NEAR_THREAD_LOCAL;

// Tells the chunks at the end of the thread.
class AtThreadEnd
{
public:
    AtThreadEnd() = default;
    AtThreadEnd(const AtThreadEnd&) = delete;
    AtThreadEnd& operator=(const AtThreadEnd&) = delete;
    ~AtThreadEnd()
    {
        ofThread.general.Close();
        ofThread.owning.Close();
        ofThread.plain.Close();
        ofThread.FinishDeleting();
        ofThread.isEnding = true;
        ofThread.mayCount = false;
    }
    void Need() noexcept { m_needed = true; }

private:
    bool m_needed = false;
};
thread_local AtThreadEnd atThreadEnd;

// The room that fills the chunk, or null when this thread does not.
CRecordRoom* RoomOf(const CRecordChunk& chunk) noexcept
{
    for (CRecordRoom* const room : {&ofThread.general, &ofThread.plain, &ofThread.owning})
        if (room->Chunk() == &chunk)
            return room;
    return nullptr;
}

void* NewOwnBlock(std::size_t size)
{
    char* const memory = static_cast<char*>(CRaisingNew::operator new(sizeof(OwnBlock) + kRecordPage + size));
    char* const object = NextPage(memory + sizeof(OwnBlock));
    ::new (static_cast<void*>(object - sizeof(OwnBlock))) OwnBlock{memory};
    ownBlocks.fetch_add(1, std::memory_order_relaxed);
    return object;
}

bool HasOwnBlock(const void* object) noexcept
{
    return !kRecordsHaveOwnBlocks && OffsetInPage(object) == 0;
}

void DeleteOwnBlock(void* object) noexcept
{
    ownBlocks.fetch_sub(1, std::memory_order_relaxed);
    ::operator delete(std::launder(reinterpret_cast<OwnBlock*>(static_cast<char*>(object) - sizeof(OwnBlock)))->memory);
}
} // namespace

CRecordChunk::~CRecordChunk()
{
    while (m_kept != nullptr)
    {
        Kept* const kept = m_kept;
        m_kept = kept->next;
        kept->keep->Release();
        delete kept;
    }
}

std::size_t CRecordChunk::RoomBehind(const char* place) const noexcept
{
    return static_cast<std::size_t>(reinterpret_cast<const char*>(this) + m_size - place);
}

CRecordChunk& CRecordChunk::Of(void* object) noexcept
{
    if constexpr (kRecordsHaveOwnBlocks)
        return *std::launder(reinterpret_cast<CRecordChunk*>(static_cast<char*>(object) - kHeader));
    return *std::launder(reinterpret_cast<Page*>(static_cast<char*>(object) - OffsetInPage(object)))->chunk;
}

void CRecordChunk::Keep(CRecordKeep& keep)
{
    if (KeptLast(keep))
        return;
    m_kept = new Kept(keep, m_kept);
    m_lastKept = &keep;
    keep.AddReference();
}

void CRecordChunk::Subtract(std::int64_t records) noexcept
{
    if (m_living.fetch_sub(records, std::memory_order_acq_rel) != records)
        return;
    this->~CRecordChunk();
    ::operator delete(static_cast<void*>(this));
}

void* CRecordRoom::FindAligned(std::size_t size, std::size_t alignment)
{
    if constexpr (kRecordsHaveOwnBlocks)
        return Find(size);
    if (m_end - NextMultiple(m_at, alignment) < static_cast<std::ptrdiff_t>(size))
        OpenPage(size + alignment);
    m_at = NextMultiple(m_at, alignment);
    return m_at;
}

void CRecordRoom::OpenPage(std::size_t size)
{
    if (kRecordsHaveOwnBlocks || m_chunk == nullptr || m_chunk->RoomBehind(m_end) < sizeof(Page) + size)
    {
        OpenChunk(size);
        return;
    }
    KeepRest();
    ::new (static_cast<void*>(m_end)) Page{m_chunk};
    BeginPage(m_end, sizeof(Page));
}

void CRecordRoom::BeginPage(char* page, std::size_t header) noexcept
{
    m_at = page + header;
    m_end = page + std::min(kRecordPage, m_chunk->RoomBehind(page));
}

void CRecordRoom::KeepRest() noexcept
{
    if (m_end - m_at <= m_restEnd - m_restAt)
        return;
    m_restAt = m_at;
    m_restEnd = m_end;
}

void* CRecordRoom::TakeBlock(std::size_t size)
{
    if (static_cast<std::size_t>(m_restEnd - m_restAt) >= size)
    {
        ++m_living;
        return std::exchange(m_restAt, m_restAt + size);
    }
    void* const place = Find(size);
    Take(size);
    return place;
}

void CRecordRoom::OpenChunk(std::size_t size)
{
    const std::size_t whole = kRecordsHaveOwnBlocks ? kHeader + size : m_nextSize - kAllocatorsOwn;
    char* const memory = static_cast<char*>(CRaisingNew::operator new(whole));
    atThreadEnd.Need();
    ofThread.mayCount = !ofThread.isEnding;
    const std::size_t doubled = std::min(2 * m_nextSize, kLargestChunk);
    Close();
    m_chunk = ::new (static_cast<void*>(memory)) CRecordChunk(whole, m_owning || kRecordsHaveOwnBlocks);
    m_nextSize = doubled;
    if constexpr (kRecordsHaveOwnBlocks)
    {
        m_at = memory + kHeader;
        m_end = memory + whole;
    }
    else if (OffsetInPage(memory) == 0)
    {
        BeginPage(memory, kHeader);
    }
    else
    {
        char* const page = NextPage(memory + kHeader);
        ::new (static_cast<void*>(page)) Page{m_chunk};
        BeginPage(page, sizeof(Page));
    }
}

void CRecordRoom::Released(std::int64_t records) noexcept
{
    m_living -= records;
    if (m_chunk->Living() + m_living == CRecordChunk::kFilling)
        Close();
}

void CRecordRoom::Close() noexcept
{
    CRecordChunk* const chunk = std::exchange(m_chunk, nullptr);
    const std::int64_t living = std::exchange(m_living, 0);
    m_at = nullptr;
    m_end = nullptr;
    m_restAt = nullptr;
    m_restEnd = nullptr;
    m_nextSize = kSmallestChunk;
    if (chunk != nullptr)
        chunk->Subtract(CRecordChunk::kFilling - living);
}

CRecordRoom& record_pool::GeneralRoom() noexcept
{
    return ofThread.general;
}

CRecordRoom& record_pool::PlainRoom() noexcept
{
    return ofThread.plain;
}

CRecordRoom& record_pool::OwningRoom() noexcept
{
    return ofThread.owning;
}

void record_pool::KeepForTaken(CRecordRoom& room, CRecordKeep& keep)
{
    try
    {
        room.Chunk()->Keep(keep);
    }
    catch (...)
    {
        room.Released(1);
        throw;
    }
}

bool record_pool::AreThereOwnBlocks() noexcept
{
    return kRecordsHaveOwnBlocks || ownBlocks.load(std::memory_order_relaxed) != 0;
}

void record_pool::Released(CRecordChunk& chunk, std::int64_t records) noexcept
{
    if (&chunk != ofThread.deleting)
    {
        if (CRecordRoom* const room = RoomOf(chunk))
        {
            room->Released(records);
            return;
        }
        ofThread.FinishDeleting();
        if (!ofThread.mayCount) // and to have its end noticed would take memory, which deleting must not need
        {
            chunk.Subtract(records);
            return;
        }
        ofThread.deleting = &chunk;
    }
    ofThread.deleted += records;
    if (ofThread.deleted == chunk.Living())
        ofThread.FinishDeleting();
}

void* record_pool::NewBlock(std::size_t size)
{
    return ofThread.general.TakeBlock(RoundedUp(size, kRecordAlignment));
}

void JobxReturnBlock(void* block) noexcept
{
    record_pool::Released(CRecordChunk::Of(block), 1);
}

void* CJOBXrecord::operator new(std::size_t size)
{
    if (!kRecordsHaveOwnBlocks && size > kLargestRecord)
        return NewOwnBlock(size);
    const std::size_t room = RoundedUp(size, kRecordAlignment);
    void* const place = ofThread.general.FindAligned(room, AlignmentOf(room));
    ofThread.general.Take(room);
    return place;
}

void* CJOBXrecord::operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    try
    {
        return operator new(size);
    }
    catch (CMemoryException* exception)
    {
        exception->Delete();
        return nullptr;
    }
}

void CJOBXrecord::operator delete(void* record) noexcept
{
    if (record == nullptr)
        return;
    if (HasOwnBlock(record))
        DeleteOwnBlock(record);
    else
        record_pool::Released(CRecordChunk::Of(record), 1);
}

void CJOBXrecord::operator delete(void* record, const std::nothrow_t& /*tag*/) noexcept
{
    operator delete(record);
}
