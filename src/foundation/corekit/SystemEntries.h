// What the system answers about the entries of directories. Nothing is reported here; every answer is 0 or the system's
// error number.
#pragma once

#include "foundation/framework/CString.h"

#include <functional>
#include <string>

enum class EntryType
{
    None, // nothing is there
    File, // a regular file
    Directory,
    Link, // told only where links are not followed
    Other // a device, pipe or socket
};

// The type of what is at `path`, links followed. A link to nowhere is nothing.
int ExamineEntry(const CString& path, EntryType& type);
// The same without following a link.
int ExamineEntryItself(const CString& path, EntryType& type);

// The full path of what is at `path`, all links followed.
int ResolveLinks(const CString& path, std::string& real);

// An entry as its directory lists it.
struct ListedEntry
{
    const char* name;
    EntryType type; // links followed; None for a link to nowhere and for what cannot be told
    bool isLink;
    int error; // why the type cannot be told, else 0
};

// Calls `visit` with the entries of the directory at `path` in no order, "." and ".." left out. What `visit` raises
// passes.
int ListEntries(const std::string& path, const std::function<void(const ListedEntry&)>& visit);

// Makes one directory; one that is there already, or a link to one, is fine.
int MakeOneDirectory(const CString& path);

// Makes one directory where nothing is; EEXIST when something is there, whatever it is.
int MakeNewDirectory(const CString& path);

// Gives the entry at `from` the name `to`; a file or link of that name is replaced.
int RenameEntry(const CString& from, const CString& to);
