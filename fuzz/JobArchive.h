// Several files in one input. Each begins with a line ">>> NAME"; what follows, up to the line end before the next such
// line, is its bytes. A name that ends with "/" is a directory.
#pragma once

#include <string>
#include <string_view>

std::string PackFile(std::string_view name, std::string_view bytes);

// Makes the files below `folder`, an existing directory. Whatever names the archive holds, nothing is made outside it:
// they are cut at separators, and parts that are empty, lead upwards or are too long are changed or left out. What
// cannot be made is left out.
void UnpackFiles(std::string_view archive, const std::string& folder);
