#include "layer/FeaturesReader.h"

#include "foundation/NumberedTable.h"
#include "layer/CJOBXlayer.h"
#include "layer/SharedProperties.h"

#include <array>
#include <functional>
#include <utility>

namespace
{
// Remembers the lists made last, by their attribute text, so that features with equal attributes share one list.
class CPropertyCache
{
public:
    struct Slot
    {
        std::string_view text; // lies in the file's buffer
        CSharedProperties* list = nullptr;
        unsigned tables = 0;
    };

    CPropertyCache() = default;
    CPropertyCache(const CPropertyCache&) = delete;
    CPropertyCache& operator=(const CPropertyCache&) = delete;
    ~CPropertyCache()
    {
        for (Slot& slot : m_slots)
            if (slot.list != nullptr)
                slot.list->Release();
    }

    // The tables have grown: lists made before are not given out again.
    void TablesChanged() noexcept { ++m_tables; }

    // The list for `text`, borrowed; `fill` makes it when it is not remembered.
    template <class Fill>
    CSharedProperties* ListOf(std::string_view text, Fill fill)
    {
        Slot& slot = m_slots[std::hash<std::string_view>{}(text) % kSlots];
        if (slot.list != nullptr && slot.tables == m_tables && slot.text == text)
            return slot.list;
        const std::unique_ptr<CSharedProperties, Releaser> made(new CSharedProperties);
        fill(made->m_list);
        if (slot.list != nullptr)
            slot.list->Release();
        made->AddReference();
        slot = {text, made.get(), m_tables};
        return slot.list;
    }

private:
    struct Releaser
    {
        void operator()(CSharedProperties* list) const noexcept { list->Release(); }
    };
    static constexpr std::size_t kSlots = 2048;

    std::array<Slot, kSlots> m_slots{};
    unsigned m_tables = 0;
};

class CReader
{
public:
    CReader(CTextScanner& scanner, CJOBXlayer& layer)
        : m_scanner(scanner), m_layer(layer), m_features(*layer.GetFeatures())
    {
    }

    void Read()
    {
        while (m_scanner.NextLine())
            ReadLine(m_scanner.Line());
    }

private:
    // Told by the first letters only, in either case. "OE", "SE", "OB", "OS" and "OC" are meant to win over the
    // records: a line that begins with "SE" ends a surface and never opens one.
    void ReadLine(std::string_view line)
    {
        const char second = line.size() > 1 ? AsciiUpper(line[1]) : '\0';
        switch (AsciiUpper(line[0]))
        {
        case 'U':
            return ReadUnits(line);
        case '$':
            return ReadSymbol(line);
        case '@':
            return ReadTableLine(line, '@', m_layer.m_arrAttributeNameNumbers, m_layer.m_arrAttributeNames);
        case '&':
            return ReadTableLine(line, '&', m_layer.m_arrAttributeTextNumbers, m_layer.m_arrAttributeTexts);
        case 'O':
            return ReadContourLine(line, second);
        case 'S':
            return second == 'E' ? EndSurface() : BeginSurface(line);
        case 'L':
            return ReadLineFeature(line);
        case 'P':
            return ReadPad(line);
        case 'A':
            return ReadArc(line);
        case 'T':
            return ReadText(line);
        case 'B':
            return ReadBarcode(line);
        default:
            return; // comments, and whatever else a file carries that is not modelled
        }
    }

    // Everything up to the first blank goes; a line without a blank is kept whole. Intended.
    void ReadUnits(std::string_view line)
    {
        const std::size_t blank = line.find(' ');
        m_layer.m_sUnits = blank == std::string_view::npos ? line : Trimmed(line.substr(blank));
    }

    // A table line's number, and its text behind the first blank.
    static std::pair<int, std::string_view> NumberAndRest(std::string_view line, char mark)
    {
        line = WithoutLeading(line, mark);
        const std::size_t blank = line.find(' ');
        const std::string_view rest =
            blank == std::string_view::npos ? std::string_view() : Trimmed(line.substr(blank));
        return {ParseInteger(line.substr(0, blank)), rest};
    }

