// How readers find out which kind a line is.
#pragma once

#include "foundation/CLineScanner.h"

#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

enum class Letters
{
    AnyCase,   // the line is compared in upper case
    AsWritten, // the line must have the keyword exactly
};

// A keyword, in upper case, and the handler for lines that begin with it.
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

// For every first byte of a line, the position of the first keyword in the table that can match; the table's size if
// there is none. In a long table, most lines can only match one of the last keywords.
template <class State, std::size_t Count>
consteval std::array<unsigned char, 256> FirstCandidates(const Keyword<State> (&table)[Count])
{
    static_assert(Count < 256);
    std::array<unsigned char, 256> first{};
    for (std::size_t byte = 0; byte < first.size(); ++byte)
    {
        const char letter = AsciiUpper(static_cast<char>(byte));
        std::size_t at = 0;
        while (at < Count && !table[at].begins.empty() && table[at].begins.front() != letter)
            ++at;
        first[byte] = static_cast<unsigned char>(at);
    }
    return first;
}

// Passes the line to the handler of the first keyword that it begins with, from the top of the table; false if there is
// none.
template <const auto& table, class State>
bool Dispatch(State& state, std::string_view line)
{
    static constexpr auto kFirst = FirstCandidates(table);
    const std::size_t begin = line.empty() ? 0 : kFirst[static_cast<unsigned char>(line.front())];
    for (std::size_t i = begin; i < std::size(table); ++i)
        if (table[i].Fits(line))
        {
            table[i].handle(state, line);
            return true;
        }
    return false;
}
