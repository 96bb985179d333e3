#include "foundation/CLogFile.h"

#include "foundation/corekit/LocalTime.h"
#include "foundation/framework/FormatText.h"

#include <array>
#include <cstdarg>
#include <cstring>
#include <limits>
#include <string_view>

namespace
{
constexpr std::size_t kBufferSize = 16384; // for one text with its terminator
constexpr char kExtension[] = ".TXT";
constexpr int kExtensionLength = 4;

// One conversion of a format, such as "%-*d".
struct Conversion
{
    std::size_t length = 0; // of its text
    int arguments = 0;      // that it uses
};

// The conversion at the start of the text, which is a per cent sign.
Conversion ConversionAt(std::string_view text)
{
    constexpr std::string_view kBetween = "-+ #0123456789.*hlLqjzt'I"; // flags, width, precision and size
    const std::size_t letter = text.find_first_not_of(kBetween, 1);
    if (letter == std::string_view::npos || text[letter] == '$')
        return {text.size(),
                std::numeric_limits<int>::max()}; // incomplete, or with a numbered argument: never supported
    Conversion found{letter + 1, text[letter] == '%' ? 0 : 1};
    for (const char c : text.substr(0, letter))
        found.arguments += c == '*' ? 1 : 0;
    return found;
}

// The format with every conversion without an argument turned into plain text, so that printf reads no more than was
// passed.
CString WithinArguments(std::string_view format, int argumentCount)
{
    CString within;
    while (!format.empty())
    {
        const std::size_t percent = format.find('%');
        within += format.substr(0, percent);
        if (percent == std::string_view::npos)
            break;
        format.remove_prefix(percent);
        const Conversion conversion = ConversionAt(format);
        if (conversion.arguments > argumentCount)
        {
            within += "%%";
            format.remove_prefix(1);
            argumentCount = 0; // later ones would get the wrong arguments
            continue;
        }
        within += format.substr(0, conversion.length);
        format.remove_prefix(conversion.length);
        argumentCount -= conversion.arguments;
    }
    return within;
}
} // namespace

CLogFile::CLogFile(int open)
{
    if (open != 0)
        OpenLogFile();
}

CLogFile::CLogFile(const CString& name, int addTime) : m_sFileName(name)
{
    if (addTime != 0)
        m_sFileName += LocalTimeText("_%Y%m%d%H%M%S");
    if (m_sFileName.Right(kExtensionLength).CompareNoCase(kExtension) != 0)
        m_sFileName += kExtension;
    OpenLogFile();
}

CLogFile::~CLogFile() = default;

int CLogFile::OpenLogFile()
{
    CloseLogFile();
    const CString name =
        m_sFileName.IsEmpty() ? "TESTLOGDEFAULTNAME_" + LocalTimeText("%Y%m%d%H%M%S") + kExtension : m_sFileName;
    m_file.Open(name, CFile::modeCreate | CFile::modeWrite);
    return 1;
}

int CLogFile::CloseLogFile()
{
    if (m_file.IsOpen())
        m_file.Close();
    return 1;
}

void CLogFile::WriteFormatted(const char* format, int argumentCount, ...)
{
    if (!m_file.IsOpen() || m_nWriteStop != 0 || format == nullptr)
        return;
    std::array<char, kBufferSize> buffer{};
    va_list arguments;
    va_start(arguments, argumentCount);
    if (FormatText(buffer.data(), buffer.size(), WithinArguments(format, argumentCount), arguments) < 0)
        buffer[0] = '\0'; // not printable
    va_end(arguments);
    if (m_nTimeStamp != 0)
    {
        const CString stamp = LocalTimeText("[%H:%M:%S]");
        m_file.Write(stamp.GetString(), static_cast<UINT>(stamp.GetLength()));
    }
    m_file.Write(buffer.data(), static_cast<UINT>(std::strlen(buffer.data())));
    m_file.Flush();
}