    void ReadSymbol(std::string_view line)
    {
        const auto [number, rest] = NumberAndRest(line, '$');
        const std::size_t blank = rest.find(' ');
        m_layer.m_arrSymbolNumbers.Add(number);
        m_layer.m_arrSymbolNames.Add(CString(rest.substr(0, blank)));
        m_layer.m_arrSymbolSecondFields.Add(blank == std::string_view::npos ? CString()
                                                                            : CString(Trimmed(rest.substr(blank))));
    }

    void ReadTableLine(std::string_view line, char mark, CArrayN& numbers, CStringArray& texts)
    {
        const auto [number, rest] = NumberAndRest(line, mark);
        numbers.Add(number);
        texts.Add(CString(rest));
        m_cache.TablesChanged();
    }

    template <class T>
    std::unique_ptr<T> NewFeature(char letter)
    {
        auto feature = std::make_unique<T>();
        feature->SetType(CString(std::string_view(&letter, 1)));
        feature->SetFeatureIndex(m_nextIndex++);
        return feature;
    }

    static double NextReal(CFieldScanner& fields)
    {
        double value = 0.0;
        fields.Real(value);
        return value;
    }
    static CPointD NextPoint(CFieldScanner& fields)
    {
        const double x = NextReal(fields);
        return {x, NextReal(fields)};
    }
    static void ReadSymbolAndPolarity(CFieldScanner& fields, CJOBXlayObj& feature)
    {
        int symbol = -1;
        if (fields.Integer(symbol))
            feature.SetSymbolNumber(symbol);
        ReadPolarity(fields, feature);
    }
    static void ReadPolarity(CFieldScanner& fields, CJOBXlayObj& feature)
    {
        std::string_view polarity;
        if (fields.Text(polarity))
            feature.SetPolarity(CString(polarity));
    }
    static void ReadDcode(CFieldScanner& fields, CJOBXlayObj& feature)
    {
        int dcode = 0;
        if (fields.Integer(dcode))
            feature.SetDcode(dcode);
    }

    // The last fixed field: what stands before the ";" of the attribute list, or the next field when there is no list.
    // The list's items become the feature's properties.
    std::string_view LastField(CFieldScanner& fields, CJOBXlayObj& feature)
    {
        const std::string_view rest = fields.Rest();
        const std::size_t semicolon = rest.find(';');
        if (semicolon == std::string_view::npos)
        {
            std::string_view field;
            fields.Text(field);
            return field;
        }
        ReadAttributes(rest.substr(semicolon), feature);
        return Trimmed(rest.substr(0, semicolon));
    }
    void ReadLastDcode(CFieldScanner& fields, CJOBXlayObj& feature)
    {
        const std::string_view dcode = LastField(fields, feature);
        if (!dcode.empty())
            feature.SetDcode(ParseInteger(dcode));
    }
    // What follows a closing quote: a field, or nothing, and the attribute list.
    std::string_view AfterQuote(std::string_view rest, CJOBXlayObj& feature)
    {
        CFieldScanner fields(Trimmed(rest));
        return LastField(fields, feature);
    }

    void ReadAttributes(std::string_view text, CJOBXlayObj& feature)
    {
        text = WithoutLeading(text, ';');
        if (text.empty())
            return;
        CSharedProperties* const list =
            m_cache.ListOf(text,
                           [this, text](CJOBXPropertyArray& properties)
                           {
                               AppendProperties(
                                   text, properties, [this](int number) { return m_names.Text(number); },
                                   [this](int number) { return m_texts.Text(number); });
                           });
        if (list->m_list.GetSize() > 0)
            feature.ShareProperties(list);
    }

    void ReadLineFeature(std::string_view line)
    {
        auto feature = NewFeature<CJOBXlayObjLine>('L');
        CFieldScanner fields(line);
        fields.Skip();
        feature->SetStartPoint(NextPoint(fields));
        feature->SetEndPoint(NextPoint(fields));
        ReadSymbolAndPolarity(fields, *feature);
        ReadLastDcode(fields, *feature);
        m_features.Own(std::move(feature));
    }

