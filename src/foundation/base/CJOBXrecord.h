#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/JobxExport.h"

#include <cstddef>
#include <new>

// Base of the records of which a job has very many. Those that `new` makes lie side by side in large blocks, so that
// one costs little time and no memory beyond its size. Adds no members.
// Memory:  a block is freed when the last record in it is deleted; until then the room of a deleted one stays unused.
//          A thread may keep a few blocks longer: until it makes or deletes other records, or ends.
// Threads: records may be made on any thread and deleted on any other, all at once.
class JOBX_API CJOBXrecord : public CRaisingNew
{
public:
    using CRaisingNew::operator new; // at a place of the caller's
    using CRaisingNew::operator delete;
    // Room for a record. Exhausted memory raises CMemoryException; the form with a tag then returns null.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t& tag) noexcept;
    // Give the room back; null is allowed.
    static void operator delete(void* record) noexcept;
    static void operator delete(void* record, const std::nothrow_t& tag) noexcept;

protected:
    CJOBXrecord() = default;
    CJOBXrecord(const CJOBXrecord&) = default;
    CJOBXrecord& operator=(const CJOBXrecord&) = default;
    ~CJOBXrecord() = default;
};
