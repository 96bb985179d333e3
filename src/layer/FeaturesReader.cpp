#include "layer/FeaturesReader.h"

#include "foundation/NumberedTable.h"
#include "layer/CJOBXlayer.h"
#include "layer/CPropertyIndex.h"
#include "layer/FeatureCursors.h"
#include "layer/FeatureMaker.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace
{
class CFeaturesReading
{
public:
    CFeaturesReading(CTextScanner& scanner, CJOBXlayer& layer)
        : m_scanner(scanner), m_layer(layer), m_features(*layer.GetFeatures())
    {
    }

    void Read()
    {
        for (ReadUsualLines(); m_scanner.NextLine(); ReadUsualLines())
        {
            m_lastAttributes = {}; // may point into a piece of the file that is gone
            ReadLine(m_scanner.Line());
        }
        m_features.FreeExtra();
    }

private:
    // Reads the lines that make up nearly all of a large file, in their usual form. ReadLine gives the same results for
    // the same lines. This function only saves time.
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

    // Where the next line begins, null if nothing was read.
    const char* ReadUsualLine(const char* at, const char* end, int lineNumber)
    {
        if (end - at < 3)
            return nullptr;
        if (at[1] == ' ')
            switch (at[0])
            {
            case features_format::kLine:
                return ReadUsualFeature<LineFields>({at + 2, end}, end);
            case features_format::kPad:
                return ReadUsualFeature<PadFields>({at + 2, end}, end);
            case features_format::kArc:
                return ReadUsualFeature<ArcFields>({at + 2, end}, end);
            default:
                return nullptr;
            }
        if (at[0] != features_format::kContour || at[2] != ' ' || !m_contourIsOpen)
            return nullptr;
        if (at[1] == features_format::kSegment)
            return ReadUsualElement<SegmentFields>({at + 3, end}, lineNumber);
        return at[1] == features_format::kCurve && m_surface != nullptr
                   ? ReadUsualElement<CurveFields>({at + 3, end}, lineNumber)
                   : nullptr;
    }

    template <class Record>
    const char* ReadUsualFeature(CStrictFields fields, const char* end)
    {
        Record record;
        if (!Take(fields, record))
            return nullptr;
        const CJOBXPropertyArray* properties = nullptr;
        const char* const next = ReadUsualAttributes(fields, end, properties);
        if (next != nullptr)
            AddFeature(record, properties);
        return next;
    }

    template <class Record>
    const char* ReadUsualElement(CStrictFields fields, int lineNumber)
    {
        Record record;
        if (!Take(fields, record) || !fields.LineEnd())
            return nullptr;
        AddElement(record, lineNumber);
        return fields.At();
    }

    // The attribute list, if any, and the end of the line. Most features have the same attributes as the one before.
    const char* ReadUsualAttributes(CStrictFields fields, const char* end, const CJOBXPropertyArray*& properties)
    {
        if (!fields.Is(features_format::kAttributes))
            return fields.LineEnd() ? fields.At() : nullptr;
        const char* const text = fields.At();
        const std::size_t size = m_lastAttributes.size();
        const auto left = static_cast<std::size_t>(end - text);
        if (size != 0 && left > size && std::memcmp(text, m_lastAttributes.data(), size) == 0)
            if (CStrictFields rest(text + size, end); rest.LineEnd())
            {
                properties = m_lastProperties;
                return rest.At();
            }
        const auto* const newline = static_cast<const char*>(std::memchr(text, '\n', left));
        if (newline == nullptr || text == newline || *text == features_format::kAttributes)
            return nullptr;
        const std::string_view raw(text, static_cast<std::size_t>(newline - text));
        if (raw.find('\0') != std::string_view::npos)
            return nullptr;
        const std::string_view attributes = TrimmedRight(raw);
        properties = PropertiesOf(attributes);
        m_lastProperties = properties;
        m_lastAttributes = attributes;
        return newline + 1;
    }

    template <class Record>
    void AddFeature(const Record& record, const CJOBXPropertyArray* properties)
    {
        Own(m_maker.Make(record, m_nextIndex, properties));
        ++m_nextIndex;
    }
    void Own(std::unique_ptr<CJOBXlayObj> feature)
    {
        MakeRoom();
        m_features.Add(feature.release());
    }
    template <class Record>
    void AddElement(const Record& record, int lineNumber)
    {
        AddElement(m_maker.Make(record, lineNumber));
    }
    void AddElement(std::unique_ptr<CJOBXlayObjOX> element)
    {
        if (m_elements.size() == m_elements.capacity())
            m_elements.reserve(std::max<std::size_t>(64, 2 * m_elements.size()));
        m_elements.push_back(std::move(element));
    }
    // Doubles the capacity: the growth of the array itself suits short lists.
    void MakeRoom()
    {
        if (m_features.GetSize() < m_room)
            return;
        m_room = std::max<__int64>(64, 2 * m_features.GetSize());
        m_features.Reserve(m_room);
    }

    // Only the first letters decide, in either case. "OE", "SE", "OB", "OS" and "OC" win over the records on purpose: a
    // line that begins with "SE" ends a surface and never begins one.
    void ReadLine(std::string_view line)
    {
        const char second = line.size() > 1 ? AsciiUpper(line[1]) : '\0';
        switch (AsciiUpper(line[0]))
        {
        case features_format::kUnits:
            return OnUnits(line);
        case features_format::kSymbol:
            return OnSymbol(line);
        case features_format::kAttributeName:
            return OnTableLine(line, m_layer.m_arrAttributeNameNumbers, m_layer.m_arrAttributeNames);
        case features_format::kAttributeText:
            return OnTableLine(line, m_layer.m_arrAttributeTextNumbers, m_layer.m_arrAttributeTexts);
        case features_format::kContour:
            return OnContourLine(line, second);
        case features_format::kSurface:
            return second == features_format::kEnd ? OnSurfaceEnd() : OnSurface(line);
        case features_format::kLine:
            return OnFeature<LineFields>(line);
        case features_format::kPad:
            return OnFeature<PadFields>(line);
        case features_format::kArc:
            return OnFeature<ArcFields>(line);
        case features_format::kText:
            return OnFeature<TextFields>(line);
        case features_format::kBarcode:
            return OnFeature<BarcodeFields>(line);
        default:
            return; // comments, and anything else that the model does not have
        }
    }

    // Removes everything up to the first blank. A line without a blank is kept whole. This is intended.
    void OnUnits(std::string_view line)
    {
        const std::size_t blank = line.find(' ');
        m_layer.m_sUnits = blank == std::string_view::npos ? line : Trimmed(line.substr(blank));
    }

    // The number of a table line, and the text after the first blank.
    static std::pair<int, std::string_view> NumberAndRest(std::string_view line)
    {
        line = WithoutLeading(line, line.front()); // the mark
        const std::size_t blank = line.find(' ');
        const std::string_view rest =
            blank == std::string_view::npos ? std::string_view() : Trimmed(line.substr(blank));
        return {ParseInteger(line.substr(0, blank)), rest};
    }

    void OnSymbol(std::string_view line)
    {
        const auto [number, rest] = NumberAndRest(line);
        const std::size_t blank = rest.find(' ');
        m_layer.m_arrSymbolNumbers.Add(number);
        m_layer.m_arrSymbolNames.Add(CString(rest.substr(0, blank)));
        m_layer.m_arrSymbolSecondFields.Add(blank == std::string_view::npos ? CString()
                                                                            : CString(Trimmed(rest.substr(blank))));
    }

    void OnTableLine(std::string_view line, CArrayN& numbers, CStringArray& texts)
    {
        const auto [number, rest] = NumberAndRest(line);
        numbers.Add(number);
        texts.Add(CString(rest));
        m_index.TablesChanged();
    }

    // Null if the text gives no property.
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

    // Null if there is no attribute list or it is empty.
    const CJOBXPropertyArray* PropertiesOf(const CLenientFields& fields)
    {
        return fields.Attributes().empty() ? nullptr : PropertiesOf(fields.Attributes());
    }

    template <class Record>
    void OnFeature(std::string_view line)
    {
        CLenientFields fields(line);
        Record record;
        Take(fields, record);
        AddFeature(record, PropertiesOf(fields));
    }

    // An open surface is dropped. Its index is not used again.
    void OnSurface(std::string_view line)
    {
        CLenientFields fields(line);
        SurfaceFields record;
        Take(fields, record);
        m_surface = m_maker.Make(record, m_nextIndex, PropertiesOf(fields));
        ++m_nextIndex;
    }

    // Does not change an open contour.
    void OnSurfaceEnd()
    {
        if (m_surface != nullptr)
            Own(std::move(m_surface));
    }

    void OnContourLine(std::string_view line, char second)
    {
        switch (second)
        {
        case features_format::kEnd:
            return OnContourEnd();
        case features_format::kBegin:
            return OnContour(line);
        case features_format::kSegment:
            return m_contourIsOpen ? OnElement<SegmentFields>(line) : void();
        case features_format::kCurve: // also needs an open surface
            return m_contourIsOpen && m_surface != nullptr ? OnElement<CurveFields>(line) : void();
        default:
            return;
        }
    }

    template <class Record>
    void OnElement(std::string_view line)
    {
        CLenientFields fields(line);
        Record record;
        Take(fields, record);
        AddElement(record, m_scanner.LineNumber());
    }

    // An open contour is dropped.
    void OnContour(std::string_view line)
    {
        if (m_surface == nullptr)
            return;
        m_elements.clear();
        m_contourIsOpen = true;
        OnElement<ContourFields>(line);
    }

    void OnContourEnd()
    {
        if (m_surface == nullptr || !m_contourIsOpen)
            return;
        AddElement(m_maker.MakeEnd(m_scanner.LineNumber()));
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
    std::string_view m_lastAttributes; // of the feature before, in the text; empty if unknown
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
    const auto reading = std::make_unique<CFeaturesReading>(scanner, layer); // too large for the stack of a worker
                                                                             // thread
    reading->Read();
}

void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXlayer& layer)
{
    layer.SetUnit(context.job.unit);
    if (file.WasRead())
        ReadFeatures(file.Text(), layer);
}

CString PadUsageText(int number)
{
    return number >= 0 && number <= 4 ? "tooling_hole" : "";
}
