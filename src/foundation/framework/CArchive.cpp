#include "foundation/framework/CArchive.h"

#include "foundation/framework/CException.h"
#include "foundation/framework/CFile.h"
#include "foundation/framework/Guarded.h"
#include "foundation/framework/Utf8Text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

namespace
{
constexpr int kMinBuffer = 128;
// A length is not trusted: text is read in pieces of this many bytes, so that a short archive ends it early.
constexpr std::size_t kLoadedPiece = 65536;

constexpr BYTE kLong8 = 0xFF; // a longer length follows
constexpr WORD kLong16 = 0xFFFF;
constexpr UINT kLong32 = 0xFFFFFFFF;
constexpr WORD kWide = 0xFFFE; // wide characters; the length follows from its start

template <class T>
auto ToBits(T value)
{
    if constexpr (std::is_same_v<T, float>)
        return std::bit_cast<std::uint32_t>(value);
    else if constexpr (std::is_same_v<T, double>)
        return std::bit_cast<std::uint64_t>(value);
    else if constexpr (std::is_same_v<T, bool>)
        return static_cast<BYTE>(value ? 1 : 0);
    else
        return static_cast<std::make_unsigned_t<T>>(value);
}

template <class T, class Bits>
T FromBits(Bits bits)
{
    if constexpr (std::is_floating_point_v<T>)
        return std::bit_cast<T>(bits);
    else if constexpr (std::is_same_v<T, bool>)
        return bits != 0;
    else
        return static_cast<T>(bits);
}

// Converts UTF-16 units, which may come in any pieces, to UTF-8.
class WideText
{
public:
    void Add(char32_t unit, CString& text)
    {
        if (m_high != 0 && IsLowSurrogate(unit))
        {
            text += EncodeUtf8(FromSurrogates(std::exchange(m_high, 0), unit)).View();
            return;
        }
        End(text);
        if (IsHighSurrogate(unit))
            m_high = unit;
        else
            text += EncodeUtf8(unit).View();
    }

    void End(CString& text)
    {
        if (m_high != 0)
            text += EncodeUtf8(std::exchange(m_high, 0)).View();
    }

private:
    char32_t m_high = 0; // a high surrogate waiting for its other half
};
} // namespace

CArchive::CArchive(CFile* file, UINT mode, int bufferSize, void* /*buffer*/)
    : m_pFile(file), m_nMode(mode), m_nBufferSize(static_cast<std::size_t>(std::max(bufferSize, kMinBuffer)))
{
    if (file == nullptr)
        AfxThrowInvalidArgException();
}

CArchive::~CArchive()
{
    if (m_pFile == nullptr || (m_nMode & bNoFlushOnDelete) != 0)
        return;
    try
    {
        Close();
    }
    catch (CException* error)
    {
        error->Delete();
    }
    catch (...) // a host's file may raise anything; a destructor must not
    {
        m_pFile = nullptr;
    }
}

BOOL CArchive::IsLoading() const
{
    return (m_nMode & load) != 0 ? TRUE : FALSE;
}

BOOL CArchive::IsStoring() const
{
    return (m_nMode & load) == 0 ? TRUE : FALSE;
}

CFile* CArchive::GetFile() const
{
    return m_pFile;
}

void CArchive::Throw(int cause) const
{
    AfxThrowArchiveException(cause, m_pFile != nullptr ? m_pFile->GetFilePath().GetString() : nullptr);
}

void CArchive::RequireStoring() const
{
    if (IsLoading() != FALSE)
        Throw(CArchiveException::readOnly);
    if (m_pFile == nullptr)
        Throw(CArchiveException::genericException);
}

void CArchive::RequireLoading() const
{
    if (IsStoring() != FALSE)
        Throw(CArchiveException::writeOnly);
    if (m_pFile == nullptr)
        Throw(CArchiveException::genericException);
}

