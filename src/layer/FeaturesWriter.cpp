#include "layer/FeaturesWriter.h"

#include "layer/CJOBXlayer.h"
#include "layer/RecordOfType.h"

namespace
{
// A point's coordinates with a blank between them.
struct At
{
    CPointD point;
};

CTextWriter& operator<<(CTextWriter& out, const At& at)
{
    return out << Fixed{at.point.GetX()} << ' ' << Fixed{at.point.GetY()};
}

// Codes with an angle of their own.
bool IsTurnedByAngle(int orientation)
{
    return orientation == 8 || orientation == 9;
}

void WriteRecord(CTextWriter& out, const CJOBXlayObjLine& line)
{
    out << "L " << At{line.GetStartPoint()} << ' ' << At{line.GetEndPoint()} << ' ' << line.GetSymbolNumber() << ' '
        << line.GetPolarity() << ' ' << line.GetDcode();
}

void WriteRecord(CTextWriter& out, const CJOBXlayObjPad& pad)
{
    out << "P " << At{pad.GetCenterPoint()} << ' ';
    if (pad.GetResizeFlag() == 1)
        out << "-1 " << pad.GetSymbolNumber() << ' ' << Fixed{pad.GetResizeFactor()};
    else
        out << pad.GetSymbolNumber();
    out << ' ' << pad.GetPolarity() << ' ' << pad.GetDcode() << ' ' << pad.GetOrientation();
    if (IsTurnedByAngle(pad.GetOrientation()))
        out << ' ' << Fixed{pad.GetRotationAngle()};
}

void WriteRecord(CTextWriter& out, const CJOBXlayObjArc& arc)
{
    out << "A " << At{arc.GetStartPoint()} << ' ' << At{arc.GetEndPoint()} << ' ' << At{arc.GetCenterPoint()} << ' '
        << arc.GetSymbolNumber() << ' ' << arc.GetPolarity() << ' ' << arc.GetDcode() << ' ' << arc.GetClockwise();
}

// The angle is written for the codes 0 and 8 and the text stands without quotes, unlike what the reader expects.
// Intended: hosts rely on it.
void WriteRecord(CTextWriter& out, const CJOBXlayObjText& text)
{
    out << "T " << At{text.GetPosition()} << ' ' << text.GetFontName() << ' ' << text.GetPolarity() << ' '
        << text.GetOrientation() << ' ';
    if ((text.GetOrientation() & ~8) == 0)
        out << Fixed{text.GetRotationAngle()} << ' ';
    out << At{text.GetSize()} << ' ' << Fixed{text.GetWidthFactor()} << ' ' << text.GetText() << ' '
        << text.GetVersion();
}

// The orientation code and the E flag run together. Intended: hosts rely on it.
void WriteRecord(CTextWriter& out, const CJOBXlayObjBarcode& barcode)
{
    out << "B " << At{barcode.m_ptPosition} << ' ' << barcode.m_sBarcodeName << ' ' << barcode.m_sFontName << ' '
        << barcode.GetPolarity() << ' ' << barcode.m_nOrientation;
    out << barcode.m_sEFlag << ' ' << Fixed{barcode.m_dWidth} << ' ' << Fixed{barcode.m_dHeight} << ' '
        << barcode.m_sFasc << ' ' << barcode.m_sCs << ' ' << barcode.m_sBg << ' ' << barcode.m_sAstr << ' '
        << barcode.m_sAstrPosition << " '" << barcode.m_sText << '\'';
}

void WriteRecord(CTextWriter& out, const CJOBXlayObjSurface& surface)
{
    out << "S " << surface.GetPolarity() << ' ' << surface.GetDcode();
}

void WriteElement(CTextWriter& out, const CJOBXlayObjOX& element)
{
    const CString kind = element.GetKind();
    if (kind == "OB")
        out << "OB " << At{element.GetPoint()} << ' ' << element.GetPolygonType() << '\n';
    else if (kind == "OS")
        out << "OS " << At{element.GetPoint()} << '\n';
    else if (kind == "OC")
        out << "OC " << At{element.GetPoint()} << ' ' << At{element.GetCenterPoint()} << ' ' << element.GetClockwise()
            << '\n';
}

// Each contour ends with the kind of its last element, which is the end that its elements leave out.
void WriteContours(CTextWriter& out, const CJOBXlayObjSurface& surface)
{
    const CJOBXlayObjSurfaceOBArray& contours = *surface.GetContours();
    for (__int64 i = 0; i < contours.GetSize(); ++i)
    {
        if (contours.GetAt(i) == nullptr)
            continue;
        const CJOBXlayObjOXArray& elements = *contours.GetAt(i)->GetODBlayObjOXArray();
        for (__int64 k = 0; k < elements.GetSize(); ++k)
            if (const CJOBXlayObjOX* const element = elements.GetAt(k))
                WriteElement(out, *element);
        if (const CJOBXlayObjOX* const last = elements.GetLastElement())
            out << last->GetKind() << '\n';
    }
    out << "SE\n";
}

template <class T>
void WriteAs(CTextWriter& out, const CJOBXlayObj& feature)
{
    if (const T* const record = RecordOfType<T>(&feature))
        WriteRecord(out, *record);
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
        out << '$' << layer.m_arrSymbolNumbers[i] << ' ' << names[i];
        if (i < layer.m_arrSymbolSecondFields.GetSize() && !layer.m_arrSymbolSecondFields[i].IsEmpty())
            out << ' ' << layer.m_arrSymbolSecondFields[i];
        out << '\n';
    }
    out << "#\n";
}
} // namespace

