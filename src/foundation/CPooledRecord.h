#pragma once

#include "foundation/JobxExport.h"

#include <cstddef>

// Base of the classes of which a job has very many objects: takes their memory one behind the other from large chunks,
// which costs less time and room than a block for each. A chunk goes back to the system when the last object in it is
// deleted; the room of a single object is not used again before that.
// Results: exhausted memory raises CMemoryException.
// Threads: objects may be made and deleted on any threads at once, also on another one than that which made them.
class JOBX_API CPooledRecord
{
public:
    // Memory for one object, and back.
    static void* operator new(std::size_t size);
    static void operator delete(void* record, std::size_t size) noexcept;
    // An object at a place of the caller's.
    static void* operator new(std::size_t /*size*/, void* place) noexcept { return place; }
    static void operator delete(void* /*record*/, void* /*place*/) noexcept {}

protected:
    CPooledRecord() = default;
    CPooledRecord(const CPooledRecord&) = default;
    CPooledRecord& operator=(const CPooledRecord&) = default;
    ~CPooledRecord() = default;
};
