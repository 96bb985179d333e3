#pragma once

#include <string>
#include <string_view>

// What the file at that path below a job is, in a few words; "" if its place and name mean nothing to jobx.
std::string KindOfFile(std::string_view path);
