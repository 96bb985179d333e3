#include "diff/ChangesText.h"

#include "output/Colours.h"
#include "output/Lengths.h"
#include "output/Terminal.h"
#include "output/Text.h"
#include "output/Wrapping.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>

namespace
{
constexpr std::size_t kLabel = 12;
constexpr std::size_t kNames = 5; // of one kind of change

// "2 added (R9, R10)"; "" for no name.
std::string Named(const std::vector<std::string>& names, std::string_view change)
{
    if (names.empty())
        return {};
    const auto end = names.begin() + static_cast<std::ptrdiff_t>(std::min(names.size(), kNames));
    return fmt::format("{} {} ({}{})", names.size(), change, fmt::join(names.begin(), end, ", "),
                       names.size() > kNames ? ", ..." : "");
}

std::string Added(const std::vector<std::string>& names)
{
    return names.empty() ? std::string() : Paint(stdout)(Colour::Added, Named(names, "added"));
}

std::string Removed(const std::vector<std::string>& names)
{
    return names.empty() ? std::string() : Paint(stdout)(Colour::Removed, Named(names, "removed"));
}

// One line for each text, the first behind the label.
void PrintLines(Output& output, std::string_view label, const std::vector<std::string>& texts)
{
    std::string_view shown = label;
    for (const std::string& text : texts)
    {
        if (text.empty())
            continue;
        output.Write(Wrapped(fmt::format("{:<{}}{}", shown, kLabel, text), ScreenWidth(stdout), kLabel + 2) + "\n");
        shown = "";
    }
}

void PrintComponents(Output& output, const ComponentChanges& changes)
{
    std::string moved = Named(changes.moved, "moved");
    if (!moved.empty())
        moved += fmt::format(", by up to {}", SmallLength(changes.farthest));
    PrintLines(output, "Components",
               {Added(changes.added), Removed(changes.removed), moved, Named(changes.rotated, "rotated"),
                Named(changes.otherPart, "with another part"), Named(changes.otherPackage, "with another package"),
                Named(changes.otherProperty, "with another property"), Named(changes.otherSide, "on the other side")});
}

// "2 added (1.5 sq mm, 1 negative of 0.2 sq mm, 1 without area)".
std::string FeaturesText(const FeatureSum& sum, std::string_view change)
{
    std::string text = fmt::format("{} {}", sum.count, change);
    std::vector<std::string> notes;
    if (sum.count > sum.negative + sum.withoutArea || sum.area > 0.0)
        notes.push_back(AreaText(sum.area));
    if (sum.negative > 0)
        notes.push_back(fmt::format("{} negative of {}", sum.negative, AreaText(sum.negativeArea)));
    if (sum.withoutArea > 0)
        notes.push_back(fmt::format("{} without area", sum.withoutArea));
    return notes.empty() ? text : fmt::format("{} ({})", text, fmt::join(notes, ", "));
}

std::string MovesText(const FeatureMoves& moves)
{
    if (!moves.areAlike)
        return fmt::format("{} moved by up to {}", moves.count, SmallLength(moves.farthest));
    return fmt::format("{} moved by {}, {} mm", moves.count, Rounded(moves.way.first, 6), Rounded(moves.way.second, 6));
}

// What changed on a layer; on lines of their own where one line has no room.
void AddLayerLines(std::vector<std::string>& lines, const LayerChanges& layer)
{
    const std::size_t room = ScreenWidth(stdout) - kLabel;
    const Paint paint(stdout);
    std::vector<std::pair<std::string, std::string>> changes; // plain, and as shown
    const auto add = [&](const FeatureSum& sum, std::string_view change, Colour colour)
    {
        if (sum.count == 0)
            return;
        const std::string text = FeaturesText(sum, change);
        changes.emplace_back(text, paint(colour, text));
    };
    add(layer.added, "added", Colour::Added);
    add(layer.removed, "removed", Colour::Removed);
    if (layer.moved.count > 0)
        changes.emplace_back(MovesText(layer.moved), MovesText(layer.moved));
    lines.push_back(layer.name + ":");
    std::size_t used = lines.back().size();
    for (std::size_t i = 0; i < changes.size(); ++i)
    {
        const auto& [plain, shown] = changes[i];
        const std::string_view comma = i + 1 < changes.size() ? "," : "";
        const std::size_t size = plain.size() + comma.size();
        const bool isNext = used + 1 + size > room;
        if (isNext)
            lines.emplace_back("  ").append(shown).append(comma);
        else
            lines.back().append(" ").append(shown).append(comma);
        used = isNext ? 2 + size : used + 1 + size;
    }
}

void PrintLayers(Output& output, const std::vector<LayerChanges>& layers)
{
    constexpr std::size_t kMostLayers = 12;
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < std::min(layers.size(), kMostLayers); ++i)
        AddLayerLines(texts, layers[i]);
    if (layers.size() > kMostLayers)
        texts.push_back(fmt::format("and {} more layers", layers.size() - kMostLayers));
    PrintLines(output, "Features", texts);
}

