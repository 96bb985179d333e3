#include "convert/ConvertChanges.h"

#include "model/Glob.h"
#include "options/CommonOptions.h"
#include "output/ExitError.h"
#include "output/NearestName.h"
#include "output/Text.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <array>
#include <set>

namespace
{
struct PartWord
{
    std::string_view word;
    JOBXjobPart part;
};
constexpr std::array<PartWord, 9> kPartWords = {{{"attributes", JOBXjobPart::Attributes},
                                                 {"components", JOBXjobPart::Components},
                                                 {"eda", JOBXjobPart::Eda},
                                                 {"fonts", JOBXjobPart::Fonts},
                                                 {"netlists", JOBXjobPart::Netlists},
                                                 {"nets", JOBXjobPart::Nets},
                                                 {"notes", JOBXjobPart::Notes},
                                                 {"others", JOBXjobPart::Others},
                                                 {"properties", JOBXjobPart::Properties}}};

JOBXjobPart PartIn(const std::string& word)
{
    std::vector<std::string> words;
    for (const PartWord& each : kPartWords)
    {
        if (each.word == word)
            return each.part;
        words.emplace_back(each.word);
    }
    std::string all;
    for (const std::string& each : words)
        all += (all.empty() ? "" : ", ") + each;
    RaiseWrongUsage(
        fmt::format("--drop knows no part {}; the parts are: {}{}", Quoted(word), all, DidYouMean(word, words)));
}

std::pair<std::string, std::string> RenamingIn(const char* option, const std::string& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == text.size())
        RaiseWrongUsage(fmt::format("{} needs OLD=NEW, not {}", option, Quoted(text)));
    return {text.substr(0, equals), text.substr(equals + 1)};
}

CLI::Option* AddNames(CLI::App& command, const char* option, std::vector<std::string>& names, const char* problem,
                      const char* about)
{
    return command
        .add_option_function<std::string>(
            option, [&names, problem](const std::string& text) { names = SplitAtCommas(text, problem); }, about)
        ->type_name("A,B");
}

void AddRenaming(CLI::App& command, const char* option, std::vector<std::pair<std::string, std::string>>& renamed,
                 const char* about)
{
    command
        .add_option_function<std::vector<std::string>>(
            option,
            [&renamed, option](const std::vector<std::string>& texts)
            {
                for (const std::string& text : texts)
                    renamed.push_back(RenamingIn(option, text));
            },
            about)
        ->type_name("OLD=NEW")
        ->expected(1)
        ->take_all();
}

std::vector<std::string> AllStepNames(const CJOBX& job)
{
    std::vector<std::string> names;
    for (const CJOBXmatrixStep& row : job.m_pMatrix->m_arrSteps.Records())
        names.emplace_back(row.m_sName.View());
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        names.emplace_back(step.m_sName.View());
    return names;
}

// Layers of the matrix and those that only have a folder.
std::vector<std::string> AllLayerNames(const CJOBX& job)
{
    std::vector<std::string> names;
    for (const CJOBXmatrixLayer& row : job.m_pMatrix->m_arrLayers.Records())
        names.emplace_back(row.m_sName.View());
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        for (const CJOBXlayer& layer : step.m_arrLayers.Records())
            names.emplace_back(layer.m_sName.View());
        for (const CJOBXcomponents& file : step.m_arrComponents.Records())
            names.emplace_back(file.m_sLayerName.View());
    }
    return names;
}

// The names that fit one of the patterns.
CStringArray NamesLike(const std::vector<std::string>& patterns, const char* kind,
                       const std::vector<std::string>& names)
{
    std::set<std::string> chosen;
    for (const std::string& pattern : patterns)
    {
        const NameFilter filter(pattern, kind, names, LetterCase::Ignored);
        for (const std::string& name : names)
            if (!name.empty() && filter.Passes(name))
                chosen.insert(name);
    }
    CStringArray found;
    for (const std::string& name : chosen)
        found.Add(name.c_str());
    return found;
}

void CheckMade(const CJOBXresult& result)
{
    if (!result.IsDone())
        throw ExitError(ExitCode::WrongUsage, Printable(result.GetReason().View()));
}

// The name in `names`, whatever the case; raises ExitError for one that is not there.
void CheckIsOneOf(const std::string& name, const char* kind, const std::vector<std::string>& names)
{
    for (const std::string& each : names)
        if (CString(each.c_str()).CompareNoCase(name.c_str()) == 0)
            return;
    throw ExitError(ExitCode::WrongUsage,
                    fmt::format("the job has no {} {}{}", kind, Quoted(name), DidYouMean(name, names)));
}

