#include "foundation/framework/CString.h"

#include "foundation/framework/AsciiText.h"
#include "foundation/framework/FormatText.h"
#include "foundation/framework/FrameworkThrow.h"
#include "foundation/framework/Utf8Text.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

// The shared form: the characters follow the header. A block that was made for just one text has no room for more; in
// others the capacity follows first.
struct CString::Block
{
    std::atomic<int> references;
    unsigned length : 31;
    unsigned hasCapacity : 1;

    char* Text() noexcept { return reinterpret_cast<char*>(this + 1) + (hasCapacity != 0 ? sizeof(int) : 0); }
    std::size_t Capacity() noexcept
    {
        if (hasCapacity == 0)
            return length;
        int capacity = 0;
        std::memcpy(&capacity, this + 1, sizeof capacity);
        return static_cast<std::size_t>(capacity);
    }
    // The text is going to be shorter by so much that its block has room for a capacity too.
    void GainCapacity(std::size_t newLength) noexcept
    {
        const int capacity = static_cast<int>(length - sizeof(int));
        char* const text = Text();
        std::memmove(text + sizeof capacity, text, newLength);
        std::memcpy(text, &capacity, sizeof capacity);
        hasCapacity = 1;
    }
};

namespace
{
constexpr unsigned kLengthBits = std::numeric_limits<int>::max();
constexpr std::size_t kLongestText = kLengthBits - 64;

std::string_view OrEmpty(LPCSTR text) noexcept
{
    return text != nullptr ? std::string_view(text) : std::string_view();
}

int Position(std::size_t found) noexcept
{
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

// `length` characters of a host's text; none for a negative length.
std::string_view Bounded(LPCSTR text, int length)
{
    if (length <= 0)
        return {};
    if (text == nullptr)
        AfxThrowInvalidArgException();
    return {text, static_cast<std::size_t>(length)};
}

LPCSTR Narrow(const unsigned char* text) noexcept
{
    return reinterpret_cast<LPCSTR>(text);
}

std::size_t Clamped(int count, std::size_t limit) noexcept
{
    return count <= 0 ? 0 : std::min(static_cast<std::size_t>(count), limit);
}
} // namespace

CString::Block* CString::Shared() const noexcept
{
    // The word is the block's address. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<Block*>(static_cast<std::uintptr_t>(m_rep.word));
}

void CString::AddReference() const noexcept
{
    Shared()->references.fetch_add(1, std::memory_order_relaxed);
}

void CString::Release() noexcept
{
    Block* const block = Shared();
    if (block->references.load(std::memory_order_acquire) == 1 ||
        block->references.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::free(block);
}

int CString::SharedLength() const noexcept
{
    return static_cast<int>(Shared()->length);
}

LPCSTR CString::SharedText() const noexcept
{
    return Shared()->Text();
}

void CString::SetLengthInPlace(std::size_t length) noexcept
{
    if (IsInside())
    {
        // Bytes after the text are zero, so that equal texts are equal words.
        std::fill(m_rep.bytes + length, m_rep.bytes + kInsideCapacity, '\0');
        m_rep.bytes[kInsideCapacity] = static_cast<char>(kInsideCapacity - length);
        return;
    }
    if (Shared()->hasCapacity == 0 && length + sizeof(int) <= Shared()->length)
        Shared()->GainCapacity(length);
    Shared()->length = static_cast<unsigned>(length) & kLengthBits;
    Shared()->Text()[length] = '\0';
}

unsigned long long CString::InsideWord(const char* text, std::size_t length) noexcept
{
    Rep made;
    made.word = 0;
    if constexpr (!kLittle)
    {
        made.bytes[kInsideCapacity] = static_cast<char>(kInsideCapacity - length);
        std::copy_n(text, length, made.bytes);
        return made.word;
    }
    // Built in a register, because loading a word right after storing its bytes one by one would stall.
    unsigned long long bytes = 0;
    if (length >= 4)
    {
        std::uint32_t first = 0;
        std::uint32_t last = 0; // overlaps the first four
        std::memcpy(&first, text, sizeof first);
        std::memcpy(&last, text + length - sizeof last, sizeof last);
        bytes = first | static_cast<unsigned long long>(last) << (8 * (length - sizeof last));
    }
    else
    {
        for (std::size_t i = length; i > 0; --i)
            bytes = bytes << 8U | static_cast<unsigned char>(text[i - 1]);
    }
    return bytes | (kInsideCapacity - length) << kLastShift;
}

// An address that would look like a text inside counts as no memory; 64-bit systems hand out none unless asked to.
CString::Block* CString::NewBlock(std::size_t size)
{
    void* const memory = std::malloc(size);
    if (memory == nullptr || static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(memory)) >> kAddressBits)
    {
        std::free(memory);
        AfxThrowMemoryException();
    }
    return new (memory) Block{{1}, 0, 0};
}

// A block for just that text.
CString::Block* CString::NewBlockOf(const char* text, std::size_t length)
{
    Block* const block = NewBlock(sizeof(Block) + length + 1);
    block->length = static_cast<unsigned>(length) & kLengthBits;
    std::memcpy(block->Text(), text, length);
    block->Text()[length] = '\0';
    return block;
}

// A block with that text and room for `capacity` characters.
CString::Block* CString::NewBuffer(const char* text, std::size_t length, std::size_t capacity)
{
    Block* const block = NewBlock(sizeof(Block) + sizeof(int) + capacity + 1);
    block->length = static_cast<unsigned>(length) & kLengthBits;
    block->hasCapacity = 1;
    const auto room = static_cast<int>(capacity);
    std::memcpy(static_cast<void*>(block + 1), &room, sizeof room);
    std::memcpy(block->Text(), text, length);
    block->Text()[length] = '\0';
    return block;
}

void CString::Assign(const char* text, std::size_t length)
{
    if (length > kLongestText)
        AfxThrowMemoryException();
    Rep made;
    if (length < kInsideCapacity || (length == kInsideCapacity && text[kMarked] != '\0'))
        made.word = InsideWord(text, length);
    else
        made.word = reinterpret_cast<std::uintptr_t>(NewBlockOf(text, length));
    if (!IsInside())
        Release();
    m_rep = made;
}

char* CString::Unshare(std::size_t capacity)
{
    if (capacity > kLongestText)
        AfxThrowMemoryException();
    const auto length = static_cast<std::size_t>(GetLength());
    if (IsInside() && std::max(capacity, length) <= kBufferCapacity)
        return m_rep.bytes;
    if (!IsInside() && Shared()->Capacity() >= capacity && Shared()->references.load(std::memory_order_acquire) == 1)
        return Shared()->Text();
    return MoveToBuffer(std::max(capacity, length));
}

char* CString::MoveToBuffer(std::size_t capacity)
{
    Block* const block = NewBuffer(GetString(), static_cast<std::size_t>(GetLength()), capacity);
    if (!IsInside())
        Release();
    m_rep.word = reinterpret_cast<std::uintptr_t>(block);
    return block->Text();
}

CString::CString(LPCSTR text) : CString(OrEmpty(text)) {}

CString::CString(LPCSTR text, int length) : CString(Bounded(text, length)) {}

CString::CString(std::string_view text)
{
    Assign(text.data(), text.size());
}

void CString::Fill(char character, int repeat)
{
    const auto count = static_cast<std::size_t>(std::max(repeat, 0));
    std::fill_n(Unshare(count), count, character);
    SetLengthInPlace(count);
}

// Delegates, so that the destructor runs if there is no memory for the rest.
CString::CString(const wchar_t* text) : CString()
{
    if (text != nullptr)
        for (; *text != L'\0'; ++text)
        {
            auto unit = static_cast<char32_t>(*text);
            if constexpr (sizeof(wchar_t) == 2)
                if (IsHighSurrogate(unit) && IsLowSurrogate(static_cast<char32_t>(text[1])))
                    unit = FromSurrogates(unit, static_cast<char32_t>(*++text));
            *this += EncodeUtf8(unit).View();
        }
}

CString::CString(const unsigned char* text) : CString(Narrow(text)) {}

CString& CString::operator=(LPCSTR text)
{
    const std::string_view view = OrEmpty(text); // may be in this object: Assign copies before it releases
    Assign(view.data(), view.size());
    return *this;
}

CString& CString::operator=(std::string_view text)
{
    Assign(text.data(), text.size());
    return *this;
}

CString& CString::operator=(const wchar_t* text)
{
    return *this = CString(text);
}

CString& CString::operator=(const unsigned char* text)
{
    return *this = Narrow(text);
}

char CString::GetAt(int index) const
{
    if (index < 0 || index > GetLength())
        AfxThrowInvalidArgException();
    return GetString()[index];
}

char CString::operator[](int index) const
{
    return GetAt(index);
}

void CString::SetAt(int index, char character)
{
    if (index < 0 || index >= GetLength())
        AfxThrowInvalidArgException();
    Unshare(static_cast<std::size_t>(GetLength()))[index] = character;
}

void CString::SetString(LPCSTR text)
{
    *this = text;
}

void CString::SetString(LPCSTR text, int length)
{
    const std::string_view view = Bounded(text, length);
    Assign(view.data(), view.size());
}

// A caller may shorten the text and lengthen it again, for which a block without a capacity does not do.
LPSTR CString::GetBuffer(int minLength)
{
    const auto capacity = static_cast<std::size_t>(std::max(minLength, GetLength()));
    if (!IsInside() && Shared()->hasCapacity == 0 && capacity <= kLongestText)
        return MoveToBuffer(capacity);
    return Unshare(capacity);
}

LPSTR CString::GetBufferSetLength(int length)
{
    if (length < 0)
        AfxThrowInvalidArgException();
    char* const buffer = GetBuffer(length);
    SetLengthInPlace(static_cast<std::size_t>(length));
    return buffer;
}

void CString::ReleaseBuffer(int length)
{
    const auto room = static_cast<std::size_t>(GetAllocLength());
    ReleaseBufferSetLength(length >= 0 ? length : static_cast<int>(strnlen(GetString(), room)));
}

void CString::ReleaseBufferSetLength(int length)
{
    if (length < 0 || length > GetAllocLength())
        AfxThrowInvalidArgException();
    KeepFirst(static_cast<std::size_t>(length));
}

int CString::GetAllocLength() const noexcept
{
    return IsInside() ? std::max(kBufferCapacity, GetLength()) : static_cast<int>(Shared()->Capacity());
}

void CString::Preallocate(int length)
{
    GetBuffer(length);
}

void CString::FreeExtra()
{
    if (!IsInside() && Shared()->Capacity() > Shared()->length)
        *this = CString(View());
}

void CString::Truncate(int length)
{
    if (length < 0 || length > GetLength())
        AfxThrowInvalidArgException();
    KeepFirst(static_cast<std::size_t>(length));
}

void CString::KeepFirst(std::size_t length)
{
    if (!IsInside() && Shared()->references.load(std::memory_order_acquire) != 1)
        Assign(GetString(), length);
    else
        SetLengthInPlace(length);
}

void CString::AppendBytes(const char* text, std::size_t length)
{
    if (length == 0)
        return;
    const auto oldLength = static_cast<std::size_t>(GetLength());
    if (length > kLongestText - oldLength)
        AfxThrowMemoryException();
    const char* const own = GetString();
    if (!std::less<>{}(text, own) && !std::less<>{}(own + oldLength, text)) // growing would move what `text` points to
    {
        *this = Joined(View(), {text, length});
        return;
    }
    const std::size_t newLength = oldLength + length;
    std::size_t room = newLength;
    if (newLength > static_cast<std::size_t>(GetAllocLength()))
        room = std::min(kLongestText, std::max(newLength, oldLength + oldLength / 2));
    std::memcpy(Unshare(room) + oldLength, text, length);
    SetLengthInPlace(newLength);
}

CString& CString::operator+=(const CString& text)
{
    AppendBytes(text.GetString(), static_cast<std::size_t>(text.GetLength()));
    return *this;
}

CString& CString::operator+=(LPCSTR text)
{
    return *this += OrEmpty(text);
}

CString& CString::operator+=(char character)
{
    AppendBytes(&character, 1);
    return *this;
}

CString& CString::operator+=(std::string_view text)
{
    AppendBytes(text.data(), text.size());
    return *this;
}

void CString::Append(LPCSTR text)
{
    *this += text;
}

void CString::Append(LPCSTR text, int length)
{
    *this += Bounded(text, length);
}

void CString::Append(const CString& text)
{
    *this += text;
}

void CString::AppendChar(char character)
{
    *this += character;
}

CString CString::Left(int count) const
{
    return CString(View().substr(0, Clamped(count, View().size())));
}

CString CString::Mid(int first) const
{
    return CString(View().substr(Clamped(first, View().size())));
}

CString CString::Mid(int first, int count) const
{
    const std::string_view rest = View().substr(Clamped(first, View().size()));
    return CString(rest.substr(0, Clamped(count, rest.size())));
}

CString CString::Right(int count) const
{
    return CString(View().substr(View().size() - Clamped(count, View().size())));
}

CString CString::SpanIncluding(LPCSTR characters) const
{
    return CString(View().substr(0, View().find_first_not_of(OrEmpty(characters))));
}

CString CString::SpanExcluding(LPCSTR characters) const
{
    return CString(View().substr(0, View().find_first_of(OrEmpty(characters))));
}

int CString::Find(char character, int start) const noexcept
{
    return start < 0 ? -1 : Position(View().find(character, static_cast<std::size_t>(start)));
}

int CString::Find(LPCSTR text, int start) const noexcept
{
    return text == nullptr ? -1 : FindBytes(text, start);
}

int CString::Find(const CString& text, int start) const noexcept
{
    return FindBytes(text.View(), start);
}

int CString::FindBytes(std::string_view text, int start) const noexcept
{
    return start < 0 ? -1 : Position(View().find(text, static_cast<std::size_t>(start)));
}

int CString::FindOneOf(LPCSTR characters) const noexcept
{
    return Position(View().find_first_of(OrEmpty(characters)));
}

int CString::ReverseFind(char character) const noexcept
{
    return Position(View().rfind(character));
}

CString& CString::Trim()
{
    return Trim(kAsciiSpace);
}

CString& CString::Trim(char target)
{
    return TrimRight(target).TrimLeft(target);
}

CString& CString::Trim(LPCSTR targets)
{
    return TrimRight(targets).TrimLeft(targets);
}

CString& CString::TrimLeft()
{
    return TrimLeft(kAsciiSpace);
}

CString& CString::TrimLeft(char target)
{
    const char targets[] = {target, '\0'};
    return TrimLeft(targets);
}

CString& CString::TrimLeft(LPCSTR targets)
{
    const std::size_t first = View().find_first_not_of(OrEmpty(targets));
    if (first != 0)
        *this = Mid(first == std::string_view::npos ? GetLength() : static_cast<int>(first));
    return *this;
}

CString& CString::TrimRight()
{
    return TrimRight(kAsciiSpace);
}

CString& CString::TrimRight(char target)
{
    const char targets[] = {target, '\0'};
    return TrimRight(targets);
}

CString& CString::TrimRight(LPCSTR targets)
{
    const std::size_t last = View().find_last_not_of(OrEmpty(targets));
    const std::size_t keep = last == std::string_view::npos ? 0 : last + 1;
    if (keep != View().size())
        *this = Left(static_cast<int>(keep));
    return *this;
}

CString& CString::MakeUpper()
{
    const auto length = static_cast<std::size_t>(GetLength());
    char* const text = Unshare(length);
    std::transform(text, text + length, text, AsciiUpper);
    return *this;
}

CString& CString::MakeLower()
{
    const auto length = static_cast<std::size_t>(GetLength());
    char* const text = Unshare(length);
    std::transform(text, text + length, text, AsciiLower);
    return *this;
}

CString& CString::MakeReverse()
{
    const auto length = static_cast<std::size_t>(GetLength());
    char* const text = Unshare(length);
    std::reverse(text, text + length);
    return *this;
}

int CString::CompareLetters(std::string_view text) const noexcept
{
    return AsciiCompareNoCase(View(), text);
}

int CString::Replace(char from, char to)
{
    const auto length = static_cast<std::size_t>(GetLength());
    const auto count = static_cast<int>(std::count(GetString(), GetString() + length, from));
    if (count > 0 && from != to)
    {
        char* const text = Unshare(length);
        std::replace(text, text + length, from, to);
        return count;
    }
    return from == to ? 0 : count;
}

int CString::Replace(LPCSTR from, LPCSTR to)
{
    const std::string_view search = OrEmpty(from);
    const std::string_view with = OrEmpty(to);
    if (search.empty())
        return 0;
    const std::string_view text = View();
    CString made;
    int count = 0;
    std::size_t at = 0;
    for (std::size_t found = text.find(search); found != std::string_view::npos; found = text.find(search, at))
    {
        made += text.substr(at, found - at);
        made += with;
        at = found + search.size();
        ++count;
    }
    if (count > 0)
    {
        made += text.substr(at);
        *this = std::move(made);
    }
    return count;
}

int CString::Remove(char character)
{
    const auto length = static_cast<std::size_t>(GetLength());
    if (std::find(GetString(), GetString() + length, character) == GetString() + length)
        return 0;
    char* const text = Unshare(length);
    const auto kept = static_cast<std::size_t>(std::remove(text, text + length, character) - text);
    SetLengthInPlace(kept);
    return static_cast<int>(length - kept);
}

int CString::Delete(int index, int count)
{
    const std::size_t first = Clamped(index, View().size());
    const std::size_t last = first + Clamped(count, View().size() - first);
    if (first != last)
        *this = Joined(View().substr(0, first), View().substr(last));
    return GetLength();
}

int CString::Insert(int index, char character)
{
    return InsertBytes(index, {&character, 1});
}

int CString::Insert(int index, LPCSTR text)
{
    return InsertBytes(index, OrEmpty(text));
}

int CString::Insert(int index, const CString& text)
{
    return InsertBytes(index, text.View());
}

int CString::InsertBytes(int index, std::string_view text)
{
    if (text.empty())
        return GetLength();
    const std::size_t at = Clamped(index, View().size());
    CString made = Joined(View().substr(0, at), text, View().substr(at));
    *this = std::move(made);
    return GetLength();
}

CString CString::Tokenize(LPCSTR tokens, int& start) const
{
    if (start >= 0)
    {
        const std::string_view separators = OrEmpty(tokens);
        const std::size_t first = View().find_first_not_of(separators, static_cast<std::size_t>(start));
        if (first != std::string_view::npos)
        {
            const std::size_t last = std::min(View().find_first_of(separators, first), View().size());
            start = static_cast<int>(std::min(last + 1, View().size()));
            return CString(View().substr(first, last - first));
        }
    }
    start = -1;
    return {};
}

void CString::FormatPlain(LPCSTR format, ...)
{
    va_list args;
    va_start(args, format);
    struct End
    {
        va_list& list;
        ~End() { va_end(list); }
    } const end{args};
    AppendFormatV(format, args);
}

void CString::FormatV(LPCSTR format, va_list args)
{
    CString made;
    made.AppendFormatV(format, args);
    *this = std::move(made);
}

void CString::AppendFormatV(LPCSTR format, va_list args)
{
    if (format == nullptr)
        AfxThrowInvalidArgException();
    char brief[256]; // most texts are short and are printed only once
    va_list again;
    va_copy(again, args);
    const int result = FormatText(brief, sizeof(brief), format, again);
    va_end(again);
    if (result < 0)
        AfxThrowInvalidArgException();
    const auto length = static_cast<std::size_t>(result);
    if (length < sizeof(brief))
    {
        AppendBytes(brief, length);
        return;
    }
    CString made;
    FormatText(made.Unshare(length), length + 1, format, args);
    made.SetLengthInPlace(length);
    *this += made;
}

CString CString::Joined(std::string_view a, std::string_view b, std::string_view c)
{
    if (b.size() > kLongestText || c.size() > kLongestText - b.size() || a.size() > kLongestText - b.size() - c.size())
        AfxThrowMemoryException();
    const std::size_t length = a.size() + b.size() + c.size();
    CString made;
    char* const buffer = made.Unshare(length);
    std::copy_n(a.data(), a.size(), buffer);
    std::copy_n(b.data(), b.size(), buffer + a.size());
    std::copy_n(c.data(), c.size(), buffer + a.size() + b.size());
    made.SetLengthInPlace(length);
    return made;
}
