#include "edit/ChangeText.h"

#include "output/ExitError.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>
#include <sstream>

namespace
{
constexpr const char* kBetweenWords = " \t";

std::string WithoutBlanksAround(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// Takes the first word off the text.
std::string TakeWord(std::string& text)
{
    const std::size_t end = std::min(text.find_first_of(kBetweenWords), text.size());
    std::string word = text.substr(0, end);
    text = WithoutBlanksAround(text.substr(end));
    return word;
}

ChangeText::Condition ConditionIn(const std::string& word)
{
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos)
        return {word, {}};
    return {word.substr(0, equals), word.substr(equals + 1)};
}

// "job.info.SAVE_USER" has no name between its kind and the member.
void TakeKind(ChangeText& change, std::string& rest)
{
    constexpr std::string_view kJob = "job.";
    if (rest.starts_with(kJob))
    {
        change.kind = "job";
        rest = rest.substr(kJob.size());
    }
    else
        change.kind = TakeWord(rest);
}

void TakeDeletion(ChangeText& change, std::string rest)
{
    change.isDeletion = true;
    TakeKind(change, rest);
    change.target = change.kind == "features" ? TakeWord(rest) : rest;
    if (change.target.empty())
        RefuseChange(change, "it does not say what to delete");
    while (change.kind == "features" && !rest.empty())
        change.conditions.push_back(ConditionIn(TakeWord(rest)));
}

void TakeSetting(ChangeText& change, std::string rest)
{
    TakeKind(change, rest);
    const std::size_t equals = rest.find('=');
    if (equals == std::string::npos)
        RefuseChange(change, "it is neither KIND NAME.MEMBER=VALUE nor a deletion");
    change.target = WithoutBlanksAround(rest.substr(0, equals));
    change.value = WithoutBlanksAround(rest.substr(equals + 1));
    if (change.target.empty())
        RefuseChange(change, "it does not say what to change");
}
} // namespace

void RefuseChange(const ChangeText& change, const std::string& reason)
{
    throw ExitError(ExitCode::WrongUsage,
                    fmt::format("the change \"{}\" is not possible: {}", Printable(change.whole), reason));
}

ChangeText ParseChange(const std::string& text)
{
    ChangeText change;
    change.whole = WithoutBlanksAround(text);
    const auto isControl = [](unsigned char c) { return (c < ' ' && c != '\t') || c == 0x7F; };
    if (std::any_of(change.whole.begin(), change.whole.end(), isControl))
        RefuseChange(change, "it has a control character");
    std::string rest = change.whole;
    if (std::string word = rest; TakeWord(word) == "delete")
        TakeDeletion(change, word);
    else
        TakeSetting(change, rest);
    return change;
}

std::vector<ChangeText> ParseScript(const std::string& text)
{
    std::vector<ChangeText> changes;
    std::istringstream lines(text);
    int number = 0;
    for (std::string line; std::getline(lines, line);)
    {
        ++number;
        line = WithoutBlanksAround(line);
        if (line.empty() || line.front() == '#')
            continue;
        try
        {
            changes.push_back(ParseChange(line));
        }
        catch (const ExitError& error)
        {
            throw ExitError(error.Code(), fmt::format("line {} of the script: {}", number, error.what()));
        }
    }
    return changes;
}
