#include "layer/FeaturesReader.h"

#include "foundation/NumberedTable.h"
#include "layer/CJOBXlayer.h"
#include "layer/CPropertyIndex.h"
#include "layer/FeatureCursors.h"
#include "layer/PlainFeatureLines.h"

#include <utility>

namespace
{
// Whether what follows a ";" behind this list, and has no comma, cannot change the properties: the last item has a value,
// whose number ends there.
bool MayHaveTail(std::string_view list)
{
    return list.find('=', list.rfind(',') + 1) != std::string_view::npos;
}

// The attribute list up to a second ";", if what follows cannot change the properties. Exporters put a number there that
// is another one in each line.
std::string_view WithoutTail(std::string_view attributes)
{
    const std::size_t semicolon = attributes.find(features_format::kAttributes);
    const std::string_view list = attributes.substr(0, semicolon);
    if (semicolon == std::string_view::npos || attributes.find(',', semicolon) != std::string_view::npos)
        return attributes;
    return MayHaveTail(list) ? list : attributes;
}

class CFeaturesReading : private CPlainFeatureLines<CFeaturesReading>
{
public:
    CFeaturesReading(CLineScanner& scanner, CJOBXlayer& layer)
        : CPlainFeatureLines(layer), m_scanner(scanner), m_layer(layer)
    {
    }

    void Read()
    {
        for (ReadPlainLines(m_scanner); m_scanner.NextLine(); ReadPlainLines(m_scanner))
            ReadLine(m_scanner.Line());
        m_builder.Finish();
    }

private:
    friend CPlainFeatureLines;

    static constexpr bool kKeepsLines = false;
    static bool Accepts(const FeatureFields& /*record*/, const char* /*end*/) noexcept { return true; }
    bool TakesSegments() const noexcept { return m_builder.HasContour(); }
    bool TakesCurves() const noexcept { return m_builder.HasContour() && m_builder.HasSurface(); }
    bool FindProperties(std::string_view list, const CJOBXPropertyArray*& properties)
    {
        m_mayHaveTail = MayHaveTail(list);
        properties = list.empty() ? nullptr : PropertiesOf(list);
        return !list.empty();
    }
    // What follows the list is only dropped where it cannot change the properties.
    bool TakeTail(CPlainFields& fields, __int64& /*id*/) const noexcept
    {
        return m_mayHaveTail && fields.SkipLineWithout(',', '\0');
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
                                  return list->GetSize() > 0 ? m_builder.Keep(std::move(list)) : nullptr;
                              });
    }

    // Null if there is no attribute list or it is empty.
    const CJOBXPropertyArray* PropertiesOf(const CLenientFields& fields)
    {
        return fields.Attributes().empty() ? nullptr : PropertiesOf(WithoutTail(fields.Attributes()));
    }

    template <class Record>
    void OnFeature(std::string_view line)
    {
        CLenientFields fields(line);
        Record record;
        Take(fields, record);
        m_builder.AddFeature(record, PropertiesOf(fields));
    }

    // An open surface is dropped. Its index is not used again.
    void OnSurface(std::string_view line)
    {
        CLenientFields fields(line);
        SurfaceFields record;
        Take(fields, record);
        m_builder.OpenSurface(record, PropertiesOf(fields));
    }

    // Does not change an open contour.
    void OnSurfaceEnd()
    {
        if (m_builder.HasSurface())
            m_builder.CloseSurface();
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
            return TakesSegments() ? OnElement<SegmentFields>(line) : void();
        case features_format::kCurve: // also needs an open surface
            return TakesCurves() ? OnElement<CurveFields>(line) : void();
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
        m_builder.AddElement(record, m_scanner.LineNumber());
    }

    // An open contour is dropped.
    void OnContour(std::string_view line)
    {
        if (!m_builder.HasSurface())
            return;
        m_builder.OpenContour();
        OnElement<ContourFields>(line);
    }

    void OnContourEnd()
    {
        if (m_builder.HasSurface() && m_builder.HasContour())
            m_builder.CloseContour(m_scanner.LineNumber());
    }

    CLineScanner& m_scanner;
    CJOBXlayer& m_layer;
    CNumberIndex m_names{m_layer.m_arrAttributeNameNumbers, m_layer.m_arrAttributeNames};
    CNumberIndex m_texts{m_layer.m_arrAttributeTextNumbers, m_layer.m_arrAttributeTexts};
    CPropertyIndex m_index;
    bool m_mayHaveTail = false; // the attribute list found last
};
} // namespace

void ReadFeatures(CLineScanner& scanner, CJOBXlayer& layer)
{
    const auto reading = std::make_unique<CFeaturesReading>(scanner, layer); // too large for the stack of a worker
                                                                             // thread
    reading->Read();
}

CString PadUsageText(int number)
{
    return number >= 0 && number <= 4 ? "tooling_hole" : "";
}
