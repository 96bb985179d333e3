#pragma once

#include "foundation/JobxExport.h"

#include <cstddef>

// Base of the classes of which a job has very many objects. `new` places them side by side in large chunks, which costs
// less time and memory than a separate block each. A chunk is freed when the last object in it is deleted. The room of
// a single deleted object is not reused before that.
// Results:   exhausted memory raises CMemoryException.
// Threads:   objects may be made on any thread and deleted on any other, all at once.
class JOBX_API CPooledRecord
{
public:
    // Allocates and frees one object.
    static void* operator new(std::size_t size);
    static void operator delete(void* record, std::size_t size) noexcept;
    // Constructs an object at the caller's address.
    static void* operator new(std::size_t /*size*/, void* place) noexcept { return place; }
    static void operator delete(void* /*record*/, void* /*place*/) noexcept {}

protected:
    CPooledRecord() = default;
    CPooledRecord(const CPooledRecord&) = default;
    CPooledRecord& operator=(const CPooledRecord&) = default;
    ~CPooledRecord() = default;
};
