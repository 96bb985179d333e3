#pragma once

#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

#include <bit>
#include <compare>
#include <cstdarg>
#include <cstring>
#include <functional>
#include <string_view>
#include <type_traits>
#include <utility>

// The framework's narrow text: a value of any bytes, including NUL, always followed by a terminator.
// Letters:   upper and lower case are ASCII only; white space is blank, tab, LF, VT, FF, CR. Independent of the locale.
// Copies:    a copy is cheap: short texts are stored in the object itself, longer ones are shared until one copy
//            changes.
// Results:   positions count from 0; a search returns -1 if nothing is found; an index outside the text raises
//            CInvalidArgException, exhausted memory or a text above 2 GB raises CMemoryException.
// Threads:   different objects may be used at once, even if one is a copy of the other.
class JOBX_API CString
{
public:
    constexpr CString() noexcept = default;
    CString(const CString& other) noexcept : m_rep(other.m_rep)
    {
        if (!IsInside())
            AddReference();
    }
    CString(CString&& other) noexcept : m_rep(other.m_rep) { other.m_rep = Rep{}; }
    CString(LPCSTR text);                    // null means ""
    CString(LPCSTR text, int length);        // null with a length above 0 raises CInvalidArgException
    explicit CString(std::string_view text); // the bytes of a view
    // The character, repeated; "" for a count below 1.
    explicit CString(char character, int repeat = 1)
    {
        if (repeat == 1)
            SetCharacter(character);
        else
            Fill(character, repeat);
    }
    explicit CString(const wchar_t* text);       // converted to UTF-8
    explicit CString(const unsigned char* text); // the bytes unchanged
    CString& operator=(const CString& other) noexcept
    {
        CString copy(other);
        std::swap(m_rep, copy.m_rep);
        return *this;
    }
    CString& operator=(CString&& other) noexcept
    {
        std::swap(m_rep, other.m_rep);
        return *this;
    }
    // Assign that text, like the constructors.
    CString& operator=(LPCSTR text);
    CString& operator=(std::string_view text);
    CString& operator=(const wchar_t* text);
    CString& operator=(const unsigned char* text);
    CString& operator=(char character) { return *this = CString(character); }
    ~CString()
    {
        if (!IsInside())
            Release();
    }

    // In bytes, without the terminator.
    int GetLength() const noexcept
    {
        return IsInside() ? kInsideCapacity - m_rep.bytes[kInsideCapacity] : SharedLength();
    }
    // Whether the text is empty; makes it empty.
    bool IsEmpty() const noexcept { return GetLength() == 0; }
    void Empty() noexcept { *this = CString(); }
    // The characters with a terminator, valid until the text changes or is destroyed.
    LPCSTR GetString() const noexcept { return IsInside() ? m_rep.bytes : SharedText(); }
    operator LPCSTR() const noexcept { return GetString(); }
    // The bytes as a view, valid until the text changes or is destroyed.
    std::string_view View() const noexcept { return {GetString(), static_cast<std::size_t>(GetLength())}; }

    char GetAt(int index) const;      // the terminator's position gives NUL
    char operator[](int index) const; // same as GetAt
    // Replaces one character.
    void SetAt(int index, char character);
    // Assign that text, at most that length of it.
    void SetString(LPCSTR text);
    void SetString(LPCSTR text, int length);

    // A writable buffer of at least `minLength` characters that starts with the text. Call ReleaseBuffer (-1: up to the
    // first NUL) before doing anything else with the text. A length beyond the buffer raises CInvalidArgException.
    LPSTR GetBuffer(int minLength = 0);
    LPSTR GetBufferSetLength(int length);
    void ReleaseBuffer(int length = -1);
    void ReleaseBufferSetLength(int length);
    int GetAllocLength() const noexcept;
    void Preallocate(int length);
    void FreeExtra();
    void Truncate(int length);

    // Append a text, a character, or that many characters.
    CString& operator+=(const CString& text);
    CString& operator+=(LPCSTR text);
    CString& operator+=(char character);
    CString& operator+=(std::string_view text);
    void Append(LPCSTR text);
    void Append(LPCSTR text, int length);
    void Append(const CString& text);
    void AppendChar(char character);

