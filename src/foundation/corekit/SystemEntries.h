// What the system says about directory entries. Nothing is reported here; every function returns 0 or the system's
// error number.
#pragma once

#include "foundation/framework/CString.h"

#include <functional>
#include <string>
#include <string_view>

enum class EntryType
{
    None, // nothing is there
    File, // a regular file
    Directory,
    Link, // only if links are not followed
    Other // a device, pipe or socket
};

// The type of the entry at `path`, following links. A link to nowhere counts as None.
int ExamineEntry(const CString& path, EntryType& type);
// As above, without following a link.
int ExamineEntryItself(const CString& path, EntryType& type);

// The size in bytes of the regular file at `path`, following links.
int SizeOfFile(const CString& path, ULONGLONG& size);

// The full path of the entry at `path`, with all links resolved.
int ResolveLinks(const CString& path, std::string& real);

// An entry as its directory lists it.
struct ListedEntry
{
    const char* name;
    EntryType type; // following links; None for a link to nowhere or if it cannot be determined
    bool isLink;
    int error; // why the type cannot be determined, else 0
};

// Calls `visit` with the entries of the directory at `path` in any order, without "." and "..". An exception from
// `visit` is passed on.
int ListEntries(const std::string& path, const std::function<void(const ListedEntry&)>& visit);

// Makes one directory; an existing one, or a link to one, is fine.
int MakeOneDirectory(const CString& path);

// Makes one new directory; EEXIST if anything is there.
int MakeNewDirectory(const CString& path);

// Renames the entry at `from` to `to`; an existing file or link is replaced.
int RenameEntry(const CString& from, const CString& to);

// Makes a file that must not exist yet, with these bytes. What was written of one that could not be finished stays.
int WriteNewFile(const CString& path, std::string_view bytes);

// The reason that an error number stands for, in the C locale if the system has its texts.
std::string SystemReason(int error);