    void ReadArc(std::string_view line)
    {
        auto feature = NewFeature<CJOBXlayObjArc>('A');
        CFieldScanner fields(line);
        fields.Skip();
        feature->SetStartPoint(NextPoint(fields));
        feature->SetEndPoint(NextPoint(fields));
        feature->SetCenterPoint(NextPoint(fields));
        ReadSymbolAndPolarity(fields, *feature);
        ReadDcode(fields, *feature);
        feature->SetClockwise(CString(LastField(fields, *feature)));
        m_features.Own(std::move(feature));
    }

    static bool IsPolarity(std::string_view field)
    {
        return field == "P" || field == "p" || field == "n" || field == "N";
    }

    void ReadPad(std::string_view line)
    {
        auto feature = NewFeature<CJOBXlayObjPad>('P');
        CFieldScanner fields(line);
        fields.Skip();
        feature->SetCenterPoint(NextPoint(fields));
        int symbol = -1;
        if (fields.Integer(symbol))
            feature->SetSymbolNumber(symbol);
        std::string_view fourth;
        if (fields.Text(fourth))
        {
            if (symbol != -1 && IsPolarity(fourth))
            {
                feature->SetPolarity(CString(fourth));
            }
            else
            {
                feature->SetSymbolNumber(ParseInteger(fourth));
                feature->SetResizeFlag(1);
                feature->SetResizeFactor(NextReal(fields));
                ReadPolarity(fields, *feature);
            }
            ReadDcode(fields, *feature);
            ReadPadOrientation(fields, *feature);
        }
        m_features.Own(std::move(feature));
    }

    // "8 30 ;1=2": the code, and the angle when a blank follows it.
    void ReadPadOrientation(CFieldScanner& fields, CJOBXlayObjPad& pad)
    {
        const std::string_view rest = fields.Rest();
        const std::size_t semicolon = rest.find(';');
        if (semicolon != std::string_view::npos)
            ReadAttributes(rest.substr(semicolon), pad);
        CFieldScanner orientation(Trimmed(rest.substr(0, semicolon)));
        int code = 0;
        if (orientation.Integer(code))
            pad.SetOrientation(code);
        pad.SetRotationAngle(NextReal(orientation));
    }

    // Takes the text between quotes out of the rest; leading quotes are dropped together, so that a text neither begins
    // with a quote nor holds one. An unclosed quote takes all that is left. Without a quote nothing is taken.
    static bool TakeQuoted(std::string_view& rest, std::string_view& text)
    {
        const std::size_t quote = rest.find('\'');
        if (quote == std::string_view::npos)
            return false;
        const std::string_view open = WithoutLeading(rest.substr(quote), '\'');
        text = open.substr(0, open.find('\''));
        rest = open.substr(std::min(text.size() + 1, open.size()));
        return true;
    }

    void ReadText(std::string_view line)
    {
        auto feature = NewFeature<CJOBXlayObjText>('T');
        CFieldScanner fields(line);
        fields.Skip();
        feature->SetPosition(NextPoint(fields));
        std::string_view font;
        if (fields.Text(font))
            feature->SetFontName(CString(font));
        ReadPolarity(fields, *feature);
        int orientation = 0;
        fields.Integer(orientation);
        feature->SetOrientation(orientation);
        if (orientation == 8 || orientation == 9)
            feature->SetRotationAngle(NextReal(fields));
        feature->SetSize(NextPoint(fields));
        feature->SetWidthFactor(NextReal(fields));
        std::string_view rest = fields.Rest();
        std::string_view text;
        if (TakeQuoted(rest, text))
        {
            feature->SetText(CString(text));
            const std::string_view version = AfterQuote(rest, *feature);
            if (!version.empty())
                feature->SetVersion(ParseInteger(version));
        }
        else
        {
            AfterQuote(rest, *feature);
        }
        m_features.Own(std::move(feature));
    }

