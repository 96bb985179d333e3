// Runs a piece of a test in a locale whose decimal mark is a comma, C and C++ alike; the old ones come back after it.
#pragma once

#include <gtest/gtest.h>

#include <locale>
#include <string>

// Threads: changes the whole process; make one only while no other thread runs.
class CommaLocale
{
public:
    CommaLocale();
    ~CommaLocale();
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    // False when the machine has no such locale and could not compile one.
    bool IsActive() const { return m_isActive; }

private:
    std::locale m_oldCpp;
    std::string m_sOldC;
    bool m_isActive = false;
};

// Declares a CommaLocale that lasts until the end of the block, or skips the test visibly when there is none.
#define JOBX_REQUIRE_COMMA_LOCALE(var)                                                                                 \
    const CommaLocale var;                                                                                             \
    if (!var.IsActive())                                                                                               \
    GTEST_SKIP() << "no locale with a decimal comma on this machine"