void CArchive::FlushStored()
{
    // Emptied first: if the file fails after taking a part, Close must not write that again.
    std::vector<BYTE> stored;
    stored.swap(m_buffer);
    if (!stored.empty())
        m_pFile->Write(stored.data(), static_cast<UINT>(stored.size()));
    stored.clear();
    m_buffer.swap(stored);
}

void CArchive::Write(const void* buffer, UINT size)
{
    RequireStoring();
    if (size == 0)
        return;
    if (buffer == nullptr)
        AfxThrowInvalidArgException();
    if (size > m_nBufferSize - m_buffer.size())
        FlushStored();
    if (size > m_nBufferSize)
    {
        m_pFile->Write(buffer, size);
        return;
    }
    const auto* const bytes = static_cast<const BYTE*>(buffer);
    Guarded([&] { m_buffer.insert(m_buffer.end(), bytes, bytes + size); });
}

bool CArchive::Refill()
{
    m_nAt = 0;
    Guarded([&] { m_buffer.resize(m_nBufferSize); });
    std::size_t read = 0;
    try
    {
        read = m_pFile->Read(m_buffer.data(), static_cast<UINT>(m_nBufferSize));
    }
    catch (...)
    {
        m_buffer.clear(); // nothing was read ahead
        throw;
    }
    m_buffer.resize(read);
    return read != 0;
}

UINT CArchive::Read(void* buffer, UINT size)
{
    RequireLoading();
    if (size == 0)
        return 0;
    if (buffer == nullptr)
        AfxThrowInvalidArgException();
    auto* const bytes = static_cast<BYTE*>(buffer);
    std::size_t done = 0;
    while (done < size)
    {
        const std::size_t wanted = size - done;
        if (m_nAt == m_buffer.size() && wanted >= m_nBufferSize)
        {
            const UINT read = m_pFile->Read(bytes + done, static_cast<UINT>(wanted));
            if (read == 0)
                break;
            done += read;
            continue;
        }
        if (m_nAt == m_buffer.size() && !Refill())
            break;
        const std::size_t some = std::min(wanted, m_buffer.size() - m_nAt);
        std::memcpy(bytes + done, m_buffer.data() + m_nAt, some);
        m_nAt += some;
        done += some;
    }
    return static_cast<UINT>(done);
}

void CArchive::ReadExactly(void* buffer, std::size_t size)
{
    auto* bytes = static_cast<BYTE*>(buffer);
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    RequireLoading();
    while (size > 0)
    {
        const auto part = static_cast<UINT>(std::min(size, kMost));
        if (Read(bytes, part) != part)
            Throw(CArchiveException::endOfFile);
        bytes += part;
        size -= part;
    }
}

void CArchive::Flush()
{
    if (m_pFile == nullptr)
        Throw(CArchiveException::genericException);
    if (IsStoring() != FALSE)
    {
        FlushStored();
        m_pFile->Flush();
        return;
    }
    const auto ahead = static_cast<__int64>(m_buffer.size() - std::exchange(m_nAt, 0));
    m_buffer.clear();
    if (ahead != 0)
        m_pFile->Seek(-ahead, CFile::current);
}

void CArchive::Close()
{
    if (m_pFile == nullptr)
        return;
    struct LetGo
    {
        CArchive& archive;
        ~LetGo() { archive.Abort(); }
    } const letGo{*this};
    Flush();
}

void CArchive::Abort()
{
    m_pFile = nullptr;
    m_buffer.clear();
    m_nAt = 0;
}

void CArchive::WriteCount(ULONGLONG count)
{
    if (count < kLong16)
    {
        *this << static_cast<WORD>(count);
        return;
    }
    *this << kLong16;
    if (count < kLong32)
        *this << static_cast<UINT>(count);
    else
        *this << kLong32 << count;
}

