#include "Scratch.h"

#include <cstdio>
#include <cstdlib>

TempDir& Scratch()
{
    static TempDir folder;
    return folder;
}

CString ScratchPath(std::string_view relativePath)
{
    return CString(std::string_view(Scratch().Path(relativePath)));
}

CString ScratchDir(std::string_view relativePath)
{
    return CString(std::string_view(Scratch().MakeDir(relativePath)));
}

CString ScratchFile(std::string_view relativePath, std::string_view bytes)
{
    CString path = ScratchPath(relativePath);
    std::FILE* const file = std::fopen(path, "wb");
    Require(file != nullptr, "a scratch file can be made");
    Require(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size(), "a scratch file can be written");
    Require(std::fclose(file) == 0, "a scratch file can be closed");
    return path;
}

void Require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}
