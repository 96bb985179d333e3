#pragma once

#include <cstdio>

// Whether what is written to the stream appears on a terminal.
bool IsTerminal(std::FILE* stream);
