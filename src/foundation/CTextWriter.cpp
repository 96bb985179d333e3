#include "foundation/CTextWriter.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/CException.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

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
    const auto used = static_cast<std::size_t>(m_at - m_buffer.data());
    int error = 0;
    if (IsGood() && used > 0 && std::fwrite(m_buffer.data(), 1, used, m_stream) != used)
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
    catch (CException* exception) // another exception is already being handled
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
    if (m_stream == nullptr || m_failed)
        return;
    if (std::fwrite(data, 1, size, m_stream) == size)
        return;
    m_failed = true;
    Report(errno);
}

char* CTextWriter::WriteBlock(const char* at)
{
    char* const begin = m_buffer.data();
    Emit(begin, kBlock);
    const auto rest = static_cast<std::size_t>(at - begin) - kBlock;
    std::memcpy(begin, begin + kBlock, rest);
    return begin + rest;
}

char* CTextWriter::WriteLong(char* at, std::string_view text)
{
    char* const end = m_buffer.data() + kBlock;
    while (!text.empty())
    {
        const std::size_t size = std::min(text.size(), static_cast<std::size_t>(end - at));
        std::memcpy(at, text.data(), size);
        text.remove_prefix(size);
        at += size;
        if (at == end)
            at = WriteBlock(at);
    }
    return at;
}
