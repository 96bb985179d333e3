#pragma once

#include <cstddef>
#include <cstdio>

// Whether the stream is a terminal.
bool IsTerminal(std::FILE* stream);

// How many characters a line of the terminal has: 80 if the system does not know; 0 if the stream is no terminal.
std::size_t TerminalWidth(std::FILE* stream);

// The width of what is laid out for people: 80, or the terminal's where it is narrower, but at least 40.
std::size_t ScreenWidth(std::FILE* stream);