void PrintStep(Output& output, const StepChanges& step)
{
    if (step.shift)
        PrintLines(
            output, "Aligned",
            {fmt::format("B lies {}, {} mm from A", Rounded(step.shift->first, 6), Rounded(step.shift->second, 6))});
    PrintComponents(output, step.components);
    PrintLines(output, "Nets",
               {Added(step.nets.added), Removed(step.nets.removed), Named(step.nets.movedPins, "pins on another net")});
    PrintLayers(output, step.layers);
    std::vector<std::string> drills;
    for (const auto& [size, counts] : step.drills)
        drills.push_back(fmt::format("{}: {} -> {}", SmallLength(size), counts.first, counts.second));
    PrintLines(output, "Drills", drills);
}

bool HasChanges(const StepChanges& step)
{
    const ComponentChanges& components = step.components;
    for (const std::vector<std::string>* const names :
         {&components.added, &components.removed, &components.moved, &components.rotated, &components.otherPart,
          &components.otherPackage, &components.otherProperty, &components.otherSide, &step.nets.added,
          &step.nets.removed, &step.nets.movedPins})
        if (!names->empty())
            return true;
    return step.shift || !step.layers.empty() || !step.drills.empty();
}

// The differences that no line above is about.
bool IsOther(const DiffGroup& group)
{
    constexpr std::array<std::string_view, 2> kAbove = {"component", "toeprint"};
    if ((group.kind.starts_with("feature ") && (group.field.empty() || group.field == "place")) ||
        (group.kind == "net" && group.field.empty()) ||
        (group.kind == "property" && group.place.ends_with(" / components")))
        return false;
    if (std::find(kAbove.begin(), kAbove.end(), group.kind) == kAbove.end())
        return true;
    constexpr std::array<std::string_view, 7> kFields = {"", "x", "y", "rotation", "part name", "package", "net"};
    return std::find(kFields.begin(), kFields.end(), group.field) == kFields.end();
}

void PrintOthers(Output& output, const DiffCollector& collector)
{
    std::vector<std::pair<std::string, std::int64_t>> others; // by place and kind, in the order they were found
    for (const DiffGroup& group : collector.Groups())
    {
        if (!IsOther(group))
            continue;
        const std::string where = fmt::format("{}: {}", group.place, group.kind);
        const auto found =
            std::find_if(others.begin(), others.end(), [&](const auto& each) { return each.first == where; });
        if (found == others.end())
            others.emplace_back(where, group.count);
        else
            found->second += group.count;
    }
    std::vector<std::string> texts;
    texts.reserve(others.size());
    for (const auto& [where, count] : others)
        texts.push_back(fmt::format("{} ({})", where, count));
    PrintLines(output, "Other", texts);
}

