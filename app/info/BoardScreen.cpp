#include "info/BoardScreen.h"

#include "info/InfoTexts.h"
#include "output/Lengths.h"
#include "output/Terminal.h"
#include "output/Text.h"
#include "output/Wrapping.h"

#include <fmt/core.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{
constexpr std::size_t kFactIndent = 12;
constexpr std::size_t kMostInPiece = 67; // what a line of 80 has room for
constexpr std::size_t kMostLines = 3;    // of one fact
constexpr std::size_t kMostPanels = 3;   // one line each

// Prints a fact whose pieces are separated by commas, on as many lines as they need. Pieces that would begin one line
// too many are counted instead. A piece that is longer than a usual line is cut; a narrow terminal breaks it.
class FactPrinter
{
public:
    FactPrinter(Output& output, std::string_view label)
        : m_output(output), m_line(fmt::format("{:<{}}", label, kFactIndent))
    {
    }

    void Print(const std::vector<std::string>& pieces)
    {
        for (std::size_t i = 0; i < pieces.size(); ++i)
        {
            const bool isLast = i + 1 == pieces.size();
            const std::string piece = Shortened(pieces[i], kMostInPiece) + (isLast ? "" : ",");
            const std::size_t room = m_lines + 1 == kMostLines && !isLast ? kRoomForRest : 0;
            const bool fits = CharacterCount(m_line) + CharacterCount(piece) + 1 + room <= m_width;
            if (!fits && !m_isEmpty && m_lines + 1 == kMostLines)
            {
                m_line += fmt::format(" and {} more", pieces.size() - i);
                break;
            }
            if (!fits && !m_isEmpty)
                EndLine();
            m_line += (m_isEmpty ? "" : " ") + piece;
            m_isEmpty = false;
        }
        EndLine();
    }

private:
    static constexpr std::size_t kRoomForRest = 16; // " and 123456 more"

    static std::string Shortened(const std::string& text, std::size_t width)
    {
        if (CharacterCount(text) <= width)
            return text;
        return std::string(FirstCharacters(text, width - 3)) + "...";
    }

    void EndLine()
    {
        m_output.Write(Wrapped(m_line, m_width, kFactIndent + 1) + "\n");
        m_line.assign(kFactIndent, ' ');
        m_isEmpty = true;
        ++m_lines;
    }

    Output& m_output;
    const std::size_t m_width = ScreenWidth(stdout);
    std::string m_line;
    std::size_t m_lines = 0;
    bool m_isEmpty = true;
};

void PrintFact(Output& output, std::string_view label, const std::vector<std::string>& pieces)
{
    std::vector<std::string> known;
    for (const std::string& piece : pieces)
        if (!piece.empty())
            known.push_back(piece);
    if (!known.empty())
        FactPrinter(output, label).Print(known);
}

std::string CountIfAny(std::int64_t count, std::string_view one)
{
    return count == 0 ? std::string() : Count(count, one);
}

void PrintJob(Output& output, const CJOBX& job)
{
    const CJOBXmisc& misc = *job.m_pMisc;
    const bool hasInfo = !misc.m_sODBSource.IsEmpty() || !misc.m_sSaveDate.IsEmpty() || !misc.m_sJobName.IsEmpty();
    PrintFact(output, "Job", {Printable(job.m_sName.View())});
    PrintFact(output, "Format",
              {hasInfo ? fmt::format("ODB++ {}.{}", misc.m_nODBVersionMajor, misc.m_nODBVersionMinor) : ""});
    PrintFact(output, "Source", {Printable(misc.m_sODBSource.View())});
    PrintFact(output, "Saved", {Saved(misc)});
}

void PrintBoard(Output& output, const BoardFacts& facts)
{
    PrintFact(output, "Board",
              {fmt::format("step {}", Printable(facts.step->m_sName.View())),
               facts.size ? BoardArea(facts.size->width, facts.size->height) : ""});
    PrintFact(output, "Thickness", {facts.thickness ? BoardLength(*facts.thickness) : ""});
    std::vector<std::string> copper;
    for (const CopperLayer& layer : facts.copper)
    {
        copper.push_back(Printable(layer.name.View()));
        if (layer.weight)
            copper.back() +=
                fmt::format(" {} {}", Rounded(*layer.weight, 2), layer.unit == JOBXunit::Inch ? "oz" : "micron");
    }
    if (!copper.empty())
        copper.front() =
            fmt::format("{}: {}", Count(static_cast<std::int64_t>(copper.size()), "layer"), copper.front());
    PrintFact(output, "Copper", copper);
    if (facts.smallestLine)
        PrintFact(output, "Line width",
                  {fmt::format("smallest {} on {}", SmallLength(facts.smallestLine->width),
                               Printable(facts.smallestLine->layer.View()))});
}

void PrintSide(Output& output, std::string_view label, const SideFacts& side)
{
    if (side.components > 0)
        PrintFact(output, label,
                  {Count(side.components, "component"), CountIfAny(side.surfacePins, "SMD pin"),
                   CountIfAny(side.throughPins, "through-hole pin"), CountIfAny(side.otherPins, "other pin")});
}

void PrintNets(Output& output, const BoardFacts& facts)
{
    PrintFact(output, "Nets", {CountIfAny(facts.nets, "net"), CountIfAny(facts.netPins, "pin")});
}

