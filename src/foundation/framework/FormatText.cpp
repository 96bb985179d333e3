#include "foundation/framework/FormatText.h"

#include <clocale>
#include <cstdio>

#if defined(_WIN32)
#include <locale.h>

int FormatText(char* buffer, std::size_t size, const char* format, va_list args) noexcept
{
    static const _locale_t kPlain = _create_locale(LC_ALL, "C");
    va_list again;
    va_copy(again, args);
    const int length = _vscprintf_l(format, kPlain, again);
    va_end(again);
    if (buffer != nullptr && size > 0 && length >= 0)
        _vsnprintf_s_l(buffer, size, _TRUNCATE, format, kPlain, args);
    return length;
}
#else
#include <locale.h>

int FormatText(char* buffer, std::size_t size, const char* format, va_list args) noexcept
{
    static const locale_t kPlain = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t before = uselocale(kPlain);
    const int length = std::vsnprintf(buffer, size, format, args);
    uselocale(before);
    return length;
}
#endif
