#pragma once

#include "foundation/JobxExport.h"
#include "foundation/framework/CString.h"

// How much a message matters: a note is worth knowing, after a warning something may be other than was meant, after an
// error part of the job is missing from the model or wrong.
enum class JOBXseverity : unsigned char
{
    Note,
    Warning,
    Error
};

// One kind of message: its stable code and what it means. All of them are constants of the library.
struct CJOBXmessageKind
{
    const char* code; // three letters for the kind of file and three digits, "FEA012"; never used for something else
    JOBXseverity severity;
    const char* meaning; // one sentence
    const char* example; // lines of a file that bring the message about, or what is on the disk
    const char* advice;  // what to do about it
};

// Something that complete reading has to say about one place in a job.
// Ownership: a plain value; `kind` points to a constant.
struct JOBX_API CJOBXmessage
{
    const CJOBXmessageKind* kind = nullptr; // never null in a message that a sink gets
    CString file;                           // below the job directory with "/" between the parts; "" for the job itself
    int line = 0;                           // in that file, from 1; 0 when the whole file is meant
    CString text;                           // one English sentence

    // The whole of it in one line without a line end: "steps/pcb/profile:3: warning FEA012 The ...". Control
    // characters of names that files hold become "?".
    CString Line() const;
};

// "note", "warning" or "error".
JOBX_API const char* JOBXseverityName(JOBXseverity severity) noexcept;

// Receives the messages of a complete reading.
// Ownership: borrowed by whoever reads.
// Threads:   called on the thread that called the reader, once a file is read, in the order of the job: neither the
//            number of threads nor their speed changes what arrives.
class JOBX_API CJOBXmessageSink
{
public:
    CJOBXmessageSink() = default;
    CJOBXmessageSink(const CJOBXmessageSink&) = delete;
    CJOBXmessageSink& operator=(const CJOBXmessageSink&) = delete;
    virtual ~CJOBXmessageSink();
    // An exception ends the reading and goes on to its caller.
    virtual void OnMessage(const CJOBXmessage& message) = 0;
};

// All kinds of messages, in the order of their codes. `index` counts from 0; null past the end.
JOBX_API const CJOBXmessageKind* pGetJOBXmessageKind(int index) noexcept;
// The kind with this code, letters in any case; null when there is none.
JOBX_API const CJOBXmessageKind* pGetJOBXmessageKindFromCode(const CString& code) noexcept;
