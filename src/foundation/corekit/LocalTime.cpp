#include "foundation/corekit/LocalTime.h"

#include "foundation/framework/FrameworkThrow.h"

#include <array>
#include <ctime>

CString LocalTimeText(const char* format)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#if defined(_WIN32)
    const bool known = localtime_s(&local, &now) == 0;
#else
    const bool known = localtime_r(&now, &local) != nullptr;
#endif
    if (!known)
        AfxThrowInvalidArgException();
    std::array<char, 128> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), format, &local);
    return {text.data(), static_cast<int>(length)};
}
