// Reading a features file completely.
#include "foundation/NumberedTable.h"
#include "layer/CJOBXlayer.h"
#include "layer/CPropertyIndex.h"
#include "layer/FeatureCursors.h"
#include "layer/FeaturesReader.h"
#include "layer/PlainFeatureLines.h"
#include "reading/AttributeMessageKinds.h"
#include "reading/CFileUnit.h"
#include "reading/FeatureMessageKinds.h"
#include "reading/Tail.h"

#include <algorithm>
#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

using namespace feature_message;

namespace
{
// The numbers of a table: which are there.
class CKnownNumbers
{
public:
    // False when it is there already.
    bool Add(int number)
    {
        const auto at = static_cast<std::size_t>(number);
        if (number < 0 || at >= kMost)
            return m_others.insert(number).second;
        if (at >= m_small.size())
            m_small.resize(at + 1);
        const bool isNew = !m_small[at];
        m_small[at] = true;
        return isNew;
    }
    bool Has(int number) const
    {
        const auto at = static_cast<std::size_t>(number);
        return at < m_small.size() ? m_small[at] : m_others.contains(number);
    }

private:
    static constexpr std::size_t kMost = 1U << 20U;
    std::vector<bool> m_small; // by number
    std::unordered_set<int> m_others;
};

bool IsOneOf(std::string_view text, std::string_view upperLetters)
{
    return text.size() == 1 && upperLetters.find(AsciiUpper(text.front())) != std::string_view::npos;
}

// What the fields of a record say that the format has not; "" when there is nothing.
std::string_view OddText(const FeatureFields& fields)
{
    return IsOneOf(fields.polarity, "PN") ? std::string_view() : fields.polarity;
}
std::string_view OddText(const ArcFields& fields)
{
    return IsOneOf(fields.clockwise, "YN") ? OddText(static_cast<const FeatureFields&>(fields)) : fields.clockwise;
}
std::string_view OddText(const ContourFields& fields)
{
    return IsOneOf(fields.polygonType, "IH") ? std::string_view() : fields.polygonType;
}
std::string_view OddText(const SegmentFields& /*fields*/)
{
    return {};
}
std::string_view OddText(const CurveFields& fields)
{
    return IsOneOf(fields.clockwise, "YN") ? std::string_view() : fields.clockwise;
}

template <class Record>
constexpr bool kHasSymbol =
    std::is_same_v<Record, LineFields> || std::is_same_v<Record, PadFields> || std::is_same_v<Record, ArcFields>;
template <class Record>
constexpr bool kHasText = std::is_same_v<Record, TextFields> || std::is_same_v<Record, BarcodeFields>;
template <class Record>
concept Oriented = requires(const Record& record)
{
    record.orientation;
};

class CCompleteFeaturesReading : private CPlainFeatureLines<CCompleteFeaturesReading>
{
public:
    CCompleteFeaturesReading(const CReadingContext& context, CSourceFile& file, CJOBXlayer& layer)
        : CPlainFeatureLines(layer),
          m_scanner(file.Text()),
          m_messages(file.Messages()),
          m_layer(layer),
          m_attributes(m_names, m_texts, context.job.types, m_messages),
          m_silentAttributes(m_names, m_texts, context.job.types, m_silent),
          m_unit(m_messages, layer, context.job.unit)
    {
    }

    void Read()
    {
        for (ReadPlainLines(m_scanner); m_scanner.NextLine(); ReadPlainLines(m_scanner))
            ReadLine(m_scanner.Line());
        EndSurface();
        if (m_announced >= 0 && m_announced != m_builder.Count())
            m_messages.Say(kCount, m_announcedLine, "The file announces ", m_announced, " features and has ",
                           m_builder.Count(), ".");
        m_builder.Finish();
        m_layer.m_sUnits = m_layer.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH";
    }

private:
    friend CPlainFeatureLines;

    static constexpr bool kKeepsLines = true;

    struct Tail
    {
        const CJOBXPropertyArray* properties = nullptr;
        __int64 id = CJOBXidentified::kNoID;
    };

