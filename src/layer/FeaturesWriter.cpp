#include "layer/FeaturesWriter.h"

#include "foundation/framework/Guarded.h"
#include "layer/CJOBXlayer.h"
#include "layer/FeaturesFormat.h"
#include "layer/RecordOfType.h"

#include <string>

namespace
{
// A point's coordinates with a blank between them.
struct At
{
    explicit At(const CPointD& point) : x(point.x), y(point.y) {}

    double x;
    double y;
};

CTextLine& operator<<(CTextLine& out, const At& at)
{
    return out << Fixed{at.x} << ' ' << Fixed{at.y};
}

// The end of a record's line: its attribute list, without attributes that lack a number, and the line end. Keeps the
// last text, because consecutive features mostly share one list.
class CAttributeText
{
public:
    std::string_view Of(const CJOBXlayObj& feature)
    {
        const int count = feature.nGetPropertyCount();
        if (count == 0)
            return "\n";
        const CJOBXProperty* const first = feature.pGetProperty(0); // no two lists have the same one
        if (first == nullptr || first != m_first)
        {
            Print(feature, count);
            m_first = first;
        }
        return m_text;
    }

private:
    void Print(const CJOBXlayObj& feature, int count)
    {
        m_first = nullptr;
        m_text.clear();
        for (int i = 0; i < count; ++i)
            if (const CJOBXProperty* const property = feature.pGetProperty(i);
                property != nullptr && property->m_nNumber != -1 && property->m_nTextNumber != -1)
            {
                m_text += m_text.empty() ? " ; " : ", ";
                Print(property->m_nNumber);
                m_text += '=';
                Print(property->m_nTextNumber);
            }
        m_text += '\n';
    }
    void Print(int number)
    {
        char digits[16];
        m_text.append(digits, PrintInteger(digits, number));
    }

