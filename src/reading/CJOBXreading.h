#pragma once

#include "foundation/framework/FrameworkTypes.h"
#include "reading/CJOBXmessage.h"

#include <string_view>

// The two ways of reading a job. Classic is what the library has always done, to the byte: it takes what its hosts
// know and passes over the rest in silence. Complete takes everything a job holds and says what is wrong.
enum class JOBXway : unsigned char
{
    Classic,
    Complete
};

// Takes the blocks of a file that is being expanded.
class JOBX_API CJOBXblockTaker
{
public:
    CJOBXblockTaker() = default;
    CJOBXblockTaker(const CJOBXblockTaker&) = delete;
    CJOBXblockTaker& operator=(const CJOBXblockTaker&) = delete;
    virtual ~CJOBXblockTaker();
    // False when no more is wanted; the expander stops then.
    virtual bool Take(std::string_view block) = 0;
};

// Expands files that gzip made (RFC 1952). The library links no such thing itself; a host that has one hands it over.
// Threads: called from several threads at once.
class JOBX_API CJOBXgzipExpander
{
public:
    CJOBXgzipExpander() = default;
    CJOBXgzipExpander(const CJOBXgzipExpander&) = delete;
    CJOBXgzipExpander& operator=(const CJOBXgzipExpander&) = delete;
    virtual ~CJOBXgzipExpander();
    // Hands what is in `data`, the bytes of a whole file, to `taker`. False when the data is damaged or cut short; what
    // was handed over before is then thrown away.
    virtual bool Expand(std::string_view data, CJOBXblockTaker& taker) = 0;
};

// How a job is read; see CJOBX::SetReading.
// Ownership: a plain value; borrows the sink and the expander, which must live until the read call returns.
// Threads:   nothing of it is shared: two threads may read two jobs in two ways.
struct JOBX_API CJOBXreading
{
    JOBXway way = JOBXway::Classic;
    // The rest concerns complete reading only.
    CJOBXmessageSink* pSink = nullptr;          // null: nobody is told
    CJOBXgzipExpander* pGzipExpander = nullptr; // null: files that gzip made are reported and not read
    int nMessagesPerCode = 10;                  // of one code in one file; the rest are counted. 0: all of them
    ULONGLONG nExpansionLimit = 1ULL << 30U;    // bytes to which one compressed file may expand
    bool IsComplete() const noexcept { return way == JOBXway::Complete; }
};
