#include "info/InfoTables.h"

#include "info/InfoTexts.h"
#include "output/Table.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <set>
#include <string>

namespace
{
constexpr std::string_view kIndent = "  ";
constexpr std::size_t kLabelWidth = 18;
constexpr std::size_t kPageWidth = 100;

void PrintLine(Output& output, std::string_view indent, std::string_view label, std::string_view value)
{
    if (value.empty())
        return;
    output.Write(fmt::format("{}{:<{}}{}\n", indent, label, kLabelWidth, value));
}

std::string Number(double number)
{
    return std::string(NumberText(number).View());
}

std::string Point(const CPointD& point)
{
    return fmt::format("({}, {})", Number(point.x), Number(point.y));
}

// The unit alone: the model keeps lines such as "UNITS=MM" whole.
std::string Unit(const CString& units)
{
    CString unit = units;
    if (unit.Left(5).CompareNoCase("UNITS") == 0)
        unit = unit.Mid(5);
    unit.TrimLeft(" =");
    return Printable(unit.View());
}

void PrintJob(Output& output, const JobSummary& summary)
{
    const CJOBX& job = summary.job;
    const CJOBXmisc& misc = *job.m_pMisc;
    PrintLine(output, "", "Job", Printable(job.m_sName.View()));
    PrintLine(output, "", "Name in the job", Printable(misc.m_sJobName.View()));
    PrintLine(output, "", "Format version", fmt::format("{}.{}", misc.m_nODBVersionMajor, misc.m_nODBVersionMinor));
    PrintLine(output, "", "Source", Printable(misc.m_sODBSource.View()));
    PrintLine(output, "", "Created", Date(misc.m_sCreationDate));
    PrintLine(output, "", "Saved", Saved(misc));
    PrintLine(output, "", "Font",
              fmt::format("{}, {}", Count(job.m_pFonts->m_arrCharacters.GetSize(), "character"),
                          Count(summary.strokes, "stroke")));
}

// The layers that a drill or rout layer goes through; other layers have none.
std::string Span(const CJOBXmatrixLayer& layer)
{
    if (layer.m_sStartName.IsEmpty() && layer.m_sEndName.IsEmpty())
        return {};
    return fmt::format("{} - {}", layer.m_sStartName.View(), layer.m_sEndName.View());
}

void PrintMatrix(Output& output, const CJOBXmatrix& matrix)
{
    output.Write(fmt::format("Matrix: {}, {}\n\n", Count(matrix.m_arrSteps.GetSize(), "step"),
                             Count(matrix.m_arrLayers.GetSize(), "layer")));
    Table steps({{"Column", "", true}, {"Step", ""}});
    for (const CJOBXmatrixStep& step : matrix.m_arrSteps.Records())
        steps.Add({CellOf(step.m_nColumn), CellOf(step.m_sName)});
    steps.PrintAligned(output, kIndent);
    output.Put('\n');
    Table layers({{"Row", "", true}, {"Layer", ""}, {"Context", ""}, {"Type", ""}, {"Polarity", ""}, {"Span", ""}});
    for (const CJOBXmatrixLayer& layer : matrix.m_arrLayers.Records())
        layers.Add({CellOf(layer.m_nRow), CellOf(layer.m_sName), CellOf(layer.m_sContext), CellOf(layer.m_sType),
                    CellOf(layer.m_sPolarity), Span(layer)});
    layers.PrintAligned(output, kIndent);
}

void PrintFeatureTable(Output& output, std::string_view nameTitle, const std::vector<LayerSummary>& layers)
{
    Table table({{std::string(nameTitle), ""},
                 {"Units", ""},
                 {"Symbols", "", true},
                 {"Features", "", true},
                 {"Lines", "", true},
                 {"Pads", "", true},
                 {"Arcs", "", true},
                 {"Texts", "", true},
                 {"Barcodes", "", true},
                 {"Surfaces", "", true},
                 {"Contours", "", true},
                 {"Attr. names", "", true},
                 {"Attr. texts", "", true}});
    for (const LayerSummary& layer : layers)
    {
        std::vector<Cell> row = {CellOf(layer.name), Unit(layer.units), CellOf(layer.symbols), CellOf(layer.features)};
        for (const std::int64_t count : layer.byKind)
            row.push_back(CellOf(count));
        row.insert(row.end(),
                   {CellOf(layer.contours), CellOf(static_cast<std::int64_t>(layer.attributeNames.GetSize())),
                    CellOf(static_cast<std::int64_t>(layer.attributeTexts.GetSize()))});
        table.Add(std::move(row));
    }
    table.PrintAligned(output, kIndent);
}

void PrintComponents(Output& output, const std::vector<ComponentsSummary>& files)
{
    Table table({{"Component layer", ""},
                 {"Components", "", true},
                 {"Toeprints", "", true},
                 {"Properties", "", true},
                 {"Attributes", "", true}});
    for (const ComponentsSummary& file : files)
        table.Add({CellOf(file.layerName), CellOf(file.components), CellOf(file.toeprints), CellOf(file.properties),
                   CellOf(file.attributes)});
    output.Put('\n');
    table.PrintAligned(output, kIndent);
}

void PrintStepRepeats(Output& output, const CJOBXstepRepeatArray& entries)
{
    if (entries.GetSize() == 0)
        return;
    Table table({{"Repeated step", ""},
                 {"X", "", true},
                 {"Y", "", true},
                 {"Pitch x", "", true},
                 {"Pitch y", "", true},
                 {"Columns", "", true},
                 {"Rows", "", true},
                 {"Angle", "", true},
                 {"Mirror", ""},
                 {"Flip", ""}});
    for (const CJOBXstepRepeat& entry : entries.Records())
        table.Add({CellOf(entry.m_sName), CellOf(entry.m_ptPosition.x), CellOf(entry.m_ptPosition.y),
                   CellOf(entry.m_ptPitch.x), CellOf(entry.m_ptPitch.y), CellOf(entry.m_ptCount.x),
                   CellOf(entry.m_ptCount.y), CellOf(entry.m_dAngle), CellOf(entry.m_sMirror), CellOf(entry.m_sFlip)});
    output.Put('\n');
    table.PrintAligned(output, kIndent);
}

// "label text, label text", with the empty texts left out.
std::string Settings(const std::vector<std::pair<std::string_view, CString>>& settings)
{
    std::string line;
    for (const auto& [label, text] : settings)
        if (!text.IsEmpty())
            line += fmt::format("{}{} {}", line.empty() ? "" : ", ", label, Printable(text.View()));
    return line;
}

void PrintHeader(Output& output, const CJOBXstephdr& header)
{
    PrintLine(output, kIndent, "Datum, origin", Point(header.m_ptDatum) + ", " + Point(header.m_ptOrigin));
    PrintLine(output, kIndent, "Active sides",
              Settings({{"top", header.m_sTopActive},
                        {"bottom", header.m_sBottomActive},
                        {"right", header.m_sRightActive},
                        {"left", header.m_sLeftActive}}));
    PrintLine(output, kIndent, "Online DRC",
              Settings({{"name", header.m_sOnlineDrcName},
                        {"mode", header.m_sOnlineDrcMode},
                        {"status", header.m_sOnlineDrcStat},
                        {"time", header.m_sOnlineDrcTime},
                        {"beep volume", header.m_sOnlineDrcBeepVol},
                        {"beep tone", header.m_sOnlineDrcBeepTone}}));
    PrintLine(output, kIndent, "Online netlist",
              Settings({{"mode", header.m_sOnlineNetMode},
                        {"status", header.m_sOnlineNetStat},
                        {"time", header.m_sOnlineNetTime},
                        {"beep volume", header.m_sOnlineNetBeepVol},
                        {"beep tone", header.m_sOnlineNetBeepTone}}));
    PrintLine(output, kIndent, "Affecting BOM",
              Settings({{"text", header.m_sAffectingBom}, {"changed", header.m_sAffectingBomChanged}}));
}

std::string Profile(const StepSummary& step)
{
    if (step.profile.name.IsEmpty())
        return "none";
    const std::string contents =
        fmt::format("{}, {}", Count(step.profile.features, "feature"), Count(step.profile.contours, "contour"));
    if (step.extents.IsEmpty())
        return contents;
    const CPointD low = step.extents.LowerLeft();
    const CPointD high = step.extents.UpperRight();
    return fmt::format("{} to {}, {:.10g} x {:.10g} {}, {}", Point(low), Point(high), high.x - low.x, high.y - low.y,
                       Unit(step.profile.units), contents);
}

void PrintEda(Output& output, const StepSummary& step)
{
    const SubnetCounts& subnets = step.subnets;
    PrintLine(output, kIndent, "EDA data", Printable(step.edaHeader.View()));
    if (step.nets > 0)
        PrintLine(output, kIndent, "Nets",
                  fmt::format("{}, {}: {}, {}, {}, {}, {}; {}", Count(step.nets, "net"),
                              Count(subnets.Total(), "subnet"), Count(subnets.toeprints, "toeprint"),
                              Count(subnets.vias, "via"), Count(subnets.traces, "trace"),
                              Count(subnets.planes, "plane"), Count(subnets.others, "other"),
                              Count(subnets.features, "feature reference")));
    else
        PrintLine(output, kIndent, "Nets", "none");
    PrintLine(output, kIndent, "Packages",
              step.packages == 0 ? "none"
                                 : fmt::format("{}, {}", Count(step.packages, "package"), Count(step.pins, "pin")));
    PrintLine(output, kIndent, "Netlist",
              step.netlistNets == 0
                  ? "none"
                  : fmt::format("{}, {}", Count(step.netlistNets, "net"), Count(step.netlistPoints, "point")));
}

// The distinct names of the attributes that a step's files declare, wrapped to several lines.
void PrintAttributeNames(Output& output, const StepSummary& step)
{
    std::set<std::string> names;
    const auto add = [&](const CStringArray& list)
    {
        for (INT_PTR i = 0; i < list.GetSize(); ++i)
            names.insert(Printable(list[i].View()));
    };
    for (const LayerSummary& layer : step.layers)
        add(layer.attributeNames);
    for (const ComponentsSummary& file : step.components)
        add(file.attributeNames);
    std::string_view label = "Attributes";
    std::string line;
    for (const std::string& name : names)
    {
        if (!line.empty() && kLabelWidth + CharacterCount(line) + CharacterCount(name) + 5 > kPageWidth)
        {
            PrintLine(output, kIndent, label, line + ",");
            label = "";
            line.clear();
        }
        line += (line.empty() ? "" : ", ") + name;
    }
    PrintLine(output, kIndent, label, line);
}

void PrintLayerTables(Output& output, const StepSummary& step)
{
    if (!step.layers.empty())
    {
        output.Put('\n');
        PrintFeatureTable(output, "Layer", step.layers);
    }
    if (!step.components.empty())
        PrintComponents(output, step.components);
}

void PrintStep(Output& output, const StepSummary& step, InfoPart part)
{
    output.Write(fmt::format("Step {}\n", Printable(step.name.View())));
    if (part == InfoPart::All)
    {
        output.Put('\n');
        PrintLine(output, kIndent, "Profile", Profile(step));
        PrintHeader(output, *step.header);
        PrintEda(output, step);
        PrintAttributeNames(output, step);
        PrintStepRepeats(output, step.header->m_arrStepRepeats);
    }
    PrintLayerTables(output, step);
}

void PrintSymbols(Output& output, const JobSummary& summary)
{
    output.Write(fmt::format("Symbols of the job: {}\n\n", summary.symbols.size()));
    PrintFeatureTable(output, "Symbol", summary.symbols);
}

void PrintSystemAttributes(Output& output, const CJOBXsysAttrDataArray& attributes)
{
    output.Write(fmt::format("System attributes: {}\n\n", attributes.GetSize()));
    Table table({{"Attribute", ""}, {"Options", ""}});
    for (const CJOBXsysAttrData& attribute : attributes.Records())
    {
        std::string options;
        for (INT_PTR k = 0; k < attribute.m_arrOptions.GetSize(); ++k)
            options += fmt::format("{}{}", k == 0 ? "" : ", ", attribute.m_arrOptions[k].View());
        table.Add({CellOf(attribute.m_sName), options});
    }
    table.PrintAligned(output, kIndent);
}
} // namespace

void PrintInfoTables(Output& output, const JobSummary& summary, InfoPart part)
{
    bool isFirst = true;
    const auto separate = [&]
    {
        if (!isFirst)
            output.Put('\n');
        isFirst = false;
    };
    if (part == InfoPart::All)
    {
        separate();
        PrintJob(output, summary);
    }
    if (part != InfoPart::Symbols)
    {
        separate();
        PrintMatrix(output, *summary.job.m_pMatrix);
        for (const StepSummary& step : summary.steps)
        {
            separate();
            PrintStep(output, step, part);
        }
    }
    if (part != InfoPart::Layers && (part == InfoPart::Symbols || !summary.symbols.empty()))
    {
        separate();
        PrintSymbols(output, summary);
    }
    if (part == InfoPart::All && summary.job.m_pSysAttrs->GetSize() > 0)
    {
        separate();
        PrintSystemAttributes(output, *summary.job.m_pSysAttrs);
    }
    output.Flush();
}
