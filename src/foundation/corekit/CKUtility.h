#pragma once

#include "foundation/JobxExport.h"
#include "foundation/corekit/CKDiagnostic.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "foundation/framework/FrameworkTypes.h"

#include <atomic>
#include <mutex>

// Paths, directories and compressed files: every call of the library to the file system goes through here.
// Paths:   any bytes but NUL; the separator is "/", on Windows "\" too. Letter case counts, except in FindPath.
// Results: nothing is thrown for what the file system answers: a test that fails is false, a listing that fails adds
//          nothing, and every failure goes to the diagnostic sink. "Does not exist" is an answer of a test, not a
//          failure of it. Exhausted memory raises CMemoryException.
// Callers: `sourceFile` and `line` tell the diagnostics who asked; they change nothing else.
// Threads: every operation may be called from several threads at once.
class JOBX_API CKUtility
{
public:
    // The one instance, made on first use; the process keeps it.
    static CKUtility* GetInstance();
    CKUtility(const CKUtility&) = delete;
    CKUtility& operator=(const CKUtility&) = delete;

    // `segment` inside `path` with exactly one separator between them: separators at the end of the path and at the
    // front of the segment are dropped. Each of the two alone when the other is empty.
    CString CKPathCombine(const CString& path, const CString& segment, const CString& sourceFile = CString(),
                          int line = 0) const;
    // 1: the directory part of the path, before its last separator ("/" for an entry of the root). 2: the last
    // component. Separators at the end of the path do not count. "" when there is no such part, and for other
    // selectors.
    CString GetSegmntFromFilePath(const CString& path, int which) const;

    // Whether a regular file, or a link to one, is there; never true for a device, pipe or socket.
    bool DoesFileExist(const CString& path, const CString& sourceFile = CString(), int line = 0) const;
    // Whether a regular file or a directory, or a link to either, is there.
    bool DoesFileOrDirExist(const CString& path, const CString& sourceFile = CString(), int line = 0) const;
    bool IsFile(const CString& path) const; // as DoesFileExist
    bool IsDir(const CString& path) const;  // a directory or a link to one

    // Where to read `name` (an entry or a path of several components) below `dir`: its exact spelling when that exists,
    // else, component by component, the entry that equals it ignoring the case of ASCII letters, the first in byte
    // order when several do. The exact spelling when there is none. For reading only: whoever writes spells exactly.
    CString FindPath(const CString& dir, const CString& name, const CString& sourceFile = CString(),
                     int line = 0) const;

    // Appends the full path of every regular file in `dir` whose name matches `pattern`, and with `recurse` not 0 of
    // those in its subdirectories at any depth, sorted by byte value. "*" stands for any characters and "?" for any
    // one, the case of ASCII letters does not count; "*.*" matches every name. Links to files are listed, links to
    // directories are not followed.
    void GetAllFileListIn(const CString& dir, CStringArray& list, const CString& pattern, int recurse) const;
    // Appends the full path of every subdirectory of `dir`, and with `recurse` not 0 of those below them, sorted by
    // byte value. A link to a directory is listed but not followed.
    void GetAllSubDirListIn(const CString& dir, CStringArray& list, int recurse) const;

    // Makes one directory, no parents; one that is there already is fine.
    void MakeDirectory(const CString& path) const;
    // Removes the directory with everything in it. Links are removed, never what they point to: neither `path` itself
    // nor anything below it is followed. Nothing happens when it does not exist. A file is not removed, nor is a path
    // that ends in ".", ".." or the root.
    void DeleteDirectory(const CString& path) const;

    // Writes what the ".Z" file at `path` (suffix in any letter case) holds beside it, under the name without the
    // suffix. 1 when done. 0 when the file cannot be read, is damaged or holds more than the limit, or when the target
    // cannot be written; the target is then as it was. A target appears whole or not at all: it is written under
    // another name first and replaces what was there, a link itself, not what it points to. The ".Z" file stays.
    int GDecompress(const CString& path) const;
    // The most bytes that one file may decompress to; 1 GiB unless set.
    void SetDecompressionLimit(ULONGLONG bytes);
    ULONGLONG GetDecompressionLimit() const;

    // The most entries that one listing may meet, subdirectories included; no limit unless set. A listing that meets
    // more adds nothing and is reported as "list" with EOVERFLOW.
    void SetListingLimit(ULONGLONG entries);
    ULONGLONG GetListingLimit() const;
    // From now on, directories and files that lie outside `directory` are not there for tests, FindPath and listings,
    // and the readers do not open them. A link that leads out is reported as "follow" with EXDEV, so links stay inside
    // a job. "" takes the boundary away, as it is at first; a directory that does not exist leaves nothing to be seen.
    // The boundary holds for the whole process. Classes that a host opens files with (CFile, CStdioFile, CLogFile)
    // ignore it.
    void SetLinkBoundary(const CString& directory);
    // The boundary in full, without links; "" when there is none.
    CString GetLinkBoundary() const;

    // Sends diagnostics to `sink` from now on, null for nowhere; borrowed. Returns the former one, which is no longer
    // in use by then. At first there is one that prints each diagnostic as a line on standard error; the process keeps
    // it, so that it can be set again.
    CKDiagnosticSink* SetDiagnosticSink(CKDiagnosticSink* sink);
    // Hands a failure to the sink.
    void Report(const char* sourceFile, int line, const char* operation, const CString& path, int systemError) const;

private:
    CKUtility();
    ~CKUtility() = default;

    static constexpr ULONGLONG kDefaultDecompressionLimit = 1ULL << 30U;

    std::atomic<ULONGLONG> m_nDecompressionLimit{kDefaultDecompressionLimit};
    std::atomic<ULONGLONG> m_nListingLimit{~0ULL};
    std::atomic<bool> m_hasLinkBoundary{false};
    mutable std::mutex m_boundaryLock;
    CString m_sLinkBoundary;
    mutable std::recursive_mutex m_sinkLock; // a sink may set the sink
    CKDiagnosticSink* m_pSink;
};
