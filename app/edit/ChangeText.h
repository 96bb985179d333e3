// The language of small changes: one change is one line of text.
#pragma once

#include <optional>
#include <string>
#include <vector>

// "comp R5.part=X", "delete comp R5" or "delete features top .pad_usage=1", taken apart as far as that needs no job.
struct ChangeText
{
    // One attribute that features must have.
    struct Condition
    {
        std::string attribute;
        std::optional<std::string> value; // none: any
    };

    std::string whole; // as given
    bool isDeletion = false;
    std::string kind;                  // "comp"
    std::string target;                // "pcb/R5.part", or only the name where something is deleted
    std::string value;                 // what stands behind the "="; "" in a deletion
    std::vector<Condition> conditions; // of "delete features" only
};

// Results: raises ExitError for a text that is no change.
ChangeText ParseChange(const std::string& text);

// The changes of a script: one a line. Empty lines and those that begin with "#" are skipped.
// Results: raises ExitError, with the number of the line.
std::vector<ChangeText> ParseScript(const std::string& text);

// Raises ExitError about a change.
[[noreturn]] void RefuseChange(const ChangeText& change, const std::string& reason);