    // What is wrong with a plain line is said when it is read again, field by field.
    template <class Record>
    bool Accepts(const Record& record, const char* end)
    {
        return !m_builder.HasSurface() && HasSymbol(record) && IsSoundOrientation(record, end);
    }
    bool HasSymbol(const FeatureFields& record)
    {
        if (record.symbol == m_lastSymbol)
            return true;
        const bool isThere = m_symbols.Has(record.symbol);
        m_lastSymbol = isThere ? record.symbol : kNoSymbolNumber;
        return isThere;
    }
    static bool IsSoundOrientation(const FeatureFields& /*record*/, const char* /*end*/) noexcept { return true; }
    // `end` is behind the orientation. An angle that is missing is 0, and the line ends with the code then.
    static bool IsSoundOrientation(const PadFields& pad, const char* end) noexcept
    {
        const bool hasAngle = pad.angle != 0.0 || end[-1] == '0' || end[-1] == '.';
        return pad.orientation < features_format::kTurned ||
               (hasAngle && pad.orientation <= features_format::kTurnedAndMirrored);
    }

    bool TakesSegments() const noexcept { return m_builder.HasContour(); }
    bool TakesCurves() const noexcept { return m_builder.HasContour(); }
    bool FindProperties(std::string_view list, const CJOBXPropertyArray*& properties)
    {
        properties = nullptr;
        if (list.empty())
            return true;
        if (!number_text::IsDigit(list.front()))
            return false;
        properties = PropertiesOf(list);
        return !m_unsound.contains(properties);
    }
    static bool TakeTail(CPlainFields& fields, __int64& id) noexcept
    {
        const bool isNumber = fields.ID(id);
        fields.SkipBlanks();
        return isNumber;
    }

    // The list that features with this text share; null when it is empty. Nothing is said about it.
    const CJOBXPropertyArray* PropertiesOf(std::string_view text)
    {
        return m_index.ListOf(text,
                              [this, text]() -> const CJOBXPropertyArray*
                              {
                                  auto list = std::make_unique<CJOBXPropertyArray>();
                                  const bool isSound = m_silentAttributes.Append(text, 0, *list);
                                  if (isSound && list->GetSize() == 0)
                                      return nullptr;
                                  const CJOBXPropertyArray* const kept = m_builder.Keep(std::move(list));
                                  if (!isSound)
                                      m_unsound.insert(kept);
                                  return kept;
                              });
    }

    // The same for a line that is read field by field.
    Tail ReadTail(const CTailText& text)
    {
        Tail tail;
        tail.id = ReadID(text);
        if (text.attributes.empty())
            return tail;
        tail.properties = PropertiesOf(text.attributes);
        if (m_unsound.contains(tail.properties))
        {
            CJOBXPropertyArray ignored;
            m_attributes.Append(text.attributes, Line(), ignored);
        }
        return tail;
    }

    __int64 ReadID(const CTailText& text)
    {
        const __int64 id = ReadTailID(text, Line(), m_messages);
        if (id <= CJOBXidentified::kLargestID)
            return id;
        m_messages.Say(attribute_message::kBadID, Line(), "The unique number ", Quoted{text.id}, " is too large.");
        return CJOBXidentified::kNoID;
    }

    int Line() const noexcept { return m_scanner.LineNumber(); }

    // Keywords are whole words, letters in any case.
    void ReadLine(std::string_view line)
    {
        switch (line.front())
        {
        case '#':
            return;
        case features_format::kSymbol:
            return OnSymbol(line);
        case features_format::kAttributeName:
            return OnTableLine(line, m_nameNumbers, m_layer.m_arrAttributeNameNumbers, m_layer.m_arrAttributeNames);
        case features_format::kAttributeText:
            return OnTableLine(line, m_textNumbers, m_layer.m_arrAttributeTextNumbers, m_layer.m_arrAttributeTexts);
        default:
            break;
        }
        const std::string_view word = line.substr(0, line.find_first_of(" \t;="));
        if (word.size() == 1 && OnRecord(line, AsciiUpper(word.front())))
            return;
        if (word.size() == 2 && OnPart(line, AsciiUpper(word[0]), AsciiUpper(word[1])))
            return;
        if (!OnKey(line))
            m_messages.SayUnknown(kUnknownRecord, Line(), "record", word);
    }

    bool OnRecord(std::string_view line, char letter)
    {
        switch (letter)
        {
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
        case features_format::kSurface:
            return OnSurface(line);
        case features_format::kCount:
            return OnCount(line);
        default:
            return false;
        }
    }

