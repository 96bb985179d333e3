#include "reading/ReadingMessages.h"

#include "output/Colours.h"
#include "output/Messages.h"
#include "output/Text.h"
#include "reading/Files.h"
#include "reading/UnreadableFile.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>

namespace
{
constexpr std::size_t kPrinted = 10;
constexpr std::string_view kNoStepDirectory = "MAT001";
constexpr std::string_view kNoLayerDirectory = "MAT003";
constexpr std::string_view kUnreadableCode = "FIL002"; // the program knows the reason

std::string ReasonOfUnreadable(const CString& path)
{
    if (LeadsOutOfJob(path))
        return "is a link that leads out of the job (--follow-links follows it)";
    return ReasonNotToRead(path);
}

std::string ShownSeverity(JOBXseverity severity)
{
    const Colour colour = severity == JOBXseverity::Error     ? Colour::Error
                          : severity == JOBXseverity::Warning ? Colour::Warning
                                                              : Colour::Note;
    return Paint(stderr)(colour, JOBXseverityName(severity));
}

std::string LineOf(const std::string& jobPath, const CJOBXmessage& message)
{
    const CString path =
        message.file.IsEmpty() ? CString(jobPath.c_str()) : Files().CKPathCombine(jobPath.c_str(), message.file);
    const std::string place = message.line == 0 ? "" : fmt::format(":{}", message.line);
    const std::string reason =
        std::string_view(message.kind->code) == kUnreadableCode ? ReasonOfUnreadable(path) : std::string();
    const std::string text = reason.empty() ? Printable(message.text.View()) : fmt::format("The file {}.", reason);
    return fmt::format("{}{}: {} {} {}", Printable(path.View()), place, ShownSeverity(message.kind->severity),
                       message.kind->code, text);
}

// "2 errors, 1 warning".
std::string Counts(const std::vector<const CJOBXmessage*>& messages, std::size_t from)
{
    std::array<std::size_t, 3> counts{};
    for (std::size_t i = from; i < messages.size(); ++i)
        counts[static_cast<std::size_t>(messages[i]->kind->severity)] += static_cast<std::size_t>(messages[i]->count);
    std::string text;
    for (const JOBXseverity severity : {JOBXseverity::Error, JOBXseverity::Warning, JOBXseverity::Note})
        if (const std::size_t count = counts[static_cast<std::size_t>(severity)]; count > 0)
            text += fmt::format("{}{} {}{}", text.empty() ? "" : ", ", count, JOBXseverityName(severity),
                                count == 1 ? "" : "s");
    return text;
}
} // namespace

std::int64_t ReadingMessages::CountOf(JOBXseverity severity) const
{
    std::int64_t count = 0;
    for (const CJOBXmessage& message : m_messages)
        if (message.kind->severity == severity)
            count += message.count;
    return count;
}

std::int64_t ReadingMessages::ErrorCount() const
{
    return m_leftOut + CountOf(JOBXseverity::Error);
}

std::int64_t ReadingMessages::WarningCount() const
{
    return CountOf(JOBXseverity::Warning);
}

std::string ReadingMessages::First() const
{
    const auto first = std::max_element(m_messages.begin(), m_messages.end(),
                                        [](const CJOBXmessage& a, const CJOBXmessage& b)
                                        { return a.kind->severity < b.kind->severity; });
    if (first == m_messages.end() || first->kind->severity == JOBXseverity::Note)
        return {};
    return Printable(first->Line().View());
}

std::string ReadingMessages::ReasonFor(std::string_view file) const
{
    for (const CJOBXmessage& message : m_messages)
        if (message.kind->severity == JOBXseverity::Error && message.line == 0 && message.file.View() == file)
        {
            std::string text(message.text.View());
            if (text.front() == 'T')
                text.front() = 't';
            text.pop_back(); // the full stop
            return text;
        }
    return {};
}

void ReadingMessages::Share(const std::string& jobPath, FailedOperations& failed)
{
    const auto isReported = [&](const CJOBXmessage& message)
    {
        const std::string_view code = message.kind->code;
        return (code == kNoStepDirectory || code == kNoLayerDirectory) &&
               failed.HaveReported(Files().CKPathCombine(jobPath.c_str(), message.file), message.text.View());
    };
    for (const CJOBXmessage& message : m_messages)
        if (std::string_view(message.kind->code) == kUnreadableCode)
            failed.ForgetAll(Files().CKPathCombine(jobPath.c_str(), message.file));
    m_leftOut += static_cast<std::int64_t>(std::erase_if(m_messages, isReported));
}

void ReadingMessages::Print(const std::string& jobPath, ShownMessages shown, bool withNotes) const
{
    if (shown == ShownMessages::None)
        return;
    std::vector<const CJOBXmessage*> messages;
    for (const CJOBXmessage& message : m_messages)
        if (withNotes || message.kind->severity != JOBXseverity::Note)
            messages.push_back(&message);
    std::stable_sort(messages.begin(), messages.end(),
                     [](const CJOBXmessage* a, const CJOBXmessage* b)
                     { return a->kind->severity > b->kind->severity; });
    const std::size_t printed = shown == ShownMessages::All ? messages.size() : std::min(messages.size(), kPrinted);
    for (std::size_t i = 0; i < printed; ++i)
        PrintMessage(LineOf(jobPath, *messages[i]));
    if (printed < messages.size())
        PrintMessage(fmt::format("further messages: {} (--messages all prints them)", Counts(messages, printed)));
}
