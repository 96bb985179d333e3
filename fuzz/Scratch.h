// A folder of this process's own for what the library reads and writes by path, and what is checked on the way.
#pragma once

#include "foundation/framework/CString.h"
#include "support/TempDir.h"

#include <string_view>

// One for the process, in the system's folder for temporary files; gone when the process ends by itself.
TempDir& Scratch();

CString ScratchPath(std::string_view relativePath);
// Makes the folder and those above it; answers its path.
CString ScratchDir(std::string_view relativePath);
// Makes the file with exactly these bytes; answers its path. The folder above it must be there.
CString ScratchFile(std::string_view relativePath, std::string_view bytes);

// Ends the process when `holds` is false, so that the input that led here is kept as a finding.
void Require(bool holds, const char* what);
