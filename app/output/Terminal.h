#pragma once

#include <cstdio>

// Whether the stream is a terminal.
bool IsTerminal(std::FILE* stream);
