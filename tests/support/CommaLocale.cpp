#include "support/CommaLocale.h"

#include <clocale>
#include <cstdlib>
#include <stdexcept>

namespace
{
constexpr const char* kNames[] = {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "de-DE"};

bool Switch(const char* name)
{
    try
    {
        std::locale::global(std::locale(name)); // switches the C locale too
    }
    catch (const std::runtime_error&)
    {
        return false;
    }
    return std::setlocale(LC_ALL, name) != nullptr && *std::localeconv()->decimal_point == ',';
}

bool SwitchToFirstKnown()
{
    for (const char* const name : kNames)
    {
        if (Switch(name))
            return true;
    }
    return false;
}
} // namespace

CommaLocale::CommaLocale() : m_sOldC(std::setlocale(LC_ALL, nullptr))
{
    m_isActive = SwitchToFirstKnown();
#if !defined(_WIN32)
    if (!m_isActive && std::getenv("LOCPATH") == nullptr)
    {
        setenv("LOCPATH", JOBX_LOCALE_DIR, 1); // where the build compiled one
        m_isActive = SwitchToFirstKnown();
        unsetenv("LOCPATH");
    }
#endif
}

CommaLocale::~CommaLocale()
{
    std::locale::global(m_oldCpp);
    std::setlocale(LC_ALL, m_sOldC.c_str());
}
