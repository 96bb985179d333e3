#include "layer/LayerLines.h"

#include "layer/CJOBXlayer.h"
#include "layer/FeatureLines.h"
#include "layer/RecordOfType.h"
#include "saving/CAttributeTables.h"
#include "saving/KeyedLines.h"

#include <string>
#include <unordered_map>

namespace
{
// A field must not be empty: the fields behind it would move.
std::string_view WordOr(const CString& text, std::string_view usual)
{
    return text.IsEmpty() ? usual : text.View();
}

void Print(const CPointD& point, CRecordLines& lines)
{
    lines.Real(point.x).Real(point.y);
}

void PrintPolarity(const CJOBXlayObj& feature, CRecordLines& lines)
{
    const CString polarity = feature.GetPolarity();
    lines.Word(WordOr(polarity, "P"));
}

// Where an angle need not follow, none is printed unless there is one.
void PrintOrientation(int orientation, double angle, bool mayHaveAngle, CRecordLines& lines)
{
    lines.Integer(orientation);
    if (IsTurned(orientation) || (mayHaveAngle && angle != 0.0))
        lines.Real(angle);
}

void PrintQuoted(const CString& text, CRecordLines& lines)
{
    lines.Word(features_format::kQuote).Glue(text.View()).Glue({&features_format::kQuote, 1});
}

// The fields of each class, behind its letter.
void PrintFields(const CJOBXlayObjLine& line, CRecordLines& lines)
{
    Print(line.GetStartPoint(), lines);
    Print(line.GetEndPoint(), lines);
    lines.Integer(line.GetSymbolNumber());
    PrintPolarity(line, lines);
    lines.Integer(line.GetDcode());
}

void PrintFields(const CJOBXlayObjArc& arc, CRecordLines& lines)
{
    Print(arc.GetStartPoint(), lines);
    Print(arc.GetEndPoint(), lines);
    Print(arc.GetCenterPoint(), lines);
    lines.Integer(arc.GetSymbolNumber());
    PrintPolarity(arc, lines);
    lines.Integer(arc.GetDcode());
    if (const CString clockwise = arc.GetClockwise(); !clockwise.IsEmpty())
        lines.Word(clockwise.View());
}

// A resized pad has -1, its symbol and the factor where others have the symbol.
void PrintFields(const CJOBXlayObjPad& pad, CRecordLines& lines)
{
    Print(pad.GetCenterPoint(), lines);
    if (pad.GetResizeFlag() != 0)
        lines.Integer(-1).Integer(pad.GetSymbolNumber()).Real(pad.GetResizeFactor());
    else
        lines.Integer(pad.GetSymbolNumber());
    PrintPolarity(pad, lines);
    lines.Integer(pad.GetDcode());
    PrintOrientation(pad.GetOrientation(), pad.GetRotationAngle(), true, lines);
}

void PrintFields(const CJOBXlayObjText& text, CRecordLines& lines)
{
    Print(text.GetPosition(), lines);
    const CString font = text.GetFontName();
    lines.Word(WordOr(font, "standard"));
    PrintPolarity(text, lines);
    PrintOrientation(text.GetOrientation(), text.GetRotationAngle(), false, lines);
    Print(text.GetSize(), lines);
    lines.Real(text.GetWidthFactor());
    PrintQuoted(text.GetText(), lines);
    lines.Integer(text.GetVersion());
}

void PrintFields(const CJOBXlayObjBarcode& barcode, CRecordLines& lines)
{
    Print(barcode.m_ptPosition, lines);
    lines.Word(WordOr(barcode.m_sBarcodeName, "UPC39")).Word(WordOr(barcode.m_sFontName, "standard"));
    PrintPolarity(barcode, lines);
    PrintOrientation(barcode.m_nOrientation, barcode.GetRotationAngle(), false, lines);
    lines.Word(WordOr(barcode.m_sEFlag, "E")).Real(barcode.m_dWidth).Real(barcode.m_dHeight);
    for (const CString* const letter : {&barcode.m_sFasc, &barcode.m_sCs, &barcode.m_sBg, &barcode.m_sAstr})
        lines.Word(WordOr(*letter, "N"));
    lines.Word(WordOr(barcode.m_sAstrPosition, "B"));
    PrintQuoted(barcode.m_sText, lines);
}

void PrintFields(const CJOBXlayObjSurface& surface, CRecordLines& lines)
{
    PrintPolarity(surface, lines);
    lines.Integer(surface.GetDcode());
}

constexpr std::string_view kContourBegin = "OB";
constexpr std::string_view kContourCurve = "OC";
constexpr std::string_view kContourEnd = "OE";
constexpr std::string_view kSurfaceEnd = "SE";

// The begin is below the surface, the others are below the begin.
void ListElement(const CJOBXlayObjOX& element, CRecordLines& lines)
{
    const CString kind = element.GetKind();
    const bool isBegin = kind.View() == kContourBegin;
    const bool isCurve = kind.View() == kContourCurve;
    lines.Begin(isBegin ? 1 : 2, CRecordLines::kUnknownLine);
    lines.Word(kind.View());
    if (kind.View() == kContourEnd)
        return;
    Print(element.GetPoint(), lines);
    if (isCurve)
        Print(element.GetCenterPoint(), lines);
    const CString letter = isBegin ? element.GetPolygonType() : isCurve ? element.GetClockwise() : CString();
    if (!letter.IsEmpty())
        lines.Word(letter.View());
}

// A host may have left out the end.
void ListContour(const CJOBXlayObjOXArray& elements, CRecordLines& lines)
{
    const CJOBXlayObjOX* last = nullptr;
    for (const CJOBXlayObjOX& element : elements.Records())
    {
        ListElement(element, lines);
        last = &element;
    }
    if (last == nullptr || last->GetKind().View() == kContourEnd)
        return;
    lines.Begin(2, CRecordLines::kUnknownLine);
    lines.Word(kContourEnd);
}

void ListContours(const CJOBXlayObjSurface& surface, CRecordLines& lines)
{
    for (const CJOBXlayObjSurfaceOB& contour : surface.GetContours()->Records())
        ListContour(*contour.GetODBlayObjOXArray(), lines);
    lines.Begin(1, CRecordLines::kUnknownLine);
    lines.Word(kSurfaceEnd);
}

class CLayerLines
{
public:
    CLayerLines(const CJOBXlayer& layer, const CAttributeTypes& types, CRecordLines& lines)
        : m_layer(layer), m_tables(layer, types), m_lines(lines)
    {
    }

