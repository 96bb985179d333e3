#pragma once

#include "foundation/framework/FrameworkTypes.h"
#include "reading/CJOBXmessage.h"

#include <string_view>

// The two ways of reading a job. Classic reading is compatible to the byte with earlier versions: it takes what its
// hosts know and silently skips the rest. Complete reading takes everything in a job and reports what is wrong.
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
    // False if no more is wanted; then the expander stops.
    virtual bool Take(std::string_view block) = 0;
};

// Expands files made by gzip (RFC 1952). The library does not link an expander; a host that has one can provide it.
// Threads:   called from several threads at once.
class JOBX_API CJOBXgzipExpander
{
public:
    CJOBXgzipExpander() = default;
    CJOBXgzipExpander(const CJOBXgzipExpander&) = delete;
    CJOBXgzipExpander& operator=(const CJOBXgzipExpander&) = delete;
    virtual ~CJOBXgzipExpander();
    // Passes the expanded contents of `data`, the bytes of a whole file, to `taker`. False if the data is damaged or
    // cut short; then what was passed before is discarded.
    virtual bool Expand(std::string_view data, CJOBXblockTaker& taker) = 0;
};

// How a job is read; see CJOBX::SetReading.
// Ownership: a plain value; borrows the sink and the expander, which must live until the read call returns.
// Threads:   nothing in it is shared: two threads may read two jobs in two ways.
struct JOBX_API CJOBXreading
{
    // How to read.
    JOBXway way = JOBXway::Classic;
    // The rest is for complete reading only.
    CJOBXmessageSink* pSink = nullptr;          // null: no messages
    CJOBXgzipExpander* pGzipExpander = nullptr; // null: gzip files are reported and not read
    int nMessagesPerCode = 10;                  // of one code in one file; the rest are counted. 0: all
    ULONGLONG nExpansionLimit = 1ULL << 30U;    // the most bytes that one compressed file may expand to
    // Keeps the bytes of all files in memory, so that CJOBX::SaveODBData works even if they change or go.
    bool bKeepText = false;
    // Whether `way` is Complete.
    bool IsComplete() const noexcept { return way == JOBXway::Complete; }
};
