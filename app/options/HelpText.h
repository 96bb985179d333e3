// The layout of the help texts.
#pragma once

#include <memory>
#include <string>

namespace CLI
{
class FormatterBase;
} // namespace CLI

// Texts are wrapped at 80 columns. A help text begins with the example, unless it is empty, and leaves it to the program
// to say which options cannot be combined. `purpose` says what the example is for.
std::shared_ptr<CLI::FormatterBase> HelpFormatter(const std::string& purpose, const std::string& example);
