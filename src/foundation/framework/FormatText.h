// The one home of printf-style printing in the library.
#pragma once

#include "foundation/JobxExport.h"

#include <cstdarg>
#include <cstddef>

// As vsnprintf in the C locale, whatever locale the process or thread has set: writes at most `size` bytes with the
// terminator into `buffer` and returns the length of the whole text, below 0 when the format cannot be printed.
int FormatText(char* buffer, std::size_t size, const char* format, va_list args) noexcept;
