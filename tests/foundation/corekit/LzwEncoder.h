// Makes ".Z" files for the tests of their reader.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

struct LzwOptions
{
    unsigned maxWidth = 16;
    bool blockMode = true;
    std::size_t clearEvery = 0; // in block mode: the table is emptied each time so many bytes were taken; 0 never
};

std::string EncodeLzw(std::string_view text, const LzwOptions& options = {});