    // Parts of the text; a negative count means 0, a count too large is reduced.
    CString Left(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Right(int count) const;
    CString SpanIncluding(LPCSTR characters) const;
    CString SpanExcluding(LPCSTR characters) const;

    // The position of the first occurrence from `start` on; of the first of several characters; of the last occurrence.
    int Find(char character, int start = 0) const noexcept;
    int Find(LPCSTR text, int start = 0) const noexcept;
    int Find(const CString& text, int start = 0) const noexcept;
    int FindOneOf(LPCSTR characters) const noexcept;
    int ReverseFind(char character) const noexcept;

    // Remove white space, that character or all of those characters at both ends, on the left or on the right. Return
    // this text.
    CString& Trim();
    CString& Trim(char target);
    CString& Trim(LPCSTR targets);
    CString& TrimLeft();
    CString& TrimLeft(char target);
    CString& TrimLeft(LPCSTR targets);
    CString& TrimRight();
    CString& TrimRight(char target);
    CString& TrimRight(LPCSTR targets);

    // Convert to upper or lower case, or reverse the bytes. Return this text.
    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    // Negative, 0 or positive as the text sorts before, with or after the other, byte by byte.
    int Compare(LPCSTR text) const noexcept { return CompareBytes(ViewOf(text)); }
    int Compare(const CString& text) const noexcept { return CompareBytes(text.View()); }
    int CompareNoCase(LPCSTR text) const noexcept { return CompareLetters(ViewOf(text)); }
    int CompareNoCase(const CString& text) const noexcept { return CompareLetters(text.View()); }
    // Same as Compare and CompareNoCase: independent of the locale.
    int Collate(LPCSTR text) const noexcept { return CompareBytes(ViewOf(text)); }
    int Collate(const CString& text) const noexcept { return CompareBytes(text.View()); }
    int CollateNoCase(LPCSTR text) const noexcept { return CompareLetters(ViewOf(text)); }
    int CollateNoCase(const CString& text) const noexcept { return CompareLetters(text.View()); }

    // Each returns how many places were changed.
    int Replace(char from, char to);
    int Replace(LPCSTR from, LPCSTR to);
    int Remove(char character);
    // Each returns the new length. A position past the end inserts at the end, a negative one at the start.
    int Delete(int index, int count = 1);
    int Insert(int index, char character);
    int Insert(int index, LPCSTR text);
    int Insert(int index, const CString& text);

    // The next piece between characters of `tokens`, from `start` on. Moves `start` past it; -1 means that there is
    // none. Runs of such characters separate once.
    CString Tokenize(LPCSTR tokens, int& start) const;

    // Formats like printf in the C locale. A CString passed for %s is printed as its characters; it may be this one. A
    // format that cannot be printed, including null, raises CInvalidArgException and changes nothing.
    template <class... Args>
    void Format(LPCSTR format, const Args&... args)
    {
        CString made;
        made.FormatPlain(format, Plain(args)...);
        *this = std::move(made);
    }
    template <class... Args>
    void AppendFormat(LPCSTR format, const Args&... args)
    {
        FormatPlain(format, Plain(args)...);
    }
    void FormatV(LPCSTR format, va_list args);
    void AppendFormatV(LPCSTR format, va_list args);

    // The same in every run and on every platform of one build. Equal texts have equal hashes.
    std::size_t Hash() const noexcept { return std::hash<std::string_view>{}(View()); }

    // Texts are compared byte by byte, case-sensitive.
    friend bool operator==(const CString& a, const CString& b) noexcept
    {
        // Two inside forms are equal if their words are equal; so are two copies of one shared text.
        return a.m_rep.word == b.m_rep.word || (!(a.IsInside() && b.IsInside()) && a.View() == b.View());
    }
    friend bool operator==(const CString& a, LPCSTR b) noexcept { return a.View() == ViewOf(b); }
    friend bool operator==(const CString& a, char b) noexcept { return a.View() == std::string_view(&b, 1); }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept
    {
        return a.View() <=> b.View();
    }
    friend std::strong_ordering operator<=>(const CString& a, LPCSTR b) noexcept { return a.View() <=> ViewOf(b); }
    // The concatenation of both.
    friend CString operator+(const CString& a, const CString& b) { return Joined(a.View(), b.View()); }
    friend CString operator+(const CString& a, LPCSTR b) { return Joined(a.View(), ViewOf(b)); }
    friend CString operator+(LPCSTR a, const CString& b) { return Joined(ViewOf(a), b.View()); }
    friend CString operator+(const CString& a, char b) { return Joined(a.View(), {&b, 1}); }
    friend CString operator+(char a, const CString& b) { return Joined({&a, 1}, b.View()); }

private:
    // Eight bytes in one of two forms. If the word is no address, the text is inside: up to seven characters, zeros, and
    // in the last byte how many characters fewer than seven there are. For seven characters this zero is the terminator.
    // Otherwise the word is the address of a shared block. Addresses use the low 48 bits only and end in four zero bits,
    // so a text inside always has a bit that no address has; seven characters have it unless kMarked is a NUL.
    union Rep
    {
        unsigned long long word = kEmpty;
        char bytes[8];
    };
    static constexpr bool kLittle = std::endian::native == std::endian::little;
    static constexpr int kInsideCapacity = 7;
    static constexpr int kBufferCapacity = 6; // of the text inside while a caller writes to it: never the last byte
    static constexpr int kMarked = kLittle ? kInsideCapacity - 1 : 0;
    static constexpr unsigned kAddressBits = 48;
    static constexpr unsigned kFirstShift = kLittle ? 0 : 56; // of the first and the last byte in the word
    static constexpr unsigned kLastShift = kLittle ? 56 : 0;
    static constexpr unsigned long long kEmpty = static_cast<unsigned long long>(kInsideCapacity) << kLastShift;
    struct Block;

    bool IsInside() const noexcept
    {
        return m_rep.word >> kAddressBits != 0 || (!kLittle && (m_rep.word & kInsideCapacity) != 0);
    }
    Block* Shared() const noexcept;
    void AddReference() const noexcept;
    void Release() noexcept;
    int SharedLength() const noexcept;
    LPCSTR SharedText() const noexcept;
    static Block* NewBlock(std::size_t size);
    static Block* NewBlockOf(const char* text, std::size_t length);
    static Block* NewBuffer(const char* text, std::size_t length, std::size_t capacity);
    void Assign(const char* text, std::size_t length);                                   // `text` may be in this object
    static unsigned long long InsideWord(const char* text, std::size_t length) noexcept; // for a text that fits inside
    void SetCharacter(char character) noexcept                                           // only for the empty text
    {
        m_rep.word = static_cast<unsigned long long>(static_cast<unsigned char>(character)) << kFirstShift |
                     static_cast<unsigned long long>(kInsideCapacity - 1) << kLastShift;
    }
    void Fill(char character, int repeat); // only for the empty text
    int CompareBytes(std::string_view text) const noexcept { return View().compare(text); }
    int CompareLetters(std::string_view text) const noexcept;
    int FindBytes(std::string_view text, int start) const noexcept;
    int InsertBytes(int index, std::string_view text);
    // A buffer used only by this object, of at least `capacity` characters, with the text in it.
    char* Unshare(std::size_t capacity);
    char* MoveToBuffer(std::size_t capacity);
    void SetLengthInPlace(std::size_t length) noexcept; // for a buffer used only by this object
    void KeepFirst(std::size_t length);
    void AppendBytes(const char* text, std::size_t length);
    void FormatPlain(LPCSTR format, ...);
    static std::string_view ViewOf(LPCSTR text) noexcept { return text != nullptr ? std::string_view(text) : ""; }
    static CString Joined(std::string_view a, std::string_view b, std::string_view c = {});
    template <class T>
    static decltype(auto) Plain(const T& value) noexcept
    {
        if constexpr (std::is_base_of_v<CString, T>)
            return static_cast<const CString&>(value).GetString();
        else if constexpr (std::is_array_v<T>)
            return static_cast<const std::remove_extent_t<T>*>(value);
        else
        {
            static_assert(std::is_scalar_v<T>, "only numbers, pointers and texts can be printed");
            return T(value);
        }
    }

    Rep m_rep{};
};

// Texts as keys of the standard containers.
template <>
struct std::hash<CString>
{
    // The hash of the text.
    std::size_t operator()(const CString& text) const noexcept { return text.Hash(); }
};

// The framework's other name for CString.
using CStringA = CString;
