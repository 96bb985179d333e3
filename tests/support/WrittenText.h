// What a writer puts into a stream.
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

// The bytes that `write` puts into the stream it is given.
template <class Write>
std::string WrittenText(Write write)
{
    std::FILE* const file = std::tmpfile();
    if (file == nullptr)
        throw std::runtime_error("no temporary file");
    write(file);
    std::string text(static_cast<std::size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    const std::size_t read = std::fread(text.data(), 1, text.size(), file);
    std::fclose(file);
    if (read != text.size())
        throw std::runtime_error("the temporary file cannot be read");
    return text;
}