    void List()
    {
        for (const CJOBXlayObj& feature : m_layer.GetFeatures()->Records())
            if (feature.nGetPropertyCount() > 0 && m_lists.try_emplace(feature.pGetProperty(0)).second)
                m_tables.Collect(Attributes{feature});
        ListHead();
        for (const CJOBXlayObj& feature : m_layer.GetFeatures()->Records())
            ListFeature(feature);
    }

private:
    struct Attributes
    {
        const CJOBXlayObj& feature;

        __int64 GetSize() const { return feature.nGetPropertyCount(); }
        const CJOBXProperty* GetAt(__int64 index) const { return feature.pGetProperty(static_cast<int>(index)); }
    };

    void ListHead()
    {
        ListUnits(m_layer.GetUnit(), m_lines);
        if (m_layer.GetID() != CJOBXidentified::kNoID)
            m_lines.KeyInteger(0, features_format::kFileIDKey, m_layer.GetID());
        m_lines.Begin(0, CRecordLines::kUnknownLine);
        m_lines.Word(features_format::kCount).Integer(CountFeatures()).Optional();
        for (INT_PTR i = 0; i < m_layer.m_arrSymbolNumbers.GetSize(); ++i)
            ListSymbol(i);
        m_tables.ListLines(m_lines);
    }
    void ListSymbol(INT_PTR at)
    {
        m_lines.Begin(0, CRecordLines::kUnknownLine);
        m_lines.Word(features_format::kSymbol).GlueInteger(m_layer.m_arrSymbolNumbers[at]).EndKey();
        for (const CStringArray* const texts : {&m_layer.m_arrSymbolNames, &m_layer.m_arrSymbolSecondFields})
            if (at < texts->GetSize() && !(*texts)[at].IsEmpty())
                m_lines.Word((*texts)[at].View());
    }

    __int64 CountFeatures() const
    {
        __int64 count = 0;
        for (const CJOBXlayObj& feature : m_layer.GetFeatures()->Records())
            VisitClass(feature, [&](const auto& /*record*/, char /*letter*/) { ++count; });
        return count;
    }

    void ListFeature(const CJOBXlayObj& feature)
    {
        VisitClass(feature,
                   [&](const auto& record, char letter)
                   {
                       m_lines.Begin(0, feature.GetSourceLine());
                       m_lines.Word(letter);
                       PrintFields(record, m_lines);
                       GlueTail(AttributesOf(feature), feature.GetID(), m_lines);
                       if constexpr (std::is_same_v<decltype(record), const CJOBXlayObjSurface&>)
                           ListContours(record, m_lines);
                   });
    }

    // Most features share their list with others.
    std::string_view AttributesOf(const CJOBXlayObj& feature)
    {
        if (feature.nGetPropertyCount() == 0)
            return {};
        std::string& text = m_lists[feature.pGetProperty(0)];
        if (text.empty())
            text = m_tables.TextOf(Attributes{feature});
        return text;
    }

    // The class of a record decides what it is, whatever its type says. One without a class has no line.
    template <class Visit>
    static void VisitClass(const CJOBXlayObj& feature, Visit visit)
    {
        static_cast<void>(TryClass<CJOBXlayObjLine>(feature, features_format::kLine, visit) ||
                          TryClass<CJOBXlayObjPad>(feature, features_format::kPad, visit) ||
                          TryClass<CJOBXlayObjSurface>(feature, features_format::kSurface, visit) ||
                          TryClass<CJOBXlayObjArc>(feature, features_format::kArc, visit) ||
                          TryClass<CJOBXlayObjText>(feature, features_format::kText, visit) ||
                          TryClass<CJOBXlayObjBarcode>(feature, features_format::kBarcode, visit));
    }
    template <class Class, class Visit>
    static bool TryClass(const CJOBXlayObj& feature, char letter, Visit& visit)
    {
        const auto* const record = RecordOfType<Class>(&feature);
        if (record != nullptr)
            visit(*record, letter);
        return record != nullptr;
    }

    const CJOBXlayer& m_layer;
    CAttributeTables m_tables;
    CRecordLines& m_lines;
    std::unordered_map<const CJOBXProperty*, std::string> m_lists; // the texts, by the first attribute
};
} // namespace

void ListLines(const CJOBXlayer& layer, const CAttributeTypes& types, CRecordLines& lines)
{
    CLayerLines(layer, types, lines).List();
}
