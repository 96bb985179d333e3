// Collects the messages of complete reading about one file.
#pragma once

#include "reading/CJOBXreading.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace reading_text
{
inline void Append(std::string& text, std::string_view part)
{
    text += part;
}
inline void Append(std::string& text, int part)
{
    text += std::to_string(part);
}
inline void Append(std::string& text, long long part)
{
    text += std::to_string(part);
}
inline void Append(std::string& text, std::size_t part)
{
    text += std::to_string(part);
}

// A piece of a file in a message: quoted, and cut if it is long.
struct Quoted
{
    std::string_view text;
};
void Append(std::string& text, Quoted part);
} // namespace reading_text

using reading_text::Quoted;

// The messages of one file, up to a limit for each code. They are kept until they are delivered, because files are read
// on several threads.
// Threads:   one file, one thread.
class CFileMessages
{
public:
    // `file` is the path below the job directory.
    CFileMessages(const CJOBXreading& reading, std::string file) : m_reading(&reading), m_file(std::move(file)) {}

    // `parts` form the sentence: texts, Quoted pieces of the file, whole numbers. Cheap if there is no sink.
    template <class... Parts>
    void Say(const CJOBXmessageKind& kind, int line, const Parts&... parts)
    {
        if (m_reading->pSink == nullptr || !IsWanted(kind, line))
            return;
        std::string text;
        (reading_text::Append(text, parts), ...);
        Add(kind, line, std::move(text));
    }

    // Reports something unknown, such as a record or a key: once, with the number of times it came. `what` is its noun,
    // "record" or "key".
    void SayUnknown(const CJOBXmessageKind& kind, int line, const char* what, std::string_view name);

    const std::string& File() const noexcept { return m_file; }

    // Adds what is only known at the end: how many messages were left out, and how often something unknown came. Then
    // passes everything to the sink, by line.
    void Deliver();

private:
    struct Count
    {
        const CJOBXmessageKind* kind = nullptr;
        int said = 0;
        int last = 0; // line of the last message left out
    };
    struct Entry
    {
        const CJOBXmessageKind* kind = nullptr;
        int line = 0;
        std::size_t order = 0; // of entries on one line
        std::string text;
        int count = 1;
    };
    struct Unknown
    {
        const CJOBXmessageKind* kind = nullptr;
        const char* what = "";
        int line = 0; // of the first
        int count = 0;
    };
    static constexpr std::size_t kMostUnknown = 1000; // names that are counted separately

    bool IsWanted(const CJOBXmessageKind& kind, int line);
    void Add(const CJOBXmessageKind& kind, int line, std::string&& text, int count = 1);
    void AddUnknown();
    void AddLeftOut();

    const CJOBXreading* m_reading;
    std::string m_file;
    std::vector<Count> m_counts; // a file has messages of few kinds
    std::vector<Entry> m_entries;
    std::map<std::pair<std::string, std::string>, Unknown, std::less<>> m_unknown; // by noun and name
};