void WriteFeatureAttributes(CTextWriter& out, const CJOBXlayObj& feature)
{
    const char* before = " ; ";
    for (int i = 0; i < feature.nGetPropertyCount(); ++i)
        if (const CJOBXProperty* const property = feature.pGetProperty(i);
            property != nullptr && property->m_nNumber != -1 && property->m_nTextNumber != -1)
        {
            out << before << property->m_nNumber << '=' << property->m_nTextNumber;
            before = ", ";
        }
    out << '\n';
}

void WriteFeature(CTextWriter& out, const CJOBXlayObj& feature)
{
    const CString type = feature.GetType();
    switch (type.GetLength() == 1 ? type.GetAt(0) : '\0')
    {
    case 'L':
        WriteAs<CJOBXlayObjLine>(out, feature);
        break;
    case 'P':
        WriteAs<CJOBXlayObjPad>(out, feature);
        break;
    case 'A':
        WriteAs<CJOBXlayObjArc>(out, feature);
        break;
    case 'T':
        WriteAs<CJOBXlayObjText>(out, feature);
        break;
    case 'B':
        WriteAs<CJOBXlayObjBarcode>(out, feature);
        break;
    case 'S':
        if (const auto* const surface = RecordOfType<CJOBXlayObjSurface>(&feature))
        {
            WriteRecord(out, *surface);
            WriteFeatureAttributes(out, feature);
            return WriteContours(out, *surface);
        }
        break;
    default:
        break;
    }
    WriteFeatureAttributes(out, feature);
}

void WriteFeatures(CTextWriter& out, const CJOBXlayer& layer)
{
    out << "#\nUNITS=" << layer.m_sUnits << "\n#\n";
    WriteSymbols(out, layer);
    WriteTable(out, "#Feature attribute names", '@', layer.m_arrAttributeNameNumbers, layer.m_arrAttributeNames);
    WriteTable(out, "#Feature attribute text strings", '&', layer.m_arrAttributeTextNumbers, layer.m_arrAttributeTexts);
    out << "#Layer features\n#\n";
    for (__int64 i = 0; i < layer.GetFeatures()->GetSize(); ++i)
        if (const CJOBXlayObj* const feature = layer.GetFeatures()->GetAt(i))
            WriteFeature(out, *feature);
    out << '\n';
}
