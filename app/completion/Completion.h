// What the completion scripts of the shells offer. They only pass on what the program prints, so there is one list of
// commands, options and values for all shells.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace CLI
{
class App;
} // namespace CLI

// The first word of a command line that asks for completion; no help mentions it.
inline constexpr std::string_view kCompletionWord = "__complete";

// Prints what the last of these words, which follow the program's name, can become. The first line is "words",
// "directories" or "files"; behind "words" there is one word in a line, with a tab and a description if it has one.
// Names of steps and layers come from the matrix of the job among the words, names of nets from its netlists or else its
// EDA data; nothing more of a job is read.
void PrintCompletions(const CLI::App& app, const std::vector<std::string>& words);