    const CJOBXProperty* m_first = nullptr;
    std::string m_text;
};

// Codes with an angle.
bool IsTurnedByAngle(int orientation)
{
    return orientation == features_format::kTurned || orientation == features_format::kTurnedAndMirrored;
}

void WriteRecord(CTextLine& out, const CJOBXlayObjLine& line)
{
    out << features_format::kLine << ' ' << At{line.GetStartPoint()} << ' ' << At{line.GetEndPoint()} << ' '
        << line.GetSymbolNumber() << ' ' << line.GetPolarity() << ' ' << line.GetDcode();
}

void WriteRecord(CTextLine& out, const CJOBXlayObjPad& pad)
{
    out << features_format::kPad << ' ' << At{pad.GetCenterPoint()} << ' ';
    if (pad.GetResizeFlag() == 1)
        out << "-1 " << pad.GetSymbolNumber() << ' ' << Fixed{pad.GetResizeFactor()};
    else
        out << pad.GetSymbolNumber();
    out << ' ' << pad.GetPolarity() << ' ' << pad.GetDcode() << ' ' << pad.GetOrientation();
    if (IsTurnedByAngle(pad.GetOrientation()))
        out << ' ' << Fixed{pad.GetRotationAngle()};
}

void WriteRecord(CTextLine& out, const CJOBXlayObjArc& arc)
{
    out << features_format::kArc << ' ' << At{arc.GetStartPoint()} << ' ' << At{arc.GetEndPoint()} << ' '
        << At{arc.GetCenterPoint()} << ' ' << arc.GetSymbolNumber() << ' ' << arc.GetPolarity() << ' ' << arc.GetDcode()
        << ' ' << arc.GetClockwise();
}

// The angle is written for the codes 0 and 8, and the text without quotes. The reader expects another form. Intended:
// hosts rely on it.
void WriteRecord(CTextLine& out, const CJOBXlayObjText& text)
{
    out << features_format::kText << ' ' << At{text.GetPosition()} << ' ' << text.GetFontName() << ' '
        << text.GetPolarity() << ' ' << text.GetOrientation() << ' ';
    if ((text.GetOrientation() & ~8) == 0)
        out << Fixed{text.GetRotationAngle()} << ' ';
    out << At{text.GetSize()} << ' ' << Fixed{text.GetWidthFactor()} << ' ' << text.GetText() << ' '
        << text.GetVersion();
}

// The orientation code and the E flag are written without a blank between them. Intended: hosts rely on it.
void WriteRecord(CTextLine& out, const CJOBXlayObjBarcode& barcode)
{
    out << features_format::kBarcode << ' ' << At{barcode.m_ptPosition} << ' ' << barcode.m_sBarcodeName << ' '
        << barcode.m_sFontName << ' ' << barcode.GetPolarity() << ' ' << barcode.m_nOrientation;
    out << barcode.m_sEFlag << ' ' << Fixed{barcode.m_dWidth} << ' ' << Fixed{barcode.m_dHeight} << ' '
        << barcode.m_sFasc << ' ' << barcode.m_sCs << ' ' << barcode.m_sBg << ' ' << barcode.m_sAstr << ' '
        << barcode.m_sAstrPosition << " '" << barcode.m_sText << '\'';
}

void WriteRecord(CTextLine& out, const CJOBXlayObjSurface& surface)
{
    out << features_format::kSurface << ' ' << surface.GetPolarity() << ' ' << surface.GetDcode();
}

void WriteElement(CTextWriter& writer, const CJOBXlayObjOX& element)
{
    const CString kind = element.GetKind();
    if (kind.GetLength() != 2 || kind.View()[0] != features_format::kContour)
        return;
    CTextLine out(writer);
    switch (kind.View()[1])
    {
    case features_format::kBegin:
        out << features_format::kContour << features_format::kBegin << ' ' << At{element.GetPoint()} << ' '
            << element.GetPolygonType() << '\n';
        break;
    case features_format::kSegment:
        out << features_format::kContour << features_format::kSegment << ' ' << At{element.GetPoint()} << '\n';
        break;
    case features_format::kCurve:
        out << features_format::kContour << features_format::kCurve << ' ' << At{element.GetPoint()} << ' '
            << At{element.GetCenterPoint()} << ' ' << element.GetClockwise() << '\n';
        break;
    default:
        break;
    }
}

// Each contour ends with the kind of its last element. That is the end, for which WriteElement writes nothing.
void WriteContours(CTextWriter& out, const CJOBXlayObjSurface& surface)
{
    const CJOBXlayObjSurfaceOBArray& contours = *surface.GetContours();
    for (__int64 i = 0; i < contours.GetSize(); ++i)
    {
        if (contours.GetAt(i) == nullptr)
            continue;
        const CJOBXlayObjOXArray& elements = *contours.GetAt(i)->GetODBlayObjOXArray();
        for (const CJOBXlayObjOX& element : elements.Records())
            WriteElement(out, element);
        if (const CJOBXlayObjOX* const last = elements.GetLastElement())
            out << last->GetKind() << '\n';
    }
    out << features_format::kSurface << features_format::kEnd << '\n';
}

template <class T>
void WriteAs(CTextLine& out, const CJOBXlayObj& feature)
{
    if (const T* const record = RecordOfType<T>(&feature))
        WriteRecord(out, *record);
}

// The fields of the record, without the attributes.
void WriteFields(CTextWriter& writer, const CJOBXlayObj& feature, char type)
{
    CTextLine out(writer);
    switch (type)
    {
    case features_format::kLine:
        return WriteAs<CJOBXlayObjLine>(out, feature);
    case features_format::kPad:
        return WriteAs<CJOBXlayObjPad>(out, feature);
    case features_format::kArc:
        return WriteAs<CJOBXlayObjArc>(out, feature);
    case features_format::kText:
        return WriteAs<CJOBXlayObjText>(out, feature);
    case features_format::kBarcode:
        return WriteAs<CJOBXlayObjBarcode>(out, feature);
    case features_format::kSurface:
        return WriteAs<CJOBXlayObjSurface>(out, feature);
    default:
        return;
    }
}

void Write(CTextWriter& out, const CJOBXlayObj& feature, CAttributeText& attributes)
{
    const CString text = feature.GetType();
    const char type = text.GetLength() == 1 ? text.View()[0] : '\0';
    WriteFields(out, feature, type);
    out << attributes.Of(feature);
    if (type == features_format::kSurface)
        if (const auto* const surface = RecordOfType<CJOBXlayObjSurface>(&feature))
            WriteContours(out, *surface);
}

void WriteTable(CTextWriter& out, const char* title, char mark, const CArrayN& numbers, const CStringArray& texts)
{
    if (texts.GetSize() == 0)
        return;
    out << title << "\n#\n";
    for (__int64 i = 0; i < texts.GetSize() && i < numbers.GetSize(); ++i)
        out << mark << numbers[i] << ' ' << texts[i] << '\n';
    out << "#\n";
}

void WriteSymbols(CTextWriter& out, const CJOBXlayer& layer)
{
    const CStringArray& names = layer.m_arrSymbolNames;
    if (names.GetSize() == 0)
        return;
    out << "#Feature symbol names\n#\n";
    for (__int64 i = 0; i < names.GetSize() && i < layer.m_arrSymbolNumbers.GetSize(); ++i)
    {
        out << features_format::kSymbol << layer.m_arrSymbolNumbers[i] << ' ' << names[i];
        if (i < layer.m_arrSymbolSecondFields.GetSize() && !layer.m_arrSymbolSecondFields[i].IsEmpty())
            out << ' ' << layer.m_arrSymbolSecondFields[i];
        out << '\n';
    }
    out << "#\n";
}
} // namespace

void WriteFeatureAttributes(CTextWriter& out, const CJOBXlayObj& feature)
{
    Guarded([&] { out << CAttributeText().Of(feature); });
}

void WriteFeature(CTextWriter& out, const CJOBXlayObj& feature)
{
    Guarded(
        [&]
        {
            CAttributeText attributes;
            Write(out, feature, attributes);
        });
}

void WriteFeatures(CTextWriter& out, const CJOBXlayer& layer)
{
    out << "#\n" << features_format::kUnitsKey << '=' << layer.m_sUnits << "\n#\n";
    WriteSymbols(out, layer);
    WriteTable(out, "#Feature attribute names", features_format::kAttributeName, layer.m_arrAttributeNameNumbers,
               layer.m_arrAttributeNames);
    WriteTable(out, "#Feature attribute text strings", features_format::kAttributeText, layer.m_arrAttributeTextNumbers,
               layer.m_arrAttributeTexts);
    out << "#Layer features\n#\n";
    CAttributeText attributes;
    const CJOBXlayObjArray& features = *layer.GetFeatures();
    for (const CJOBXlayObj& feature : features.Records())
        Write(out, feature, attributes);
    out << '\n';
}