    bool OnPart(std::string_view line, char first, char second)
    {
        if (first == features_format::kSurface && second == features_format::kEnd)
            return m_builder.HasSurface() ? CloseSurface() : SayNeverOpened("surface");
        if (first != features_format::kContour)
            return false;
        switch (second)
        {
        case features_format::kBegin:
            return OnContour(line);
        case features_format::kSegment:
            return m_builder.HasContour() ? OnElement<SegmentFields>(line) : SayNeverOpened("contour");
        case features_format::kCurve:
            return m_builder.HasContour() ? OnElement<CurveFields>(line) : SayNeverOpened("contour");
        case features_format::kEnd:
            return m_builder.HasContour() ? CloseContour() : SayNeverOpened("contour");
        default:
            return false;
        }
    }

    // The lines of the head: the unit, and the unique number of the file itself.
    bool OnKey(std::string_view line)
    {
        if (m_unit.Take(line, Line()))
            return true;
        if (!BeginsWith(line, features_format::kFileID))
            return false;
        CTailText tail;
        tail.id = KeyValue(line);
        tail.hasID = true;
        m_layer.SetID(ReadID(tail));
        return true;
    }

    bool OnCount(std::string_view line)
    {
        CCheckedFields fields(line);
        int count = 0;
        fields.Integer(count);
        SayWhatIsWrong(fields);
        if (fields.AreTooFew() || !fields.NoNumber().empty())
            return true;
        m_announced = count;
        m_announcedLine = Line();
        return true;
    }

    // Takes the number behind the mark and what follows it; false when there is none.
    bool TakeNumber(std::string_view line, CKnownNumbers& known, int& number, std::string_view& rest)
    {
        const std::string_view entry = line.substr(1);
        const std::size_t blank = std::min(entry.find_first_of(" \t"), entry.size());
        const auto read = ReadInteger(entry.data(), entry.data() + blank);
        number = read.value;
        rest = Trimmed(entry.substr(blank));
        if (blank == 0 || read.end != entry.data() + blank || number < 0)
        {
            m_messages.Say(kBadTableLine, Line(), "The entry ", Quoted{line}, " has no number.");
            return false;
        }
        if (!known.Add(number))
            m_messages.Say(kTwice, Line(), "The table has an entry ", Quoted{line.substr(0, blank + 1)}, " already.");
        return true;
    }

    void OnSymbol(std::string_view line)
    {
        int number = 0;
        std::string_view rest;
        if (!TakeNumber(line, m_symbols, number, rest))
            return;
        const std::size_t blank = std::min(rest.find_first_of(" \t"), rest.size());
        const std::string_view unit = Trimmed(rest.substr(blank));
        m_layer.m_arrSymbolNumbers.Add(number);
        m_layer.m_arrSymbolNames.Add(CString(rest.substr(0, blank)));
        m_layer.m_arrSymbolSecondFields.Add(CString(unit));
        if (!unit.empty() && !IsOneOf(unit, "IM"))
            m_messages.Say(kOddUnit, Line(), "The unit ", Quoted{unit}, " of the symbol ",
                           Quoted{rest.substr(0, blank)}, " is neither I nor M.");
    }

    void OnTableLine(std::string_view line, CKnownNumbers& known, CArrayN& numbers, CStringArray& texts)
    {
        int number = 0;
        std::string_view rest;
        if (!TakeNumber(line, known, number, rest))
            return;
        numbers.Add(number);
        texts.Add(CString(rest));
        m_index.TablesChanged();
    }

    void SayWhatIsWrong(const CCheckedFields& fields)
    {
        if (fields.AreTooFew())
            m_messages.Say(kTooFew, Line(), "The record has too few fields.");
        if (!fields.NoNumber().empty())
            m_messages.Say(kNoNumber, Line(), "The field ", Quoted{fields.NoNumber()}, " is not a number.");
        if (fields.HasOpenQuote())
            m_messages.Say(kOpenQuote, Line(), "The quote around the text is not closed.");
        if (!fields.Left().empty())
            m_messages.Say(kTooMany, Line(), "The record has too many fields, ", Quoted{fields.Left()}, " last.");
    }
    template <class Record>
    void SayWhatIsOdd(const Record& record)
    {
        if (const std::string_view odd = OddText(record); !odd.empty())
            m_messages.Say(kOddLetter, Line(), "The format has no ", Quoted{odd}, " here.");
        if constexpr (Oriented<Record>)
            if (record.orientation < 0 || record.orientation > features_format::kTurnedAndMirrored)
                m_messages.Say(kOddLetter, Line(), "The format has no orientation ", record.orientation, ".");
        if constexpr (kHasSymbol<Record>)
            if (!m_symbols.Has(record.symbol))
                m_messages.Say(kNoSymbol, Line(), "No symbol has the number ", record.symbol, ".");
    }

