// The files and folders of a job on the disk.
#pragma once

#include "foundation/framework/CString.h"

#include <string>
#include <vector>

// Everything below a directory, in byte order. Paths are below it, with "/" between their parts; a folder comes before
// what is in it. Links are followed, unless they lead in a circle.
struct CSourceTree
{
    std::vector<std::string> folders;
    std::vector<std::string> files;
    std::vector<std::string> others; // pipes, devices, links to nowhere

    // Lists the directory. Returns 0, or the system's error number with the path of the folder that cannot be listed.
    int List(const CString& directory, std::string& failed);
};

// The parts of a path with "/" between its parts: the last, and what is before it ("" if there is only one).
std::string LastPartOf(const std::string& path);
std::string FolderOf(const std::string& path);
// Joins two such paths, of which the first may be "".
std::string Joined(const std::string& folder, const std::string& name);
// The bytes of a text.
std::string ToText(const CString& text);
