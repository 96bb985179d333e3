#include "foundation/corekit/CKDiagnostic.h"

#include "foundation/corekit/SystemEntries.h"
#include "foundation/framework/Guarded.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>

namespace
{
CString Reason(const CString& operation, int systemError)
{
    if (operation == "follow" && systemError == EXDEV)
        return "it leads out of the allowed directory";
    if (operation == "list" && systemError == EOVERFLOW)
        return "it has more entries than allowed";
    if (systemError == EBADMSG)
        return "the data is damaged";
    return CString(std::string_view(SystemReason(systemError)));
}

// The characters of UTF-8 that a line must not contain: controls above U+007F, and characters that are invisible, break
// lines or change the direction of text. The last byte is in the range `from` to `to`.
struct Invisible
{
    std::string_view begin;
    unsigned char from;
    unsigned char to;
};

constexpr Invisible kInvisible[] = {
    {"\xC2", 0x80, 0x9F},         // U+0080 to U+009F
    {"\xC2", 0xAD, 0xAD},         // U+00AD
    {"\xD8", 0x9C, 0x9C},         // U+061C
    {"\xE1\xA0", 0x8E, 0x8E},     // U+180E
    {"\xE2\x80", 0x8B, 0x8F},     // U+200B to U+200F
    {"\xE2\x80", 0xA8, 0xAE},     // U+2028 to U+202E
    {"\xE2\x81", 0xA0, 0xAF},     // U+2060 to U+206F
    {"\xEF\xBB", 0xBF, 0xBF},     // U+FEFF
    {"\xEF\xBF", 0xB9, 0xBB},     // U+FFF9 to U+FFFB
    {"\xF3\xA0\x80", 0x80, 0xBF}, // U+E0000 to U+E003F
    {"\xF3\xA0\x81", 0x80, 0xBF}, // U+E0040 to U+E007F
};

// The length of such a character at the start of `text`, 0 if there is none.
std::size_t InvisibleLength(std::string_view text)
{
    for (const Invisible& each : kInvisible)
    {
        const std::size_t length = each.begin.size();
        if (text.size() > length && text.starts_with(each.begin) &&
            static_cast<unsigned char>(text[length]) >= each.from &&
            static_cast<unsigned char>(text[length]) <= each.to)
            return length + 1;
    }
    return 0;
}

CString WithoutControlCharacters(const CString& text)
{
    std::string copy;
    const std::string_view all = text.View();
    for (std::size_t at = 0; at < all.size();)
    {
        const std::size_t length = InvisibleLength(all.substr(at));
        const bool isControl = static_cast<unsigned char>(all[at]) < ' ' || all[at] == '\x7F';
        copy += length != 0 || isControl ? '?' : all[at];
        at += std::max<std::size_t>(length, 1);
    }
    return CString(std::string_view(copy));
}
} // namespace

CString CKDiagnostic::Text() const
{
    return Guarded(
        [this]
        {
            CString text = "cannot " + operation + " " + WithoutControlCharacters(path);
            if (systemError != 0)
                text += ": " + Reason(operation, systemError);
            if (!sourceFile.IsEmpty())
                text.AppendFormat(" (%s:%d)", WithoutControlCharacters(sourceFile), line);
            return text;
        });
}

CKDiagnosticSink::~CKDiagnosticSink() = default;
