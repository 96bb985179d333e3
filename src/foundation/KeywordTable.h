// How every reader tells the kinds of its lines apart.
#pragma once

#include "foundation/CTextScanner.h"

#include <array>
#include <cstddef>
#include <iterator>
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

// For every byte that a line may begin with, the position of the first keyword of the table that such a line can fit;
// the table's size when there is none. Of a long table most lines fit only one of the last keywords.
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

// Hands the line to the first keyword of the table that it begins with, tried from the top; false when there is none.
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
