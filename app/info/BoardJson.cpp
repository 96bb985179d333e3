#include "info/BoardJson.h"

#include "model/FieldWords.h"
#include "model/ShownUnit.h"

namespace
{
template <class T>
void OptionalMember(JsonOutput& json, std::string_view key, const std::optional<T>& value)
{
    json.Key(key);
    if (value)
        json.Value(*value);
    else
        json.Null();
}

std::optional<double> RoundedIfAny(const std::optional<double>& length)
{
    return length ? std::optional(RoundedLength(*length)) : std::nullopt;
}

void WriteSize(JsonOutput& json, const std::optional<BoardSize>& size)
{
    json.Key("size");
    if (size)
        json.Value(CPointD(RoundedLength(size->width), RoundedLength(size->height)));
    else
        json.Null();
}

void WriteCopper(JsonOutput& json, const std::vector<CopperLayer>& copper)
{
    json.ArrayMember("copperLayers",
                     [&]
                     {
                         for (const CopperLayer& layer : copper)
                             json.Object(
                                 [&]
                                 {
                                     json.Member("name", layer.name);
                                     OptionalMember(json, "weight", layer.weight);
                                     json.Key("weightUnit");
                                     if (layer.weight)
                                         json.Value(std::string_view(layer.unit == JOBXunit::Inch ? "oz" : "micron"));
                                     else
                                         json.Null();
                                 });
                     });
}

void WriteSides(JsonOutput& json, const std::array<SideFacts, 2>& sides)
{
    for (std::size_t i = 0; i < sides.size(); ++i)
        json.ObjectMember(WordFor(static_cast<BoardSide>(i)),
                          [&]
                          {
                              json.Member("components", sides[i].components);
                              json.Member("smdPins", sides[i].surfacePins);
                              json.Member("throughHolePins", sides[i].throughPins);
                              json.Member("otherPins", sides[i].otherPins);
                          });
}

void WriteDrillLayer(JsonOutput& json, const DrillLayer& layer)
{
    json.Object(
        [&]
        {
            json.Member("layer", layer.name);
            json.Member("start", layer.start);
            json.Member("end", layer.end);
            json.Key("span");
            if (layer.span)
                json.Value(WordFor(*layer.span));
            else
                json.Null();
            json.Member("holes", layer.holes);
            json.Member("slots", layer.slots);
        });
}

void WriteDrills(JsonOutput& json, const DrillFacts& drills)
{
    json.Member("holes", drills.holes);
    json.Member("slots", drills.slots);
    json.Member("vias", drills.vias);
    json.Member("plated", drills.plated);
    json.Member("nonPlated", drills.nonPlated);
    json.ArrayMember("sizes",
                     [&]
                     {
                         for (const auto& [size, count] : drills.sizes)
                             json.Object(
                                 [&, size = size, count = count]
                                 {
                                     json.Member("diameter", RoundedLength(size));
                                     json.Member("count", count);
                                 });
                     });
    json.ArrayMember("layers",
                     [&]
                     {
                         for (const DrillLayer& layer : drills.layers)
                             WriteDrillLayer(json, layer);
                     });
}

void WriteBoard(JsonOutput& json, const BoardFacts& facts)
{
    json.Member("step", facts.step->m_sName);
    json.Member("unit", WordFor(JOBXunit::Millimetre));
    WriteSize(json, facts.size);
    OptionalMember(json, "thickness", RoundedIfAny(facts.thickness));
    WriteCopper(json, facts.copper);
    json.Key("smallestLine");
    if (facts.smallestLine)
        json.Object(
            [&]
            {
                json.Member("width", RoundedLength(facts.smallestLine->width));
                json.Member("layer", facts.smallestLine->layer);
            });
    else
        json.Null();
    WriteSides(json, facts.sides);
    json.Member("nets", facts.nets);
    json.Member("netPins", facts.netPins);
    json.ObjectMember("drills", [&] { WriteDrills(json, facts.drills); });
}

void WritePanel(JsonOutput& json, const PanelFacts& panel)
{
    json.Object(
        [&]
        {
            json.Member("step", panel.name);
            json.Member("unit", WordFor(JOBXunit::Millimetre));
            WriteSize(json, panel.size);
            json.ArrayMember("repeats",
                             [&]
                             {
                                 for (const auto& [name, copies] : panel.repeats)
                                     json.Object(
                                         [&, &name = name, copies = copies]
                                         {
                                             json.Member("step", name);
                                             json.Member("copies", copies);
                                         });
                             });
        });
}

void WriteOtherSteps(JsonOutput& json, const BoardFacts& facts)
{
    json.ArrayMember("otherSteps",
                     [&]
                     {
                         for (const auto& [name, size] : facts.otherSteps)
                             json.Object(
                                 [&, &name = name, &size = size]
                                 {
                                     json.Member("step", name);
                                     json.Member("unit", WordFor(JOBXunit::Millimetre));
                                     WriteSize(json, size);
                                 });
                     });
}
} // namespace

void WriteBoardFacts(JsonOutput& json, const ReadJob& read, const BoardFacts& facts)
{
    json.Key("board");
    if (facts.step == nullptr)
        json.Null();
    else
        json.Object([&] { WriteBoard(json, facts); });
    json.ArrayMember("panels",
                     [&]
                     {
                         for (const PanelFacts& panel : facts.panels)
                             WritePanel(json, panel);
                     });
    WriteOtherSteps(json, facts);
    json.ObjectMember("reading",
                      [&]
                      {
                          json.Member("errors", read.errors);
                          json.Member("warnings", read.warnings);
                          json.Member("missingParts", static_cast<std::int64_t>(read.missing.size()));
                          json.Member("first", std::string_view(read.firstMessage));
                      });
}
