#include "TextFile.h"

#include <stdexcept>

namespace
{
constexpr std::int64_t kUnit = 100'000'000;
} // namespace

TextFile::TextFile(const std::filesystem::path& path) : m_path(path)
{
    std::filesystem::create_directories(path.parent_path());
    m_file.open(path, std::ios::binary);
    if (!m_file)
        throw std::runtime_error("cannot make " + path.string());
}

std::uint64_t TextFile::Close()
{
    Flush();
    m_file.close();
    if (!m_file)
        throw std::runtime_error("cannot write " + m_path.string());
    return m_written;
}

TextFile& TextFile::operator<<(Length length)
{
    std::int64_t whole = length.hundredMillionths;
    if (whole < 0)
    {
        *this << '-';
        whole = -whole;
    }
    *this << whole / kUnit;
    std::int64_t rest = whole % kUnit;
    if (rest == 0)
        return *this;
    *this << '.';
    for (std::int64_t place = kUnit / 10; rest != 0; place /= 10)
    {
        *this << static_cast<char>('0' + rest / place);
        rest %= place;
    }
    return *this;
}

void TextFile::PrintLong(Length length, std::uint32_t moreDigits)
{
    *this << length << moreDigits;
}

char* TextFile::Room(std::size_t size)
{
    if (size > m_buffer.size() - m_used)
    {
        Flush();
        if (size > m_buffer.size())
            throw std::runtime_error("too long a text for " + m_path.string());
    }
    return m_buffer.data() + m_used;
}

void TextFile::Flush()
{
    m_file.write(m_buffer.data(), static_cast<std::streamsize>(m_used));
    if (!m_file)
        throw std::runtime_error("cannot write " + m_path.string());
    m_written += m_used;
    m_used = 0;
}
