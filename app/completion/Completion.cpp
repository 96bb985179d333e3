#include "completion/Completion.h"

#include "completion/JobNames.h"
#include "diff/MeaningDiff.h"
#include "output/Output.h"
#include "output/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdlib>

namespace
{
enum class ValueKind
{
    Unknown, // nothing to offer
    Words,
    Steps,
    Layers,
    Nets,
    Files,
    Directories,
};

// What the values of an option are.
struct OptionValues
{
    std::string_view option;
    ValueKind kind = ValueKind::Unknown;
    std::vector<std::string_view> words{};
    bool isList = false; // separated by commas
    LetterCase letterCase = LetterCase::Respected;
};

const std::vector<OptionValues>& AllValues()
{
    static const std::vector<OptionValues> kValues = {
        {"--color", ValueKind::Words, {"auto", "always", "never"}},
        {"--messages", ValueKind::Words, {"all", "none"}},
        {"--units", ValueKind::Words, {"mm", "inch"}},
        {"--side", ValueKind::Words, {"top", "bottom"}},
        {"--only", ValueKind::Words, {kDiffParts.begin(), kDiffParts.end()}, true},
        {"--step", ValueKind::Steps, {}, true, LetterCase::Ignored},
        {"--steps", ValueKind::Steps, {}, true, LetterCase::Ignored},
        {"--layer", ValueKind::Layers, {}, false, LetterCase::Ignored},
        {"--net", ValueKind::Nets},
        {"--sysattr", ValueKind::Files},
        {"--output", ValueKind::Directories},
        {"-o", ValueKind::Directories},
    };
    return kValues;
}

OptionValues ValuesOf(const std::string& option)
{
    const std::vector<OptionValues>& all = AllValues();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const OptionValues& each) { return each.option == option; });
    return found == all.end() ? OptionValues{} : *found;
}

// The answer to a shell.
class Offer
{
public:
    explicit Offer(std::string_view kind) { m_output.Write(std::string(kind) + "\n"); }
    void Add(std::string_view word, std::string_view about = {})
    {
        m_output.Write(word);
        if (!about.empty())
        {
            m_output.Put('\t');
            m_output.Write(about);
        }
        m_output.Put('\n');
    }
    void Finish() { m_output.Flush(); }

private:
    Output m_output;
};

void OfferCommands(const CLI::App& app, const std::string& current)
{
    Offer offer("words");
    for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; }))
        if (command->get_name().starts_with(current))
            offer.Add(command->get_name(), command->get_description());
    offer.Finish();
}

void OfferOptions(const CLI::App& place, const std::string& current)
{
    Offer offer("words");
    for (const CLI::Option* const option : place.get_options())
        for (const std::string& name : option->get_lnames())
            if (const std::string word = "--" + name; word.starts_with(current))
                offer.Add(word, option->get_description());
    offer.Finish();
}

// `lead` stands in front of the value in its word, such as "--units=".
void OfferValues(const OptionValues& values, const std::string& lead, const std::string& current,
                 const std::string& jobPath)
{
    if (values.kind == ValueKind::Files || values.kind == ValueKind::Directories)
        return Offer(values.kind == ValueKind::Files ? "files" : "directories").Finish();
    const std::size_t comma = values.isList ? current.rfind(',') : std::string::npos;
    const std::string before = comma == std::string::npos ? "" : current.substr(0, comma + 1);
    const NameStart start{current.substr(before.size()), values.letterCase};
    std::vector<std::string> names;
    for (const std::string_view word : values.words)
        if (start.IsOf(word))
            names.emplace_back(word);
    if (values.kind == ValueKind::Steps)
        names = StepNames(jobPath, start);
    else if (values.kind == ValueKind::Layers)
        names = LayerNames(jobPath, start);
    else if (values.kind == ValueKind::Nets)
        names = NetNames(jobPath, start);
    Offer offer("words");
    const std::string prefix = lead + before;
    for (const std::string& name : names)
        offer.Add(prefix + name);
    offer.Finish();
}

bool TakesValue(const CLI::App& command, const std::string& word)
{
    const CLI::Option* const option = word.starts_with('-') ? command.get_option_no_throw(word) : nullptr;
    return option != nullptr && option->get_items_expected_max() > 0;
}

// A shell replaces the tilde only when it runs the line.
std::string WithHome(const std::string& path)
{
    const char* const home = std::getenv("HOME");
    return path.starts_with("~/") && home != nullptr ? home + path.substr(1) : path;
}

// The first word that is a job and neither an option nor its value; "" if there is none.
std::string JobAmong(const CLI::App& command, const std::vector<std::string>& words)
{
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        if (TakesValue(command, words[i]))
            ++i;
        else if (const std::string path = WithHome(words[i]); IsJob(path))
            return path;
    return {};
}

// `words` follow the command.
void OfferFor(const CLI::App& command, const std::vector<std::string>& words)
{
    const std::string& current = words.back();
    const bool hasOnlyArguments = std::find(words.begin(), words.end() - 1, "--") != words.end() - 1;
    if (!hasOnlyArguments && words.size() > 1 && TakesValue(command, words[words.size() - 2]))
        return OfferValues(ValuesOf(words[words.size() - 2]), "", current, JobAmong(command, words));
    const std::size_t sign = current.find('=');
    if (!hasOnlyArguments && current.starts_with("--") && sign != std::string::npos)
        return OfferValues(ValuesOf(current.substr(0, sign)), current.substr(0, sign + 1), current.substr(sign + 1),
                           JobAmong(command, words));
    if (!hasOnlyArguments && current.starts_with('-'))
        return OfferOptions(command, current);
    Offer("directories").Finish(); // a job is a directory
}
} // namespace

void PrintCompletions(const CLI::App& app, const std::vector<std::string>& words)
{
    const std::vector<std::string> typed = words.empty() ? std::vector<std::string>{""} : words;
    if (typed.size() == 1)
        return typed[0].starts_with('-') ? OfferOptions(app, typed[0]) : OfferCommands(app, typed[0]);
    if (typed[0] == "help")
        return OfferCommands(app, typed.back());
    for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; }))
        if (command->get_name() == typed[0])
            return OfferFor(*command, {typed.begin() + 1, typed.end()});
    Offer("words").Finish();
}