ULONGLONG CArchive::ReadCount()
{
    WORD count16 = 0;
    *this >> count16;
    if (count16 != kLong16)
        return count16;
    UINT count32 = 0;
    *this >> count32;
    if (count32 != kLong32)
        return count32;
    ULONGLONG count64 = 0;
    *this >> count64;
    return count64;
}

template <class T>
void CArchive::StoreValue(T value)
{
    auto bits = ToBits(value);
    BYTE bytes[sizeof(bits)];
    for (std::size_t i = 0; i < sizeof(bits); ++i)
        bytes[i] = static_cast<BYTE>(static_cast<ULONGLONG>(bits) >> (8 * i));
    Write(bytes, sizeof(bytes));
}

template <class T>
void CArchive::LoadValue(T& value)
{
    BYTE bytes[sizeof(ToBits(value))];
    ReadExactly(bytes, sizeof(bytes));
    ULONGLONG bits = 0;
    for (std::size_t i = 0; i < sizeof(bytes); ++i)
        bits |= static_cast<ULONGLONG>(bytes[i]) << (8 * i);
    value = FromBits<T>(static_cast<decltype(ToBits(value))>(bits));
}

CArchive& CArchive::operator<<(BYTE value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(WORD value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(short value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(int value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(UINT value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(__int64 value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(ULONGLONG value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(float value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(double value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(char value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(bool value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator>>(BYTE& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(WORD& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(short& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(int& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(UINT& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(__int64& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(ULONGLONG& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(float& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(double& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(char& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(bool& value)
{
    LoadValue(value);
    return *this;
}

#if defined(_WIN32)
CArchive& CArchive::operator<<(LONG value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator<<(DWORD value)
{
    StoreValue(value);
    return *this;
}

CArchive& CArchive::operator>>(LONG& value)
{
    LoadValue(value);
    return *this;
}

CArchive& CArchive::operator>>(DWORD& value)
{
    LoadValue(value);
    return *this;
}
#endif

CArchive& CArchive::operator<<(const CString& value)
{
    const auto length = static_cast<UINT>(value.GetLength()); // a text has less than 2^31 characters
    if (length < kLong8)
        *this << static_cast<BYTE>(length);
    else if (length < kWide)
        *this << kLong8 << static_cast<WORD>(length);
    else
        *this << kLong8 << kLong16 << length;
    Write(value.GetString(), length);
    return *this;
}

ULONGLONG CArchive::LoadLength(bool& wide)
{
    BYTE length8 = 0;
    *this >> length8;
    if (length8 != kLong8)
        return length8;
    WORD length16 = 0;
    *this >> length16;
    if (length16 == kWide)
    {
        if (std::exchange(wide, true))
            Throw(CArchiveException::badIndex); // the marker may appear only once
        return LoadLength(wide);
    }
    if (length16 != kLong16)
        return length16;
    UINT length32 = 0;
    *this >> length32;
    if (length32 != kLong32)
        return length32;
    ULONGLONG length64 = 0;
    *this >> length64;
    return length64;
}

CArchive& CArchive::operator>>(CString& value)
{
    bool wide = false;
    const ULONGLONG length = LoadLength(wide);
    if (length > static_cast<ULONGLONG>(std::numeric_limits<int>::max()))
        Throw(CArchiveException::badIndex);
    CString text;
    WideText decoder;
    char piece[kLoadedPiece];
    ULONGLONG left = wide ? length * 2 : length;
    while (left > 0)
    {
        const auto some = static_cast<std::size_t>(std::min<ULONGLONG>(left, sizeof(piece)));
        ReadExactly(piece, some);
        left -= some;
        if (!wide)
            text += std::string_view(piece, some);
        else
            for (std::size_t i = 0; i < some; i += 2)
                decoder.Add(static_cast<BYTE>(piece[i]) | static_cast<char32_t>(static_cast<BYTE>(piece[i + 1])) << 8U,
                            text);
    }
    decoder.End(text);
    value = std::move(text);
    return *this;
}