    // The tail begins behind a text in quotes.
    template <class Record>
    Tail TakeLine(std::string_view line, Record& record)
    {
        const std::size_t quote = kHasText<Record> ? line.rfind(features_format::kQuote) : std::string_view::npos;
        const CTailText text = CutTail(line, quote == std::string_view::npos ? 0 : quote);
        CCheckedFields fields(text.record);
        Take(fields, record);
        SayWhatIsWrong(fields);
        if (!fields.AreTooFew())
            SayWhatIsOdd(record);
        return ReadTail(text);
    }

    template <class Record>
    bool OnFeature(std::string_view line)
    {
        EndSurface();
        Record record;
        const Tail tail = TakeLine(line, record);
        Finish(m_builder.AddFeature(record, tail.properties), tail);
        return true;
    }

    void Finish(CJOBXlayObj& feature, const Tail& tail)
    {
        feature.SetID(tail.id);
        feature.SetSourceLine(Line());
    }

    bool OnSurface(std::string_view line)
    {
        EndSurface();
        SurfaceFields record;
        const Tail tail = TakeLine(line, record);
        Finish(m_builder.OpenSurface(record, tail.properties), tail);
        m_surfaceLine = Line();
        return true;
    }

    // Ends a surface that is still open where something else begins.
    void EndSurface()
    {
        if (!m_builder.HasSurface())
            return;
        m_messages.Say(kOpenSurface, m_surfaceLine, "The surface is not closed.");
        CloseSurface();
    }
    bool CloseSurface()
    {
        EndContour();
        m_builder.CloseSurface();
        return true;
    }

    bool OnContour(std::string_view line)
    {
        if (!m_builder.HasSurface())
            return SayNeverOpened("surface");
        EndContour();
        m_builder.OpenContour();
        m_contourLine = Line();
        return OnElement<ContourFields>(line);
    }
    void EndContour()
    {
        if (!m_builder.HasContour())
            return;
        m_messages.Say(kOpenContour, m_contourLine, "The contour is not closed.");
        CloseContour();
    }
    bool CloseContour()
    {
        m_builder.CloseContour(Line());
        return true;
    }
    template <class Record>
    bool OnElement(std::string_view line)
    {
        Record record;
        TakeLine(line, record);
        m_builder.AddElement(record, Line());
        return true;
    }
    bool SayNeverOpened(const char* what)
    {
        m_messages.Say(kNeverOpened, Line(), "No ", std::string_view(what), " is open here.");
        return true;
    }

    CLineScanner& m_scanner;
    CFileMessages& m_messages;
    CJOBXlayer& m_layer;
    CNumberIndex m_names{m_layer.m_arrAttributeNameNumbers, m_layer.m_arrAttributeNames};
    CNumberIndex m_texts{m_layer.m_arrAttributeTextNumbers, m_layer.m_arrAttributeTexts};
    CKnownNumbers m_symbols;
    CKnownNumbers m_nameNumbers;
    CKnownNumbers m_textNumbers;
    CAttributeReader m_attributes;
    const CJOBXreading m_nobody{}; // whom nothing is told
    CFileMessages m_silent{m_nobody, ""};
    CAttributeReader m_silentAttributes;
    CPropertyIndex m_index;
    std::unordered_set<const CJOBXPropertyArray*> m_unsound; // lists with something to be said about them
    CFileUnit m_unit;
    static constexpr int kNoSymbolNumber = -1; // of no plain line
    int m_lastSymbol = kNoSymbolNumber;        // that is there
    int m_announced = -1;
    int m_announcedLine = 0;
    int m_surfaceLine = 0; // of the open one
    int m_contourLine = 0;
};
} // namespace

void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXlayer& layer)
{
    layer.SetUnit(context.job.unit);
    if (!file.WasRead())
        return;
    const auto reading = std::make_unique<CCompleteFeaturesReading>(context, file, layer);
    reading->Read();
}