void WriteNames(JsonOutput& json, std::string_view key, const std::vector<std::string>& names)
{
    json.ArrayMember(key,
                     [&]
                     {
                         for (const std::string& name : names)
                             json.Value(std::string_view(name));
                     });
}

void WriteComponents(JsonOutput& json, const ComponentChanges& changes)
{
    WriteNames(json, "added", changes.added);
    WriteNames(json, "removed", changes.removed);
    WriteNames(json, "moved", changes.moved);
    json.Member("farthest", changes.farthest);
    WriteNames(json, "rotated", changes.rotated);
    WriteNames(json, "otherPart", changes.otherPart);
    WriteNames(json, "otherPackage", changes.otherPackage);
    WriteNames(json, "otherProperty", changes.otherProperty);
    WriteNames(json, "otherSide", changes.otherSide);
}

void WriteArea(JsonOutput& json, const FeatureSum& sum)
{
    json.Member("positive", sum.area);
    json.Member("negative", sum.negativeArea);
    json.Member("negativeFeatures", sum.negative);
    json.Member("withoutArea", sum.withoutArea);
}

void WriteLayer(JsonOutput& json, const LayerChanges& layer)
{
    json.Member("layer", std::string_view(layer.name));
    json.Member("added", layer.added.count);
    json.Member("removed", layer.removed.count);
    json.Member("moved", layer.moved.count);
    json.ObjectMember("addedArea", [&] { WriteArea(json, layer.added); });
    json.ObjectMember("removedArea", [&] { WriteArea(json, layer.removed); });
    json.Key("movedBy");
    if (layer.moved.count > 0 && layer.moved.areAlike)
        json.Value(CPointD(layer.moved.way.first, layer.moved.way.second));
    else
        json.Null();
}

void WriteLayers(JsonOutput& json, const StepChanges& step)
{
    json.ArrayMember("layers",
                     [&]
                     {
                         for (const LayerChanges& layer : step.layers)
                             json.Object([&] { WriteLayer(json, layer); });
                     });
    json.ArrayMember("drills",
                     [&]
                     {
                         for (const auto& [size, counts] : step.drills)
                             json.Object(
                                 [&, size = size, counts = counts]
                                 {
                                     json.Member("diameter", size);
                                     json.Member("a", counts.first);
                                     json.Member("b", counts.second);
                                 });
                     });
}

void WriteStep(JsonOutput& json, const StepChanges& step)
{
    json.Member("step", std::string_view(step.name));
    json.Member("unit", std::string_view("mm"));
    json.Key("shift");
    if (step.shift)
        json.Value(CPointD(step.shift->first, step.shift->second));
    else
        json.Null();
    json.ObjectMember("components", [&] { WriteComponents(json, step.components); });
    json.ObjectMember("nets",
                      [&]
                      {
                          WriteNames(json, "added", step.nets.added);
                          WriteNames(json, "removed", step.nets.removed);
                          WriteNames(json, "pinsOnOtherNet", step.nets.movedPins);
                      });
    WriteLayers(json, step);
}
} // namespace

void PrintChanges(Output& output, const JobChanges& changes, const DiffCollector& collector)
{
    for (const StepChanges& step : changes.steps)
    {
        if (changes.steps.size() > 1 && HasChanges(step))
            output.Write(fmt::format("Step {}\n", step.name));
        PrintStep(output, step);
    }
    PrintOthers(output, collector);
    if (collector.Differences() > 0)
        output.Put('\n');
}

void WriteChanges(JsonOutput& json, const JobChanges& changes)
{
    json.ObjectMember("changes",
                      [&]
                      {
                          json.ArrayMember("steps",
                                           [&]
                                           {
                                               for (const StepChanges& step : changes.steps)
                                                   json.Object([&] { WriteStep(json, step); });
                                           });
                          WriteNames(json, "otherFiles", changes.otherFiles);
                      });
}
