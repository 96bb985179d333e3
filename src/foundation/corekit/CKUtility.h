#pragma once

#include "foundation/corekit/CKDiagnostic.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

#include <atomic>
#include <mutex>

// Paths, directories and compressed files: every call of the library to the file system goes through here.
// Paths:     any bytes except NUL; the separator is "/", on Windows also "\". Case-sensitive, except FindPath.
// Results:   errors of the file system raise nothing: a failed test returns false, a failed listing adds nothing, and
//            every failure goes to the diagnostic sink. For a test, "does not exist" is a result, not a failure.
//            Exhausted memory raises CMemoryException.
// Callers:   diagnostics name `sourceFile` and `line` as the caller; they have no other effect.
// Threads:   every operation may be called from several threads at once.
class JOBX_API CKUtility
{
public:
    // The only instance, made on first use and never deleted.
    static CKUtility* GetInstance();
    CKUtility(const CKUtility&) = delete;
    CKUtility& operator=(const CKUtility&) = delete;

    // Joins `path` and `segment` with exactly one separator: drops separators at the end of the path and at the start
    // of the segment. If one is empty, returns the other.
    CString CKPathCombine(const CString& path, const CString& segment, const CString& sourceFile = CString(),
                          int line = 0) const;
    // 1: the directory part of the path, before its last separator ("/" for an entry of the root). 2: the last
    // component. Separators at the end of the path are ignored. "" if there is no such part, and for other selectors.
    CString GetSegmntFromFilePath(const CString& path, int which) const;

    // Whether there is a regular file or a link to one; always false for a device, pipe or socket.
    bool DoesFileExist(const CString& path, const CString& sourceFile = CString(), int line = 0) const;
    // Whether there is a regular file, a directory, or a link to either.
    bool DoesFileOrDirExist(const CString& path, const CString& sourceFile = CString(), int line = 0) const;
    bool IsFile(const CString& path) const; // same as DoesFileExist
    bool IsDir(const CString& path) const;  // a directory or a link to one

    // Where to read `name` (an entry or a path of several components) below `dir`: its exact spelling if that exists;
    // else, component by component, the entry that matches ignoring the case of ASCII letters, the first in byte order;
    // else the exact spelling. Only for reading: writers use the exact spelling.
    CString FindPath(const CString& dir, const CString& name, const CString& sourceFile = CString(),
                     int line = 0) const;

    // Appends the full path of every regular file in `dir` whose name matches `pattern`, and of those in its
    // subdirectories if `recurse` is not 0, sorted by byte value. "*" matches any characters and "?" any one character,
    // ignoring the case of ASCII letters; "*.*" matches every name. Links to files are listed, links to directories are
    // not followed.
    void GetAllFileListIn(const CString& dir, CStringArray& list, const CString& pattern, int recurse) const;
    // Appends the full path of every subdirectory of `dir`, and of those below them if `recurse` is not 0, sorted by
    // byte value. A link to a directory is listed but not followed.
    void GetAllSubDirListIn(const CString& dir, CStringArray& list, int recurse) const;

    // Makes one directory, but not its parents; an existing one is fine.
    void MakeDirectory(const CString& path) const;
    // Removes the directory with everything in it. Links, `path` itself or below it, are removed and never followed.
    // Does nothing if the directory does not exist. Does not remove a file, or a path that ends in ".", ".." or the
    // root.
    void DeleteDirectory(const CString& path) const;

    // Decompresses the ".Z" file at `path` (suffix in any letter case) to a file beside it, named without the suffix.
    // Returns 1, or 0 if the file cannot be read, is damaged or exceeds the limit, or if the target cannot be written;
    // then the target does not change. The target appears complete or not at all: it is written under another name
    // first, and then replaces an existing file or link, not what the link points to. The ".Z" file is kept.
    int GDecompress(const CString& path) const;
    // The most bytes that one file may decompress to; initially 1 GiB.
    void SetDecompressionLimit(ULONGLONG bytes);
    ULONGLONG GetDecompressionLimit() const;

    // The most entries that one listing may have, including subdirectories; initially no limit. A listing with more
    // adds nothing and is reported as "list" with EOVERFLOW.
    void SetListingLimit(ULONGLONG entries);
    ULONGLONG GetListingLimit() const;
    // Hides directories and files outside `directory` from tests, FindPath and listings, and readers do not open them.
    // A link that leads out is reported as "follow" with EXDEV, so links stay inside a job. "" removes the boundary;
    // initially there is none. If the directory does not exist, everything is hidden. Applies to the whole process.
    // Classes with which a host opens files (CFile, CStdioFile, CLogFile) ignore it.
    void SetLinkBoundary(const CString& directory);
    // The full path of the boundary without links; "" if there is none.
    CString GetLinkBoundary() const;

    // How many bytes of files all readers have read since the process started. A host can compare it with the size of a
    // job's files to show how far reading is.
    ULONGLONG GetBytesRead() const;

    // Sends diagnostics to `sink` from now on, null for nowhere; borrowed. Returns the previous sink, which is no
    // longer in use. The initial one prints each diagnostic as a line on standard error. It is never deleted, so it can
    // be set again.
    CKDiagnosticSink* SetDiagnosticSink(CKDiagnosticSink* sink);
    // Passes a failure to the sink.
    void Report(const char* sourceFile, int line, const char* operation, const CString& path, int systemError) const;

private:
    friend class CInputFile; // counts what it reads

    CKUtility();
    ~CKUtility() = default;

    static constexpr ULONGLONG kDefaultDecompressionLimit = 1ULL << 30U;

    std::atomic<ULONGLONG> m_nDecompressionLimit{kDefaultDecompressionLimit};
    std::atomic<ULONGLONG> m_nListingLimit{~0ULL};
    std::atomic<ULONGLONG> m_nBytesRead{0};
    std::atomic<bool> m_hasLinkBoundary{false};
    mutable std::mutex m_boundaryLock;
    CString m_sLinkBoundary;
    mutable std::recursive_mutex m_sinkLock; // a sink may set the sink
    CKDiagnosticSink* m_pSink;
};
