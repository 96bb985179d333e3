#pragma once

#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"

// How serious a message is. Note: worth knowing. Warning: something may not be as intended. Error: part of the job is
// missing from the model or wrong.
enum class JOBXseverity : unsigned char
{
    Note,
    Warning,
    Error
};

// One kind of message: its stable code and its meaning. All of them are constants of the library.
struct CJOBXmessageKind
{
    const char* code; // three letters for the kind of file and three digits, "FEA012"; never reused for anything else
    JOBXseverity severity; // of all messages of this kind
    const char* meaning;   // one sentence
    const char* example;   // lines of a file that cause the message, or what is on the disk
    const char* advice;    // what to do about it
};

// A message of complete reading about one place in a job.
// Ownership: a plain value; `kind` points to a constant.
struct JOBX_API CJOBXmessage
{
    const CJOBXmessageKind* kind = nullptr; // never null in a message for a sink
    CString file;                           // below the job directory with "/" between the parts; "" for the job itself
    int line = 0;                           // in that file, from 1; 0 for the whole file
    CString text;                           // one English sentence
    int count = 1; // how often it happened; above 1 in the message about those that the limit left out

    // All of it in one line without a line end: "steps/pcb/profile:3: warning FEA012 The ...". Control characters in
    // names from files become "?".
    CString Line() const;
};

// "note", "warning" or "error".
JOBX_API const char* JOBXseverityName(JOBXseverity severity) noexcept;

// Receives the messages of a complete reading.
// Ownership: borrowed by the reader.
// Threads:   called on the thread that called the reader, after a file is read, in the order of the job. The messages
//            do not depend on the number or speed of threads.
class JOBX_API CJOBXmessageSink
{
public:
    CJOBXmessageSink() = default;
    CJOBXmessageSink(const CJOBXmessageSink&) = delete;
    CJOBXmessageSink& operator=(const CJOBXmessageSink&) = delete;
    virtual ~CJOBXmessageSink();
    // An exception ends the reading and passes to its caller.
    virtual void OnMessage(const CJOBXmessage& message) = 0;
};

// All kinds of messages, in the order of their codes. `index` counts from 0; null past the end.
JOBX_API const CJOBXmessageKind* pGetJOBXmessageKind(int index) noexcept;
// The kind with this code, in any letter case; null if there is none.
JOBX_API const CJOBXmessageKind* pGetJOBXmessageKindFromCode(const CString& code) noexcept;
