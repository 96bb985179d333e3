#pragma once

#include "JOBXCLSDLL.h"
#include "reading/FailedOperations.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Which messages of complete reading are printed.
enum class ShownMessages
{
    First, // the ten most serious, and a count of the others
    All,
    None
};

// The messages about one job while it is read completely.
class ReadingMessages : public CJOBXmessageSink
{
public:
    void OnMessage(const CJOBXmessage& message) override { m_messages.push_back(message); }

    const std::vector<CJOBXmessage>& List() const { return m_messages; } // in the order of the job
    // How many there are, with those that the limit of each code left out.
    std::int64_t ErrorCount() const;
    std::int64_t WarningCount() const;
    // The first error about the file as a whole, as the end of a sentence: "the file is not text". "" if there is none.
    std::string ReasonFor(std::string_view file) const;
    // The first of the most serious messages, for people; "" if there is none above a note.
    std::string First() const;
    // Reports each fact once: leaves messages about directories of steps and layers to `failed` if that has the reason,
    // and drops failures to read a file that has a message. What is left out still counts.
    void Share(const std::string& jobPath, FailedOperations& failed);

    // Prints them, the most serious first. `jobPath` is put in front of the files' names.
    void Print(const std::string& jobPath, ShownMessages shown, bool withNotes) const;

private:
    std::int64_t CountOf(JOBXseverity severity) const;

    std::vector<CJOBXmessage> m_messages;
    std::int64_t m_leftOut = 0;
};
