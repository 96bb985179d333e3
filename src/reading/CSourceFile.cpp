#include "reading/CSourceFile.h"

#include "foundation/corekit/CDiagnosticCapture.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/LzwDecoder.h"
#include "foundation/corekit/SystemEntries.h"
#include "reading/FileMessageKinds.h"

#include <algorithm>
#include <array>

namespace
{
constexpr std::size_t kLooked = 4096; // bytes that decide whether it is a text

constexpr std::string_view kLzwMark = "\x1F\x9D";
constexpr std::string_view kGzipMark = "\x1F\x8B";

// Text has no control characters except white space. A NUL ends the text of a line in every reader; a few are
// tolerated.
bool IsText(std::string_view begin)
{
    const auto isOdd = [](char character)
    { return static_cast<unsigned char>(character) < ' ' && !IsAsciiSpace(character) && character != '\x1A'; };
    const auto odd = static_cast<std::size_t>(std::count_if(begin.begin(), begin.end(), isOdd));
    return odd <= begin.size() / 20;
}

// The forms of a file in its directory, the preferred one first.
constexpr std::array<std::string_view, 3> kForms = {"", ".Z", ".gz"};

// The names in the folder that are the file in one of its forms: the exact spelling, else of those that differ only in
// letter case the first in byte order.
using Forms = std::array<std::string_view, kForms.size()>;
Forms FormsIn(const std::vector<std::string>& names, std::string_view name)
{
    Forms found;
    for (const std::string_view entry : names)
    {
        if (!AsciiEqualNoCase(entry.substr(0, name.size()), name))
            continue;
        const std::string_view form = entry.substr(name.size());
        const auto isExact = [name](std::string_view other, std::string_view exactForm)
        { return other.starts_with(name) && other.substr(name.size()) == exactForm; };
        for (std::size_t i = 0; i < kForms.size(); ++i)
            if (AsciiEqualNoCase(form, kForms[i]) && !isExact(found[i], kForms[i]) &&
                (found[i].empty() || isExact(entry, kForms[i]) || entry < found[i]))
                found[i] = entry;
    }
    return found;
}

// Keeps the blocks of an expanding file up to a limit.
class CLimitedText : public CJOBXblockTaker
{
public:
    CLimitedText(std::string& text, ULONGLONG limit) : m_text(text), m_limit(limit) {}

    bool Take(std::string_view block) override
    {
        m_isTooLong = m_isTooLong || block.size() > m_limit - m_text.size();
        if (!m_isTooLong)
            m_text.append(block);
        return !m_isTooLong;
    }
    bool IsTooLong() const noexcept { return m_isTooLong; }

private:
    std::string& m_text;
    ULONGLONG m_limit;
    bool m_isTooLong = false;
};

LzwResult ExpandGzip(CJOBXgzipExpander& expander, std::string_view data, CLimitedText& text)
{
    const bool isWhole = expander.Expand(data, text);
    if (text.IsTooLong())
        return LzwResult::TooLong;
    return isWhole ? LzwResult::Done : LzwResult::Damaged;
}
LzwResult ExpandLzw(std::string_view data, ULONGLONG limit, CLimitedText& text)
{
    return DecodeLzw(data, limit, [&text](std::string_view block) { return text.Take(block); });
}

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

CByteHash HashOf(std::string_view bytes)
{
    CByteHash hash;
    hash.Add(bytes);
    return hash;
}

// Whether all lines of a text that begins like this end with CR alone. A text of one line does not tell.
bool HasOnlyCR(std::string_view begin)
{
    const std::size_t cr = begin.find('\r');
    return cr < begin.size() - 1 && begin.find('\n') == std::string_view::npos;
}
} // namespace

// Reports lines that lose text.
class CSourceFile::CLostText final : public CLineScanner::CutLines
{
public:
    explicit CLostText(CFileMessages& messages) : m_messages(messages) {}

    void OnCutLine(int line) override
    {
        m_messages.Say(file_message::kNul, line, "What follows the NUL byte in this line is not read.");
    }

private:
    CFileMessages& m_messages;
};

CSourceFile::~CSourceFile()
{
    if (WasRead() && m_taken != nullptr)
        m_taken->SetHash(m_below, m_hash.Value());
}

CSourceFolder::CSourceFolder(const CString& path) : m_path(path)
{
    std::vector<CKDiagnostic> said; // reported by messages instead
    const CDiagnosticCapture capture(said);
    if (CKUtility::GetInstance()->IsDir(path))
        ListEntries(std::string(path.View()), [this](const ListedEntry& entry) { m_names.emplace_back(entry.name); });
}

CString CSourceFile::Find(const CSourceFolder& folder, const char* name)
{
    const std::string file = FindName(folder.Names(), name);
    return file.empty() ? CString()
                        : CKUtility::GetInstance()->CKPathCombine(folder.Path(), CString(std::string_view(file)));
}

std::string CSourceFile::FindName(const std::vector<std::string>& names, const char* name)
{
    for (const std::string_view form : FormsIn(names, name))
        if (!form.empty())
            return std::string(form);
    return {};
}

