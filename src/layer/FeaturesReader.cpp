#include "layer/FeaturesReader.h"

#include "foundation/NumberedTable.h"
#include "layer/CJOBXlayer.h"
#include "layer/FeatureMaker.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace
{
// Finds the list of an attribute text that was met before, so that features with equal attributes share one list. Holds
// a bounded number of texts; a text that was pushed out gets a new list.
class CPropertyIndex
{
public:
    // The tables have grown: lists made before are not given out again.
    void TablesChanged() noexcept
    {
        ++m_tables;
        m_used = 0;
    }

    // The list for `text`, as the features are to borrow it: null when there is nothing in it. `make` makes the list
    // when it is not known.
    template <class Make>
    const CJOBXPropertyArray* ListOf(std::string_view text, Make make)
    {
        const std::size_t hash = std::hash<std::string_view>{}(text);
        if (const Entry* const found = Find(hash, text))
            return found->list;
        const CJOBXPropertyArray* const list = make();
        if (m_used * 2 >= m_entries.size() && m_entries.size() < kMaxEntries)
            Grow();
        Entry& entry = m_entries[Place(hash)];
        entry = {hash, m_tables, list, std::string(text)};
        ++m_used;
        return list;
    }

private:
    struct Entry
    {
        std::size_t hash = 0;
        unsigned tables = 0; // 0: free
        const CJOBXPropertyArray* list = nullptr;
        std::string text;
    };
    static constexpr std::size_t kWays = 4; // entries in which a text may stand
    static constexpr std::size_t kMaxEntries = 65536;

    const Entry* Find(std::size_t hash, std::string_view text) const noexcept
    {
        const std::size_t first = First(hash);
        for (std::size_t i = first; i < first + kWays; ++i)
            if (const Entry& entry = m_entries[i]; entry.tables == m_tables && entry.hash == hash && entry.text == text)
                return &entry;
        return nullptr;
    }
    std::size_t First(std::size_t hash) const noexcept { return (hash & (m_entries.size() / kWays - 1)) * kWays; }
    // A free or outdated entry, else one after the other in turn.
    std::size_t Place(std::size_t hash) noexcept
    {
        const std::size_t first = First(hash);
        for (std::size_t i = first; i < first + kWays; ++i)
            if (m_entries[i].tables != m_tables)
                return i;
        return first + ++m_turn % kWays;
    }
    void Grow()
    {
        std::vector<Entry> entries(4 * m_entries.size());
        entries.swap(m_entries);
        m_used = 0;
        for (Entry& entry : entries)
            if (entry.tables == m_tables)
            {
                m_entries[Place(entry.hash)] = std::move(entry);
                ++m_used;
            }
    }

    std::vector<Entry> m_entries = std::vector<Entry>(64); // a power of two
    std::size_t m_used = 0;
    std::size_t m_turn = 0;
    unsigned m_tables = 1;
};

// Takes the fields of a line as the usual writers print it: single blanks, plain numbers, no blank at either end. What
// looks different is not taken, and the line is left to the reader of all lines.
class CUsualFields
{
public:
    CUsualFields(const char* at, const char* end) noexcept : m_at(at), m_end(end) {}

    const char* At() const noexcept { return m_at; }

    // A number with the blank behind it.
    bool Real(double& value) noexcept
    {
        const char* const read = number_text::ReadPlainReal(m_at, m_end, value);
        if (read == nullptr || read == m_end || *read != ' ')
            return false;
        m_at = read + 1;
        return true;
    }
    bool Point(CFeatureMaker::Point& point) noexcept { return Real(point.x) && Real(point.y); }
    bool Integer(int& value) noexcept { return Digits(value) && Is(' '); }
    // The last point of a line, with the line's end.
    bool LastPoint(CFeatureMaker::Point& point) noexcept
    {
        if (!Real(point.x))
            return false;
        const char* const read = number_text::ReadPlainReal(m_at, m_end, point.y);
        if (read == nullptr)
            return false;
        m_at = read;
        return LineEnd();
    }
    // A number without a sign.
    bool Digits(int& value) noexcept
    {
        constexpr int kMost = 9; // digits that fit
        const char* at = m_at;
        int number = 0;
        for (; at != m_end && number_text::IsDigit(*at) && at - m_at <= kMost; ++at)
            number = static_cast<int>(static_cast<unsigned>(number) * 10U + static_cast<unsigned>(*at - '0'));
        if (at == m_at || at - m_at > kMost)
            return false;
        m_at = at;
        value = number;
        return true;
    }
    bool Is(char character) noexcept
    {
        if (m_at == m_end || *m_at != character)
            return false;
        ++m_at;
        return true;
    }
    bool Next(char& character) noexcept
    {
        if (m_at == m_end)
            return false;
        character = *m_at++;
        return true;
    }
    bool LineEnd() noexcept
    {
        if (m_at != m_end && *m_at == '\r')
            ++m_at;
        return Is('\n');
    }

private:
    const char* m_at;
    const char* m_end;
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
        for (ReadUsualLines(); m_scanner.NextLine(); ReadUsualLines())
        {
            m_lastAttributes = {}; // may lie in a piece that is gone
            ReadLine(m_scanner.Line());
        }
        m_features.FreeExtra();
    }

private:
    // The lines that make up nearly all of a large file, as they are usually written. The results are those of ReadLine
    // for the same lines; that it sees them only when they look otherwise is all about speed.
    void ReadUsualLines()
    {
        const std::string_view ahead = m_scanner.Ahead();
        const char* const end = ahead.data() + ahead.size();
        const int first = m_scanner.NumberAhead();
        const char* at = ahead.data();
        int lines = 0;
        while (const char* const next = ReadUsualLine(at, end, first + lines))
        {
            at = next;
            ++lines;
        }
        m_scanner.Took(at, lines);
    }

    // Where the next line begins, null when nothing was taken.
    const char* ReadUsualLine(const char* at, const char* end, int lineNumber)
    {
        if (end - at < 3)
            return nullptr;
        CUsualFields fields(at + 2, end);
        if (at[1] == ' ')
            switch (at[0])
            {
            case 'L':
                return ReadUsualLineFeature(fields, end);
            case 'P':
                return ReadUsualPad(fields, end);
            case 'A':
                return ReadUsualArc(fields, end);
            default:
                return nullptr;
            }
        if (at[0] != 'O' || !m_contourIsOpen || !fields.Is(' '))
            return nullptr;
        CFeatureMaker::Point point;
        if (at[1] == 'S')
        {
            if (!fields.LastPoint(point))
                return nullptr;
            AddElement([&] { return m_maker.Segment(lineNumber, point); });
            return fields.At();
        }
        CFeatureMaker::Point center;
        char clockwise = '\0';
        if (at[1] != 'C' || m_surface == nullptr || !fields.Point(point) || !fields.Point(center) ||
            !fields.Next(clockwise) || (clockwise != 'Y' && clockwise != 'N') || !fields.LineEnd())
            return nullptr;
        AddElement([&] { return m_maker.ContourArc(lineNumber, point, center, clockwise == 'Y'); });
        return fields.At();
    }

    const char* ReadUsualLineFeature(CUsualFields fields, const char* end)
    {
        CFeatureMaker::Point start;
        CFeatureMaker::Point stop;
        CFeatureMaker::Common common;
        if (!fields.Point(start) || !fields.Point(stop) || !ReadUsualSymbolAndPolarity(fields, common) ||
            !fields.Digits(common.dcode))
            return nullptr;
        const char* const next = ReadUsualAttributes(fields, end, common);
        if (next != nullptr)
            AddFeature([&] { return m_maker.Line(common, m_nextIndex, start, stop); });
        return next;
    }

    const char* ReadUsualPad(CUsualFields fields, const char* end)
    {
        CFeatureMaker::Point center;
        CFeatureMaker::Common common;
        int orientation = 0;
        if (!fields.Point(center) || !ReadUsualSymbolAndPolarity(fields, common) || !fields.Integer(common.dcode) ||
            !fields.Digits(orientation))
            return nullptr;
        const char* const next = ReadUsualAttributes(fields, end, common);
        if (next != nullptr)
            AddFeature([&] { return m_maker.Pad(common, m_nextIndex, center, orientation); });
        return next;
    }

    const char* ReadUsualArc(CUsualFields fields, const char* end)
    {
        CFeatureMaker::Point start;
        CFeatureMaker::Point stop;
        CFeatureMaker::Point center;
        CFeatureMaker::Common common;
        char clockwise = '\0';
        if (!fields.Point(start) || !fields.Point(stop) || !fields.Point(center) ||
            !ReadUsualSymbolAndPolarity(fields, common) || !fields.Integer(common.dcode) || !fields.Next(clockwise) ||
            (clockwise != 'Y' && clockwise != 'N'))
            return nullptr;
        const char* const next = ReadUsualAttributes(fields, end, common);
        if (next != nullptr)
            AddFeature([&] { return m_maker.Arc(common, m_nextIndex, start, stop, center, clockwise); });
        return next;
    }

    static bool ReadUsualSymbolAndPolarity(CUsualFields& fields, CFeatureMaker::Common& common) noexcept
    {
        return fields.Integer(common.symbol) && fields.Next(common.polarity) &&
               (common.polarity == 'P' || common.polarity == 'N') && fields.Is(' ');
    }

    // The attribute list, if there is one, and the end of the line. Most features have the attributes of the one
    // before.
    const char* ReadUsualAttributes(CUsualFields fields, const char* end, CFeatureMaker::Common& common)
    {
        if (!fields.Is(';'))
            return fields.LineEnd() ? fields.At() : nullptr;
        const char* const text = fields.At();
        const std::size_t size = m_lastAttributes.size();
        const auto left = static_cast<std::size_t>(end - text);
        if (size != 0 && left > size && std::memcmp(text, m_lastAttributes.data(), size) == 0)
            if (CUsualFields rest(text + size, end); rest.LineEnd())
            {
                common.properties = m_lastProperties;
                return rest.At();
            }
        const auto* const newline = static_cast<const char*>(std::memchr(text, '\n', left));
        if (newline == nullptr || text == newline || *text == ';')
            return nullptr;
        const std::string_view raw(text, static_cast<std::size_t>(newline - text));
        if (raw.find('\0') != std::string_view::npos)
            return nullptr;
        const std::string_view attributes = TrimmedRight(raw);
        common.properties = PropertiesOf(attributes);
        m_lastProperties = common.properties;
        m_lastAttributes = attributes;
        return newline + 1;
    }

    // `make` is not called before there is room, and does not fail afterwards.
    template <class Make>
    void AddFeature(Make make)
    {
        MakeRoom();
        m_features.Add(make());
        ++m_nextIndex;
    }
    template <class Make>
    void AddElement(Make make)
    {
        if (m_elements.size() == m_elements.capacity())
            m_elements.reserve(std::max<std::size_t>(64, 2 * m_elements.size()));
        m_elements.emplace_back(make());
    }
    // Doubling: the array's own steps are made for lists that stay short.
    void MakeRoom()
    {
        if (m_features.GetSize() < m_room)
            return;
        m_room = std::max<__int64>(64, 2 * m_features.GetSize());
        m_features.Reserve(m_room);
    }

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
        m_index.TablesChanged();
    }

    template <class T>
    std::unique_ptr<T> NewFeature(char letter)
    {
        std::unique_ptr<T> feature = m_maker.New<T>();
        feature->SetType(CString(letter));
        feature->SetFeatureIndex(m_nextIndex++);
        return feature;
    }

    void Own(std::unique_ptr<CJOBXlayObj> feature)
    {
        MakeRoom();
        m_features.Own(std::move(feature));
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
        CFeatureMaker::SetProperties(feature, PropertiesOf(text));
    }

    // Null when the text gives no property.
    const CJOBXPropertyArray* PropertiesOf(std::string_view text)
    {
        return m_index.ListOf(text,
                              [this, text]() -> const CJOBXPropertyArray*
                              {
                                  auto list = std::make_unique<CJOBXPropertyArray>();
                                  AppendProperties(
                                      text, *list, [this](int number) { return m_names.Text(number); },
                                      [this](int number) { return m_texts.Text(number); });
                                  return list->GetSize() > 0 ? m_maker.Properties().Keep(std::move(list)) : nullptr;
                              });
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
        Own(std::move(feature));
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
        Own(std::move(feature));
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
        Own(std::move(feature));
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
        Own(std::move(feature));
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
        Own(std::move(feature));
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
            Own(std::move(m_surface));
    }

    CJOBXlayObjOX& NewElement(const char* kind)
    {
        AddElement([this] { return m_maker.New<CJOBXlayObjOX>(); });
        CJOBXlayObjOX& element = *m_elements.back();
        element.SetLineNumber(m_scanner.LineNumber());
        element.SetKind(kind);
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
        m_elements.clear();
        m_contourIsOpen = true;
        CJOBXlayObjOX& element = NewElement("OB");
        element.SetPoint(NextPoint(fields));
        std::string_view type;
        if (fields.Text(type))
            element.SetPolygonType(CString(type));
    }

    void ReadSegment(CFieldScanner& fields)
    {
        if (m_contourIsOpen)
            NewElement("OS").SetPoint(NextPoint(fields));
    }

    // Needs an open surface; without a contour there is nowhere to keep it.
    void ReadContourArc(CFieldScanner& fields)
    {
        if (m_surface == nullptr || !m_contourIsOpen)
            return;
        CJOBXlayObjOX& element = NewElement("OC");
        element.SetPoint(NextPoint(fields));
        element.SetCenterPoint(NextPoint(fields));
        std::string_view clockwise;
        if (fields.Text(clockwise))
            element.SetClockwise(CString(clockwise));
    }

    void EndContour()
    {
        if (m_surface == nullptr || !m_contourIsOpen)
            return;
        NewElement("OE");
        auto contour = std::make_unique<CJOBXlayObjSurfaceOB>();
        CJOBXlayObjOXArray& elements = *contour->GetODBlayObjOXArray();
        elements.Reserve(static_cast<__int64>(m_elements.size()));
        for (std::unique_ptr<CJOBXlayObjOX>& element : m_elements)
            elements.Own(std::move(element));
        m_elements.clear();
        m_contourIsOpen = false;
        m_surface->GetContours()->Own(std::move(contour));
    }

    CTextScanner& m_scanner;
    CJOBXlayer& m_layer;
    CJOBXlayObjArray& m_features;
    CNumberIndex m_names{m_layer.m_arrAttributeNameNumbers, m_layer.m_arrAttributeNames};
    CNumberIndex m_texts{m_layer.m_arrAttributeTextNumbers, m_layer.m_arrAttributeTexts};
    CFeatureMaker m_maker;
    CPropertyIndex m_index;
    std::string_view m_lastAttributes; // of the feature before, in the text; empty when unknown
    const CJOBXPropertyArray* m_lastProperties = nullptr;
    __int64 m_room = 0; // of the features
    int m_nextIndex = 0;
    std::unique_ptr<CJOBXlayObjSurface> m_surface;
    std::vector<std::unique_ptr<CJOBXlayObjOX>> m_elements; // of the open contour
    bool m_contourIsOpen = false;
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
