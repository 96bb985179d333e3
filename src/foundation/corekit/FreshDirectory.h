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

// As MakeFreshDirectory, but a directory that is there already stays with what it holds; one entry name only.
CString MakeEntryDirectory(const CString& parent, const CString& name, const char* sourceFile, int line);