CSourceFile::CSourceFile(const CReadingContext& context, const CSourceFolder& folder, const char* name,
                         Presence presence)
    : m_taken(context.job.taken)
{
    if (context.bytes != nullptr)
    {
        m_isThere = true;
        SetPath(context, CKUtility::GetInstance()->CKPathCombine(folder.Path(), name));
        OpenUnusual(*context.bytes);
        return;
    }
    std::vector<CKDiagnostic> said; // reported by messages instead
    const CDiagnosticCapture capture(said);
    const Forms forms = FormsIn(folder.Names(), name);
    const auto isThere = [](std::string_view form) { return !form.empty(); };
    const auto first = std::find_if(forms.begin(), forms.end(), isThere);
    m_isThere = first != forms.end();
    SetPath(context,
            CKUtility::GetInstance()->CKPathCombine(folder.Path(), m_isThere ? CString(*first) : CString(name)));
    if (!m_isThere)
    {
        if (presence == Presence::Needed)
            m_messages->Say(file_message::kMissing, 0, "The file is not there.");
        return;
    }
    Open(context.job.reading);
    if (const auto second = std::find_if(std::next(first), forms.end(), isThere);
        second != forms.end() &&
        !IsSameAs(context.job.reading, CKUtility::GetInstance()->CKPathCombine(folder.Path(), CString(*second))))
        m_messages->Say(file_message::kTwoForms, 0, "The file is also there as ", Quoted{*second},
                        ", which is not read and has other contents.");
    if (WasRead() && m_taken != nullptr)
        m_taken->Add(m_below);
}

void CSourceFile::SetPath(const CReadingContext& context, const CString& path)
{
    m_path = path;
    m_below = context.job.BelowJob(m_path);
    m_messages = &context.messages.Of(m_below);
}

void CSourceFile::Open(const CJOBXreading& reading)
{
    auto text = std::make_unique<CLineScanner>(CLineScanner::InPieces{}, m_path, __FILE__, __LINE__,
                                               m_taken != nullptr ? &m_hash : nullptr);
    if (!text->WasRead())
        return SayUnreadable();
    const std::string_view beginning = text->Beginning();
    if (text->HasFailed())
        return SayUnreadable();
    const bool isGzip = beginning.starts_with(kGzipMark);
    const bool isPacked = isGzip || beginning.starts_with(kLzwMark);
    const bool isUnusual = isPacked || beginning.starts_with(kByteOrderMark) || HasOnlyCR(beginning.substr(0, kLooked));
    if (!isUnusual)
        return TakeText(std::move(text), beginning);
    CFileBytes bytes;
    if (!bytes.Load(m_path, __FILE__, __LINE__))
        return SayUnreadable();
    m_hash = HashOf(bytes.View());
    if (!isPacked)
        OpenUnusual(bytes.View());
    else if (Expand(reading, bytes.View(), isGzip))
        TakeText(std::make_unique<CLineScanner>(std::string_view(m_expanded)), m_expanded);
}

void CSourceFile::OpenUnusual(std::string_view text)
{
    const bool hasOnlyCR = HasOnlyCR(text.substr(0, kLooked));
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    m_expanded = text;
    if (hasOnlyCR)
        std::replace(m_expanded.begin(), m_expanded.end(), '\r', '\n');
    TakeText(std::make_unique<CLineScanner>(std::string_view(m_expanded)), m_expanded);
}

// Whether the compressed file `other` expands to the bytes of this one. False if that cannot be found out.
bool CSourceFile::IsSameAs(const CJOBXreading& reading, const CString& other) const
{
    CFileBytes own;
    CFileBytes packed;
    if (!own.Load(m_path, __FILE__, __LINE__) || !packed.Load(other, __FILE__, __LINE__))
        return false;
    std::string expanded;
    CLimitedText text(expanded, own.View().size());
    LzwResult result = LzwResult::Damaged;
    if (packed.View().starts_with(kLzwMark))
        result = ExpandLzw(packed.View(), own.View().size(), text);
    else if (packed.View().starts_with(kGzipMark) && reading.pGzipExpander != nullptr)
        result = ExpandGzip(*reading.pGzipExpander, packed.View(), text);
    return result == LzwResult::Done && expanded == own.View();
}

bool CSourceFile::ExpandBytes(const CJOBXreading& reading, std::string_view bytes, std::string& text)
{
    const bool isGzip = bytes.starts_with(kGzipMark);
    text.clear();
    if (!isGzip && !bytes.starts_with(kLzwMark))
        text = bytes;
    else if (isGzip && reading.pGzipExpander == nullptr)
        return false;
    else
    {
        CLimitedText expanded(text, reading.nExpansionLimit);
        return (isGzip ? ExpandGzip(*reading.pGzipExpander, bytes, expanded)
                       : ExpandLzw(bytes, reading.nExpansionLimit, expanded)) == LzwResult::Done;
    }
    return true;
}

void CSourceFile::SayUnreadable()
{
    m_messages->Say(file_message::kUnreadable, 0, "The file cannot be read.");
}

bool CSourceFile::Expand(const CJOBXreading& reading, std::string_view data, bool isGzip)
{
    if (isGzip && reading.pGzipExpander == nullptr)
    {
        m_messages->Say(file_message::kNoExpander, 0,
                        "The file is compressed by gzip, and this program cannot expand it.");
        return false;
    }
    CLimitedText text(m_expanded, reading.nExpansionLimit);
    const LzwResult result =
        isGzip ? ExpandGzip(*reading.pGzipExpander, data, text) : ExpandLzw(data, reading.nExpansionLimit, text);
    if (result == LzwResult::TooLong)
        m_messages->Say(file_message::kTooLong, 0, "The file expands to more than ",
                        static_cast<long long>(reading.nExpansionLimit), " bytes.");
    else if (result != LzwResult::Done)
        m_messages->Say(file_message::kDamaged, 0, "The compressed file is damaged or cut short.");
    return result == LzwResult::Done;
}

void CSourceFile::TakeText(std::unique_ptr<CLineScanner> text, std::string_view beginning)
{
    if (!IsText(beginning.substr(0, kLooked)))
        return m_messages->Say(file_message::kNotText, 0, "The file is not text.");
    m_lost = std::make_unique<CLostText>(*m_messages);
    m_text = std::move(text);
    m_text->ReportCutLines(*m_lost);
}
