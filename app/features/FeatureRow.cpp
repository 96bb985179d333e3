#include "features/FeatureRow.h"

#include "model/FieldWords.h"

#include <string_view>

namespace
{
// A feature and what a table or an object shows of it.
struct FeatureRow
{
    const FoundFeature& found;
    const ShownUnit& unit;
    LineFinder& lines;
    std::optional<ShapePoint> from; // in the unit shown
    std::optional<ShapePoint> to;
};

std::string_view KindOf(const CJOBXlayObj& feature)
{
    const CString type = feature.GetType();
    if (type == "L")
        return "line";
    if (type == "P")
        return "pad";
    if (type == "A")
        return "arc";
    if (type == "T")
        return "text";
    if (type == "B")
        return "barcode";
    return type == "S" ? "surface" : "unknown";
}

std::string_view PolarityOf(const CJOBXlayObj& feature)
{
    return feature.GetPolarity().CompareNoCase("N") == 0 ? "negative" : "positive";
}

std::optional<std::string> SymbolOf(const FoundFeature& found)
{
    const CString name = found.layer.GetSymbolName(found.feature.GetSymbolNumber());
    return found.feature.GetSymbolNumber() < 0 ? std::nullopt : std::optional(std::string(name.View()));
}

std::optional<std::string> TextOfFeature(const CJOBXlayObj& feature)
{
    if (const auto* const text = dynamic_cast<const CJOBXlayObjText*>(&feature))
        return std::string(text->GetText().View());
    if (const auto* const barcode = dynamic_cast<const CJOBXlayObjBarcode*>(&feature))
        return std::string(barcode->m_sText.View());
    return std::nullopt;
}

// How a pad lies.
struct Turn
{
    double angle = 0.0; // clockwise, in degrees
    bool isMirrored = false;
};

std::optional<Turn> TurnOf(const CJOBXlayObj& feature)
{
    constexpr int kFirstMirrored = 4;
    constexpr int kTurned = 8;
    const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(&feature);
    if (pad == nullptr)
        return std::nullopt;
    const int orientation = pad->GetOrientation();
    if (orientation >= kTurned)
        return Turn{pad->GetRotationAngle(), orientation > kTurned};
    return Turn{90.0 * (orientation % kFirstMirrored), orientation >= kFirstMirrored};
}

TextList AttributesOf(const CJOBXlayObj& feature)
{
    TextList texts;
    for (int i = 0; i < feature.nGetPropertyCount(); ++i)
        if (const CJOBXProperty* const property = feature.pGetProperty(i))
        {
            std::string& text = texts.emplace_back(property->m_sName.View());
            if (property->GetKind() != JOBXattributeKind::Flag)
                text.append("=").append(property->m_sValue.View());
        }
    return texts;
}

// The points that a table shows: the place of a pad or text, the ends of a line or arc, the corners of the box around a
// surface.
FeatureRow RowOf(const FoundFeature& found, const ShownUnit& unit, LineFinder& lines)
{
    FeatureRow row{found, unit, lines, std::nullopt, std::nullopt};
    const FeatureShape shape = ShapeOf(found.feature, found.layer);
    const auto shown = [&](const ShapePoint& point)
    {
        return ShapePoint{unit.Length(RoundedLength(point.x), JOBXunit::Millimetre),
                          unit.Length(RoundedLength(point.y), JOBXunit::Millimetre)};
    };
    if (shape.isFilled)
    {
        if (const std::optional<ShapeBox> box = BoxOf(shape))
        {
            row.from = shown(box->low);
            row.to = shown(box->high);
        }
        return row;
    }
    if (!shape.paths.empty())
        row.from = shown(shape.paths[0].front());
    if (!shape.paths.empty() && shape.paths[0].size() > 1)
        row.to = shown(shape.paths[0].back());
    return row;
}

template <std::optional<ShapePoint> FeatureRow::*kPoint, double ShapePoint::*kAxis>
Cell PointCell(const FeatureRow& row)
{
    return row.*kPoint ? CellOf(*(row.*kPoint).*kAxis) : Cell();
}

constexpr ColumnOf<FeatureRow> kFeatureColumns[] = {
    {"Step", "step", ColumnKind::Text, [](const FeatureRow& row) { return CellOf(row.found.step.m_sName); }},
    {"Layer", "layer", ColumnKind::Text, [](const FeatureRow& row) { return CellOf(row.found.layer.m_sName); }},
    {"Index", "index", ColumnKind::Number,
     [](const FeatureRow& row) { return CellOf(row.found.feature.GetFeatureIndex()); }},
    {"Kind", "kind", ColumnKind::Text, [](const FeatureRow& row) { return CellOf(KindOf(row.found.feature)); }},
    {"X", "x", ColumnKind::Length, PointCell<&FeatureRow::from, &ShapePoint::x>},
    {"Y", "y", ColumnKind::Length, PointCell<&FeatureRow::from, &ShapePoint::y>},
    {"X2", "x2", ColumnKind::Length, PointCell<&FeatureRow::to, &ShapePoint::x>},
    {"Y2", "y2", ColumnKind::Length, PointCell<&FeatureRow::to, &ShapePoint::y>},
    {"Symbol", "symbol", ColumnKind::Text,
     [](const FeatureRow& row)
     {
         const std::optional<std::string> symbol = SymbolOf(row.found);
         return symbol ? Cell(*symbol) : Cell();
     }},
    {"Polarity", "polarity", ColumnKind::Text,
     [](const FeatureRow& row) { return CellOf(PolarityOf(row.found.feature)); }},
    {"Net", "net", ColumnKind::Text,
     [](const FeatureRow& row) { return row.found.net == nullptr ? Cell() : CellOf(row.found.net->m_sName); }},
    {"Text", "text", ColumnKind::Text,
     [](const FeatureRow& row)
     {
         const std::optional<std::string> text = TextOfFeature(row.found.feature);
         return text ? Cell(*text) : Cell();
     }},
    {"Line", "line", ColumnKind::Number, [](const FeatureRow& row) { return CellOf(row.lines.LineOf(row.found)); }},
    {"Attributes", "attributes", ColumnKind::Text,
     [](const FeatureRow& row) { return Cell(AttributesOf(row.found.feature)); }},
    {"Angle", "angle", ColumnKind::Number,
     [](const FeatureRow& row)
     {
         const std::optional<Turn> turn = TurnOf(row.found.feature);
         return turn ? CellOf(turn->angle) : Cell();
     }},
    {"Mirror", "mirror", ColumnKind::Number,
     [](const FeatureRow& row)
     {
         const std::optional<Turn> turn = TurnOf(row.found.feature);
         return turn ? CellOf(turn->isMirrored ? 1 : 0) : Cell();
     }},
    {"File", "file", ColumnKind::Text, [](const FeatureRow& row) { return Cell(row.lines.FileOf(row.found)); }},
    {"Unit", "unit", ColumnKind::Text, [](const FeatureRow& row) { return CellOf(WordFor(row.unit.Unit())); }},
};

std::span<const ColumnOf<FeatureRow>> FeatureColumns()
{
    return kFeatureColumns;
}

void WritePoint(JsonOutput& json, std::string_view key, const CPointD& point, double factor)
{
    json.ArrayMember(key,
                     [&]
                     {
                         json.Value(RoundedLength(point.x * factor));
                         json.Value(RoundedLength(point.y * factor));
                     });
}

void WriteSurface(JsonOutput& json, const CJOBXlayObjSurface& surface, const CJOBXlayer& layer)
{
    if (const std::optional<ShapeBox> box = BoxOf(ShapeOf(surface, layer)))
        json.ArrayMember("box",
                         [&]
                         {
                             for (const double length : {box->low.x, box->low.y, box->high.x, box->high.y})
                                 json.Value(RoundedLength(length));
                         });
    json.Member("contours", static_cast<std::int64_t>(surface.GetContours()->GetSize()));
}

void WritePlace(JsonOutput& json, const CJOBXlayObj& feature, const CJOBXlayer& layer)
{
    const double factor = layer.dGetFactorToMM();
    if (const auto* const line = dynamic_cast<const CJOBXlayObjLine*>(&feature))
    {
        WritePoint(json, "start", line->GetStartPoint(), factor);
        WritePoint(json, "end", line->GetEndPoint(), factor);
    }
    else if (const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(&feature))
        WritePoint(json, "at", pad->GetCenterPoint(), factor);
    else if (const auto* const arc = dynamic_cast<const CJOBXlayObjArc*>(&feature))
    {
        WritePoint(json, "start", arc->GetStartPoint(), factor);
        WritePoint(json, "end", arc->GetEndPoint(), factor);
        WritePoint(json, "centre", arc->GetCenterPoint(), factor);
        json.Member("clockwise", arc->GetClockwise().CompareNoCase("Y") == 0);
    }
    else if (const auto* const text = dynamic_cast<const CJOBXlayObjText*>(&feature))
        WritePoint(json, "at", text->GetPosition(), factor);
    else if (const auto* const barcode = dynamic_cast<const CJOBXlayObjBarcode*>(&feature))
        WritePoint(json, "at", barcode->m_ptPosition, factor);
    else if (const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(&feature))
        WriteSurface(json, *surface, layer);
}

void WriteAttributes(JsonOutput& json, const CJOBXlayObj& feature)
{
    json.ObjectMember("attributes",
                      [&]
                      {
                          for (int i = 0; i < feature.nGetPropertyCount(); ++i)
                              if (const CJOBXProperty* const property = feature.pGetProperty(i))
                              {
                                  json.Key(property->m_sName.View());
                                  if (property->GetKind() == JOBXattributeKind::Flag)
                                      json.Value(true);
                                  else
                                      json.Value(property->m_sValue);
                              }
                      });
}

template <class Value>
void WriteOrNull(JsonOutput& json, std::string_view key, const std::optional<Value>& value)
{
    json.Key(key);
    if (value)
        json.Value(*value);
    else
        json.Null();
}
} // namespace