// "34 blind (TOP to GND)" for each pair of layers, in the order of the drill layers.
std::vector<std::string> Spans(const std::vector<DrillLayer>& layers)
{
    std::vector<DrillLayer> spans;
    for (const DrillLayer& layer : layers)
    {
        const auto found =
            std::find_if(spans.begin(), spans.end(),
                         [&](const DrillLayer& each) { return each.start == layer.start && each.end == layer.end; });
        if (found != spans.end())
            found->holes += layer.holes + layer.slots;
        else if (layer.holes + layer.slots > 0)
            spans.emplace_back(layer).holes += layer.slots;
    }
    std::vector<std::string> texts;
    for (const DrillLayer& span : spans)
    {
        texts.push_back(std::to_string(span.holes));
        if (span.span)
            texts.back() += fmt::format(" {}", WordFor(*span.span));
        if (!span.start.IsEmpty() || !span.end.IsEmpty())
            texts.back() += fmt::format(" ({} to {})", Printable(span.start.View()), Printable(span.end.View()));
    }
    return texts;
}

// "34 holes: 16 vias", "18 non-plated".
std::vector<std::string> DrilledTexts(const DrillFacts& drills)
{
    std::vector<std::string> texts;
    for (const auto& [count, one] : {std::pair{drills.holes, "hole"}, std::pair{drills.slots, "slot"}})
        if (count > 0)
            texts.push_back(Count(count, one));
    const std::size_t shapes = texts.size();
    if (drills.vias > 0)
        texts.push_back(Count(drills.vias, "via"));
    if (drills.plated > 0)
        texts.push_back(fmt::format("{} other plated", drills.plated));
    if (drills.nonPlated > 0)
        texts.push_back(fmt::format("{} non-plated", drills.nonPlated));
    if (texts.size() > shapes)
    {
        texts[shapes - 1] = fmt::format("{}: {}", texts[shapes - 1], texts[shapes]);
        texts.erase(texts.begin() + static_cast<std::ptrdiff_t>(shapes));
    }
    return texts;
}

void PrintDrills(Output& output, const DrillFacts& drills)
{
    if (drills.holes + drills.slots == 0)
        return;
    PrintFact(output, "Drilled", DrilledTexts(drills));
    std::vector<std::string> sizes;
    for (const auto& [size, count] : drills.sizes)
        sizes.push_back(fmt::format("{} x {}", Rounded(size, 3), count));
    if (!sizes.empty())
    {
        sizes.front() =
            fmt::format("{}, smallest {}; in mm: {}", Count(static_cast<std::int64_t>(drills.sizes.size()), "size"),
                        SmallLength(drills.sizes.begin()->first), sizes.front());
        PrintFact(output, "Drill sizes", sizes);
    }
    PrintFact(output, "Drill spans", Spans(drills.layers));
}

void PrintPanels(Output& output, const BoardFacts& facts)
{
    for (std::size_t i = 0; i < std::min(facts.panels.size(), kMostPanels); ++i)
    {
        const PanelFacts& panel = facts.panels[i];
        std::vector<std::string> pieces = {fmt::format("step {}", Printable(panel.name.View())),
                                           panel.size ? BoardArea(panel.size->width, panel.size->height)
                                                      : std::string()};
        for (const auto& [name, copies] : panel.repeats)
            pieces.push_back(
                fmt::format("{} {}", Printable(name.View()), copies == 1 ? "once" : Count(copies, "time")));
        PrintFact(output, "Panel", pieces);
    }
    if (facts.panels.size() > kMostPanels)
        PrintFact(output, "", {fmt::format("and {} more", facts.panels.size() - kMostPanels)});
    std::vector<std::string> others;
    for (const auto& [name, size] : facts.otherSteps)
        others.push_back(size ? fmt::format("{} {}", Printable(name.View()), BoardArea(size->width, size->height))
                              : Printable(name.View()));
    PrintFact(output, "Other steps", others);
}

std::string CountOrNo(std::int64_t count, std::string_view one)
{
    return count == 0 ? fmt::format("no {}s", one) : Count(count, one);
}

void PrintFindings(Output& output, const ReadJob& read)
{
    const std::int64_t missing = static_cast<std::int64_t>(read.missing.size());
    PrintFact(
        output, "Reading",
        {CountOrNo(read.errors, "error"), CountOrNo(read.warnings, "warning"), CountIfAny(missing, "missing part")});
    if (IsTerminal(stdout) || read.firstMessage.empty())
        PrintFact(output, "First", {read.firstMessage});
    else
        output.Write(fmt::format("{:<{}}{}\n", "First", kFactIndent, read.firstMessage));
}
} // namespace

void PrintBoardScreen(Output& output, const ReadJob& read, const BoardFacts& facts)
{
    PrintJob(output, *read.job);
    if (facts.step != nullptr)
    {
        PrintBoard(output, facts);
        PrintSide(output, "Top", facts.sides[0]);
        PrintSide(output, "Bottom", facts.sides[1]);
        PrintNets(output, facts);
        PrintDrills(output, facts.drills);
        PrintPanels(output, facts);
    }
    PrintFindings(output, read);
    output.Flush();
}