    void ReadBarcode(std::string_view line)
    {
        auto feature = NewFeature<CJOBXlayObjBarcode>('B');
        CFieldScanner fields(line);
        fields.Skip();
        feature->m_ptPosition = NextPoint(fields);
        fields.Text(feature->m_sBarcodeName);
        fields.Text(feature->m_sFontName);
        ReadPolarity(fields, *feature);
        fields.Integer(feature->m_nOrientation);
        fields.Text(feature->m_sEFlag);
        feature->m_dWidth = NextReal(fields);
        feature->m_dHeight = NextReal(fields);
        fields.Text(feature->m_sFasc);
        fields.Text(feature->m_sCs);
        fields.Text(feature->m_sBg);
        fields.Text(feature->m_sAstr);
        fields.Text(feature->m_sAstrPosition);
        std::string_view rest = fields.Rest();
        std::string_view text;
        if (TakeQuoted(rest, text))
            feature->m_sText = CString(text);
        AfterQuote(rest, *feature);
        m_features.Own(std::move(feature));
    }

    void BeginSurface(std::string_view line)
    {
        auto surface = NewFeature<CJOBXlayObjSurface>('S');
        CFieldScanner fields(line);
        fields.Skip();
        ReadPolarity(fields, *surface);
        ReadLastDcode(fields, *surface);
        m_surface = std::move(surface);
    }

    // The contour, when one is open, is not touched.
    void EndSurface()
    {
        if (m_surface != nullptr)
            m_features.Own(std::move(m_surface));
    }

    std::unique_ptr<CJOBXlayObjOX> NewElement(const char* kind)
    {
        auto element = std::make_unique<CJOBXlayObjOX>();
        element->SetLineNumber(m_scanner.LineNumber());
        element->SetKind(kind);
        return element;
    }

    void ReadContourLine(std::string_view line, char second)
    {
        CFieldScanner fields(line);
        fields.Skip();
        switch (second)
        {
        case 'E':
            return EndContour();
        case 'B':
            return BeginContour(fields);
        case 'S':
            return ReadSegment(fields);
        case 'C':
            return ReadContourArc(fields);
        default:
            return;
        }
    }

    // A contour that is still open is dropped.
    void BeginContour(CFieldScanner& fields)
    {
        if (m_surface == nullptr)
            return;
        auto element = NewElement("OB");
        element->SetPoint(NextPoint(fields));
        std::string_view type;
        if (fields.Text(type))
            element->SetPolygonType(CString(type));
        m_contour = std::make_unique<CJOBXlayObjSurfaceOB>();
        m_contour->GetODBlayObjOXArray()->Own(std::move(element));
    }

    void ReadSegment(CFieldScanner& fields)
    {
        if (m_contour == nullptr)
            return;
        auto element = NewElement("OS");
        element->SetPoint(NextPoint(fields));
        m_contour->GetODBlayObjOXArray()->Own(std::move(element));
    }

    // Needs an open surface; without a contour there is nowhere to keep it.
    void ReadContourArc(CFieldScanner& fields)
    {
        if (m_surface == nullptr || m_contour == nullptr)
            return;
        auto element = NewElement("OC");
        element->SetPoint(NextPoint(fields));
        element->SetCenterPoint(NextPoint(fields));
        std::string_view clockwise;
        if (fields.Text(clockwise))
            element->SetClockwise(CString(clockwise));
        m_contour->GetODBlayObjOXArray()->Own(std::move(element));
    }

    void EndContour()
    {
        if (m_surface == nullptr || m_contour == nullptr)
            return;
        m_contour->GetODBlayObjOXArray()->Own(NewElement("OE"));
        m_surface->GetContours()->Own(std::move(m_contour));
    }

    CTextScanner& m_scanner;
    CJOBXlayer& m_layer;
    CJOBXlayObjArray& m_features;
    CNumberIndex m_names{m_layer.m_arrAttributeNameNumbers, m_layer.m_arrAttributeNames};
    CNumberIndex m_texts{m_layer.m_arrAttributeTextNumbers, m_layer.m_arrAttributeTexts};
    CPropertyCache m_cache;
    int m_nextIndex = 0;
    std::unique_ptr<CJOBXlayObjSurface> m_surface;
    std::unique_ptr<CJOBXlayObjSurfaceOB> m_contour;
};
} // namespace

void ReadFeatures(CTextScanner& scanner, CJOBXlayer& layer)
{
    const auto reader = std::make_unique<CReader>(scanner, layer); // too large for a worker thread's stack
    reader->Read();
}

CString PadUsageText(int number)
{
    return number >= 0 && number <= 4 ? "tooling_hole" : "";
}
