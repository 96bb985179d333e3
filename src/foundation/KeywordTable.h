// How every reader tells the kinds of its lines apart.
#pragma once

#include "foundation/CTextScanner.h"

#include <cstddef>
#include <string_view>

enum class Letters
{
    AnyCase,   // the line's letters are compared in upper case
    AsWritten, // the line must hold the keyword as it stands
};

// A keyword, in upper case, and what a line that begins with it does to the reader's state.
template <class State>
struct Keyword
{
    std::string_view begins;
    void (*handle)(State& state, std::string_view line);
    Letters letters = Letters::AnyCase;

    bool Fits(std::string_view line) const noexcept
    {
        return letters == Letters::AsWritten ? line.substr(0, begins.size()) == begins : BeginsWith(line, begins);
    }
};

// Hands the line to the first keyword of the table that it begins with, tried from the top; false when there is none.
template <class State, std::size_t Count>
bool Dispatch(const Keyword<State> (&table)[Count], State& state, std::string_view line)
{
    for (const Keyword<State>& keyword : table)
        if (keyword.Fits(line))
        {
            keyword.handle(state, line);
            return true;
        }
    return false;
}