// What a step repeats may be wrong in the job.
void FlattenSteps(CJOBX& job, const ConvertChanges& changes)
{
    for (const std::string& name : changes.flattened)
    {
        CheckIsOneOf(name, "step", AllStepNames(job));
        if (const CJOBXresult result = FlattenStep(job, name.c_str()); !result.IsDone())
            throw ExitError(ExitCode::UnreadableInput, Printable(result.GetReason().View()));
    }
}

void SelectParts(CJOBX& job, const ConvertChanges& changes)
{
    if (!changes.steps.empty())
        CheckMade(KeepSteps(job, NamesLike(changes.steps, "step", AllStepNames(job))));
    if (!changes.layers.empty())
        CheckMade(KeepLayers(job, NamesLike(changes.layers, "layer", AllLayerNames(job))));
    if (!changes.dropLayers.empty())
        CheckMade(DropLayers(job, NamesLike(changes.dropLayers, "layer", AllLayerNames(job))));
    for (const JOBXjobPart part : changes.parts)
        DropPart(job, part);
}

void RenameParts(CJOBX& job, const ConvertChanges& changes)
{
    for (const auto& [from, to] : changes.renamedSteps)
    {
        CheckIsOneOf(from, "step", AllStepNames(job));
        CheckMade(RenameStep(job, from.c_str(), to.c_str()));
    }
    for (const auto& [from, to] : changes.renamedLayers)
    {
        CheckIsOneOf(from, "layer", AllLayerNames(job));
        CheckMade(RenameLayer(job, from.c_str(), to.c_str()));
    }
    if (!changes.jobName.empty())
        CheckMade(RenameJob(job, changes.jobName.c_str()));
}

void PutInOrder(CJOBX& job, const ConvertChanges& changes)
{
    if (changes.stepOrder.empty())
        return;
    CStringArray names;
    for (const std::string& name : changes.stepOrder)
    {
        CheckIsOneOf(name, "step", AllStepNames(job));
        names.Add(name.c_str());
    }
    CheckMade(OrderSteps(job, names));
}
} // namespace

void AddConvertChanges(CLI::App& command, ConvertChanges& changes)
{
    AddNames(command, "--flatten", changes.flattened, "--flatten needs step names, separated by commas",
             "Turn the step-repeats of these steps into features");
    AddSteps(command, changes.steps);
    AddNames(command, "--layers", changes.layers, "--layers needs layer names, separated by commas",
             "Only these layers; wildcards * and ? are known here, and for steps");
    AddNames(command, "--drop-layers", changes.dropLayers, "--drop-layers needs layer names, separated by commas",
             "Not these layers");
    command
        .add_option_function<std::string>(
            "--drop",
            [&changes](const std::string& text)
            {
                for (const std::string& word : SplitAtCommas(text, "--drop needs names of parts, separated by commas"))
                    changes.parts.push_back(PartIn(word));
            },
            "Not these parts: attributes, components, eda, fonts, netlists, nets, notes, others, properties")
        ->type_name("A,B");
    command.add_flag("--anonymise", changes.anonymise,
                     "Replace the names of nets, components and parts; empty users, dates and paths");
    AddRenaming(command, "--rename-step", changes.renamedSteps, "Give a step another name; may be repeated");
    AddRenaming(command, "--rename-layer", changes.renamedLayers, "Give a layer another name; may be repeated");
    command
        .add_option_function<std::string>(
            "--rename-job",
            [&changes](const std::string& name)
            {
                if (name.empty())
                    RaiseWrongUsage("--rename-job needs a name");
                changes.jobName = name;
            },
            "Give the job another name in its information")
        ->type_name("NAME");
    AddNames(command, "--step-order", changes.stepOrder, "--step-order needs step names, separated by commas",
             "Put these steps first in the matrix, in this order");
    AddUnits(command, changes.unit, "Convert the whole job to mm or inch");
}

void MakeConvertChanges(CJOBX& job, const ConvertChanges& changes)
{
    FlattenSteps(job, changes);
    SelectParts(job, changes);
    if (changes.anonymise)
        AnonymiseJob(job);
    RenameParts(job, changes);
    PutInOrder(job, changes);
    if (changes.unit)
        CheckMade(ConvertJobUnits(job, *changes.unit));
}
