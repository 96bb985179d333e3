#include "foundation/CTextWriter.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/CException.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

namespace
{
constexpr double kDecimals = 1e6;
// Below this the product with kDecimals is off by less than a millionth, however it was rounded.
constexpr double kShortWayLimit = 8000.0;
constexpr double kSurelyNearer = 0.5 - 2e-6;

// Prints six decimals when it is plain to which side the number rounds; null when the exact way has to decide.
char* PrintShortFixed(char* at, double value)
{
    const double magnitude = std::fabs(value);
    if (!(magnitude < kShortWayLimit))
        return nullptr;
    const double scaled = magnitude * kDecimals;
    const auto below = static_cast<std::uint64_t>(scaled);
    const double rest = scaled - static_cast<double>(below);
    const bool up = rest > 1.0 - kSurelyNearer;
    if (!up && rest > kSurelyNearer)
        return nullptr;
    if (std::signbit(value))
        *at++ = '-';
    const std::uint64_t digits = below + (up ? 1 : 0);
    constexpr std::uint64_t kUnit = 1'000'000;
    at = std::to_chars(at, at + 8, digits / kUnit).ptr;
    auto decimals = static_cast<std::uint32_t>(digits % kUnit);
    at[0] = '.';
    for (int i = 6; i > 0; --i, decimals /= 10)
        at[i] = static_cast<char>('0' + decimals % 10);
    return at + 7;
}
} // namespace

CTextWriter::CTextWriter(const CString& path, const char* sourceFile, int line)
    : m_owned(true), m_path(path), m_sourceFile(sourceFile), m_line(line)
{
    m_stream = std::fopen(path, "w");
    if (m_stream == nullptr)
        Report(errno);
    else
        std::setvbuf(m_stream, nullptr, _IONBF, 0); // one buffer is enough
}

CTextWriter::CTextWriter(std::FILE* stream) : m_stream(stream) {}

CTextWriter::~CTextWriter() noexcept(false)
{
    int error = 0;
    if (IsGood() && m_used > 0 && std::fwrite(m_buffer.data(), 1, m_used, m_stream) != m_used)
        error = errno;
    if (m_owned && m_stream != nullptr && std::fclose(m_stream) != 0 && error == 0)
        error = errno;
    if (error != 0 && !m_failed)
        ReportAtEnd(error);
}

void CTextWriter::ReportAtEnd(int error)
{
    if (std::uncaught_exceptions() == m_exceptions)
        return Report(error);
    try
    {
        Report(error);
    }
    catch (CException* exception) // another one is on its way already
    {
        exception->Delete();
    }
    catch (...)
    {
    }
}

void CTextWriter::Report(int error) const
{
    CKUtility::GetInstance()->Report(m_sourceFile, m_line, "write", m_path, error);
}

void CTextWriter::Emit(const char* data, std::size_t size)
{
    if (m_stream == nullptr || m_failed || size == 0)
        return;
    if (std::fwrite(data, 1, size, m_stream) == size)
        return;
    m_failed = true;
    Report(errno);
}

void CTextWriter::Flush()
{
    Emit(m_buffer.data(), std::exchange(m_used, 0));
}

CTextWriter& CTextWriter::WriteLong(std::string_view text)
{
    Flush();
    if (text.size() > m_buffer.size())
    {
        Emit(text.data(), text.size());
        return *this;
    }
    return *this << text;
}

char* CTextWriter::Room(std::size_t size)
{
    if (size > m_buffer.size() - m_used)
        Flush();
    return m_buffer.data() + m_used;
}

CTextWriter& CTextWriter::operator<<(int number)
{
    char* const at = Room(kLongestNumber);
    m_used = static_cast<std::size_t>(std::to_chars(at, at + kLongestNumber, number).ptr - m_buffer.data());
    return *this;
}

CTextWriter& CTextWriter::operator<<(Fixed number)
{
    char* const at = Room(kLongestNumber);
    char* end = PrintShortFixed(at, number.value);
    if (end == nullptr)
        end = std::to_chars(at, at + kLongestNumber, number.value, std::chars_format::fixed, 6).ptr;
    m_used = static_cast<std::size_t>(end - m_buffer.data());
    return *this;
}

CTextWriter& CTextWriter::operator<<(General number)
{
    char* const at = Room(kLongestNumber);
    const auto end = std::to_chars(at, at + kLongestNumber, number.value, std::chars_format::general, 6);
    m_used = static_cast<std::size_t>(end.ptr - m_buffer.data());
    return *this;
}
