#include "output/Output.h"

#include "output/ExitError.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

Output::Output() : m_buffer(std::make_unique<char[]>(kCapacity))
{
#if defined(_WIN32)
    _setmode(_fileno(stdout), _O_BINARY); // line ends are written unchanged
#endif
}

void Output::Write(std::string_view text)
{
    while (!text.empty())
    {
        if (m_size == kCapacity)
            Flush();
        const std::size_t count = std::min(kCapacity - m_size, text.size());
        text.copy(m_buffer.get() + m_size, count);
        m_size += count;
        text.remove_prefix(count);
    }
}

void Output::Flush()
{
    const std::size_t size = m_size;
    m_size = 0;
    errno = 0;
    if (std::fwrite(m_buffer.get(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return;
    const int error = errno != 0 ? errno : EIO;
    if (error == EPIPE)
        throw ClosedPipe();
    throw ExitError(ExitCode::UnwritableOutput,
                    fmt::format("cannot write the output: {}", std::generic_category().message(error)));
}
