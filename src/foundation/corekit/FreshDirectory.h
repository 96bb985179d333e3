// Directories that a writer makes anew.
#pragma once

#include "foundation/framework/CString.h"

// Whether `name`, which may have come out of a job, is one entry of a directory: not empty, not "." or "..", without a
// separator.
bool IsEntryName(const CString& name);

// The directory `name` below `parent`, made afresh: one that was there is deleted with everything in it. "" when it
// could not be made, or when the name is empty or leads out of the parent by "..": nothing is deleted or made then. A
// symbolic link that stood there is removed, never followed.
CString MakeFreshDirectory(const CString& parent, const CString& name, const char* sourceFile, int line);

// The same for a directory given by its path alone.
CString MakeFreshDirectory(const CString& path, const char* sourceFile, int line);

// The same without an answer, for who writes there whatever comes of it.
void ReplaceDirectory(const CString& path);

// The first half of MakeFreshDirectory, for who has something to do before anything is replaced: false when the name
// leads out of the parent or when something is there, and then nothing was done. `path` is the directory that was made,
// "" when it could not be made.
bool MakeDirectoryBelow(const CString& parent, const CString& name, CString& path);

// As MakeFreshDirectory, but a directory that is there already stays with what it holds; one entry name only.
CString MakeEntryDirectory(const CString& parent, const CString& name, const char* sourceFile, int line);
