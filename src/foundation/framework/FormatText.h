// The only place where the library prints in the style of printf.
#pragma once

#include "foundation/framework/JobxExport.h"

#include <cstdarg>
#include <cstddef>

// Like vsnprintf in the C locale, whatever the locale of the process or thread. Writes at most `size` bytes including
// the terminator into `buffer`. Returns the length of the whole text, negative if the format cannot be printed.
int FormatText(char* buffer, std::size_t size, const char* format, va_list args) noexcept;
