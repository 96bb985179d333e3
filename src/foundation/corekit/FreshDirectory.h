// Makes directories for writers.
#pragma once

#include "foundation/framework/CString.h"

// Whether `name`, which may come from a job, is a valid name of one directory entry: not empty, not "." or "..", and
// without a separator.
bool IsEntryName(const CString& name);

// Makes the directory `name` below `parent` and returns its path. An existing one is deleted first, with everything in
// it; a symbolic link is removed, never followed. Returns "" if the directory could not be made. If the name is empty
// or leads out of the parent by "..", returns "" and neither deletes nor makes anything.
CString MakeFreshDirectory(const CString& parent, const CString& name, const char* sourceFile, int line);

// As above, for a directory given by its path alone.
CString MakeFreshDirectory(const CString& path, const char* sourceFile, int line);

// As above, ignoring failure.
void ReplaceDirectory(const CString& path);

// The first half of MakeFreshDirectory, for callers with work to do before anything is replaced. Returns false, having
// done nothing, if the name leads out of the parent or the directory exists. `path` is the new directory, "" if it
// could not be made.
bool MakeDirectoryBelow(const CString& parent, const CString& name, CString& path);

// Like MakeFreshDirectory, but keeps an existing directory and its contents. `name` must be a single entry name.
CString MakeEntryDirectory(const CString& parent, const CString& name, const char* sourceFile, int line);