const TableKind kFeatureTable{"features", "step?,layer?,kind,x,y,x2,y2,symbol,polarity?,net,text,line,attributes"};

const RecordLines& LineFinder::Lines(const FoundFeature& found)
{
    if (m_pLayer != &found.layer)
        m_lines = FindRecordLines(m_jobPath, found.step.m_sName, found.layer.m_sName);
    m_pLayer = &found.layer;
    return m_lines;
}

std::optional<int> LineFinder::LineOf(const FoundFeature& found)
{
    const std::vector<int>& lines = Lines(found).lines;
    const auto index = static_cast<std::size_t>(found.feature.GetFeatureIndex());
    return index < lines.size() ? std::optional(lines[index]) : std::nullopt;
}

Table EmptyFeatureTable(const ShownUnit& unit)
{
    return Table(HeadsOf(FeatureColumns(), unit.Unit()));
}

std::vector<Cell> FeatureCells(const FoundFeature& found, const ShownUnit& unit, LineFinder& lines)
{
    return CellsOf(FeatureColumns(), RowOf(found, unit, lines));
}

void WriteFeature(JsonOutput& json, const FoundFeature& found, LineFinder& lines)
{
    json.Object(
        [&]
        {
            json.Member("step", found.step.m_sName);
            json.Member("layer", found.layer.m_sName);
            json.Member("index", found.feature.GetFeatureIndex());
            json.Member("kind", KindOf(found.feature));
            WritePlace(json, found.feature, found.layer);
            if (const std::optional<Turn> turn = TurnOf(found.feature))
            {
                json.Member("angle", turn->angle);
                json.Member("mirror", turn->isMirrored);
            }
            if (const std::optional<std::string> text = TextOfFeature(found.feature))
                json.Member("text", std::string_view(*text));
            const std::optional<std::string> symbol = SymbolOf(found);
            WriteOrNull(json, "symbol", symbol ? std::optional(std::string_view(*symbol)) : std::nullopt);
            json.Member("polarity", PolarityOf(found.feature));
            WriteOrNull(json, "net", found.net == nullptr ? std::nullopt : std::optional(found.net->m_sName.View()));
            WriteAttributes(json, found.feature);
            json.Member("file", std::string_view(lines.FileOf(found)));
            WriteOrNull(json, "line", lines.LineOf(found));
        });
}
