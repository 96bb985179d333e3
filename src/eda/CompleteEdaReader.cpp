#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "eda/EdaFormat.h"
#include "eda/EdaReader.h"
#include "foundation/CListFiller.h"
#include "foundation/CRecordPool.h"
#include "foundation/CTextCache.h"
#include "foundation/FieldTexts.h"
#include "reading/CCheckedRecord.h"
#include "reading/CFileUnit.h"
#include "reading/CFirstNames.h"
#include "reading/CPlainRecord.h"
#include "reading/EdaMessageKinds.h"
#include "reading/SharedRecords.h"
#include "reading/Tail.h"

#include <array>
#include <memory>
#include <span>

namespace
{
constexpr CCheckedRecord::Kinds kEdaFields{eda_message::kTooFew, eda_message::kTooMany, eda_message::kNotNumber};

// What is open in the outlines of a package or pin.
enum class Open
{
    Nothing,
    Contour,
    Polygon // in a contour, or by itself
};

// The fields of a subnet, of which each kind has its own. A field that is missing keeps its value.
struct SubnetFields
{
    std::string_view kind{};
    std::string_view side{};
    int component = -1;
    int toeprint = -1;
    std::string_view fillType{};
    std::string_view cutoutType{};
    double fillSize = 0.0;
};

bool IsSubnetKind(std::string_view kind)
{
    return kind == eda_format::kToeprint || kind == eda_format::kPlane || kind == eda_format::kVia ||
           kind == eda_format::kTrace;
}

// False for any other kind, too.
template <class Fields>
bool Take(Fields& fields, SubnetFields& subnet)
{
    if (!fields.Text(subnet.kind))
        return false;
    if (subnet.kind == eda_format::kToeprint)
        return fields.Text(subnet.side) && fields.Integer(subnet.component) && fields.Integer(subnet.toeprint);
    if (subnet.kind == eda_format::kPlane)
        return fields.Text(subnet.fillType) && fields.Text(subnet.cutoutType) && fields.Real(subnet.fillSize);
    return IsSubnetKind(subnet.kind);
}

bool IsSide(std::string_view side)
{
    return side == eda_format::kTopSide || side == eda_format::kBottomSide;
}

// The fields of a pin.
struct PinFields
{
    std::string_view name{};
    std::string_view type{};
    CPointD center{};
    double holeSize = 0.0;
    std::string_view electricalType = "U";
    std::string_view mountType{};
};

template <class Fields>
bool Take(Fields& fields, PinFields& pin)
{
    return fields.Text(pin.name) && fields.Text(pin.type) && fields.Point(pin.center) && fields.Real(pin.holeSize) &&
           fields.Text(pin.electricalType) && fields.Text(pin.mountType);
}

bool IsFeatureType(std::string_view kind)
{
    return kind.size() == 1 && eda_format::kFeatureTypes.find(kind.front()) != std::string_view::npos;
}

class CCompleteEdaReading
{
public:
    CCompleteEdaReading(const CReadingContext& context, CSourceFile& file, CJOBXdata& data)
        : m_text(file.Text()),
          m_messages(file.Messages()),
          m_data(data),
          m_unit(m_messages, data, context.job.unit),
          m_attributes(m_names, m_texts, context.job.types, m_messages)
    {
    }

    void Read()
    {
        for (ReadPlainLines(); m_text.NextLine(); ReadPlainLines())
        {
            m_line = m_text.LineNumber();
            ReadLine(m_text.Line());
        }
        CloseOutline();
        FinishLists();
        m_data.m_sUnits = m_data.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH";
    }

private:
    struct Record
    {
        std::string_view keyword;
        void (CCompleteEdaReading::*read)(CCheckedRecord& fields, const CTailText& tail);
    };
    // The most frequent ones first.
    static const Record kRecords[18];

    int Line() const noexcept { return m_line; }

    // Lines in their usual form, of which at most a name or the attributes give a message; any other line is left to
    // ReadLine.
    void ReadPlainLines()
    {
        ReadLinesAhead(m_text,
                       [this](const char* at, const char* end, int line)
                       {
                           m_line = line;
                           return ReadPlainLine({at, end}, at[0], at[0] == '\n' ? '\n' : at[1]);
                       });
    }
    const char* ReadPlainLine(CPlainRecord fields, char first, char second)
    {
        switch (first)
        {
        case 'F':
            return OnPlainFeature(fields);
        case 'S':
            return second == 'N' ? OnPlainSubnet(fields) : OnPlainOutline<3, 0>(fields, eda_format::kSquare);
        case 'P':
            return second == 'I' ? OnPlainPin(fields) : OnPlainProperty(fields);
        case 'O':
            return OnPlainPolygonLine(fields, second);
        case 'C':
            return OnPlainContourLine(fields, second);
        case 'R':
            return OnPlainOutline<4, 0>(fields, eda_format::kRectangle);
        case 'N':
            return OnPlainNet(fields);
        case '#':
            return OnPlainComment(fields);
        default:
            return nullptr;
        }
    }
    // Without text, or "NET 3" or "PKG 3".
    const char* OnPlainComment(CPlainRecord fields)
    {
        fields.Is('#');
        if (CPlainRecord empty = fields; empty.End())
            return empty.At();
        if (!fields.Is(' '))
            return nullptr;
        const char* const net = NumberedRecord(fields, eda_format::kNet, m_data.m_arrNets.GetSize());
        return net != nullptr ? net : NumberedRecord(fields, eda_format::kPackage, m_data.m_arrPkgs.GetSize());
    }
    static const char* NumberedRecord(CPlainRecord fields, std::string_view keyword, __int64 position)
    {
        int number = 0;
        return fields.Keyword(keyword) && fields.Integer(number) && number == position && fields.End() ? fields.At()
                                                                                                       : nullptr;
    }
    const char* OnPlainNet(CPlainRecord fields)
    {
        std::string_view name;
        CPlainTail tail;
        if (!fields.Keyword(eda_format::kNet) || !fields.Rest(name) || !fields.End(tail))
            return nullptr;
        AddNet(name, tail);
        return fields.At();
    }
    const char* OnPlainSubnet(CPlainRecord fields)
    {
        SubnetFields subnet;
        CPlainTail tail;
        if (m_net == nullptr || !fields.Keyword(eda_format::kSubnet) || !Take(fields, subnet) ||
            (!subnet.side.empty() && !IsSide(subnet.side)) || !fields.End(tail))
            return nullptr;
        AddSubnet(subnet, tail);
        return fields.At();
    }
    const char* OnPlainFeature(CPlainRecord fields)
    {
        std::string_view kind;
        int layer = 0;
        int feature = 0;
        if (!m_hasFeatures || !fields.Keyword(eda_format::kFeature) || !fields.Text(kind) || !IsFeatureType(kind) ||
            !fields.Integer(layer) || layer >= m_data.m_arrLayerNames.GetSize() || !fields.Integer(feature) ||
            !fields.End())
            return nullptr;
        auto object = record_pool::New<CJOBXdataNetObj>();
        object->m_nLineNumber = Line();
        object->m_sKind = kind;
        object->m_nLayerIndex = layer;
        object->m_nFeatureIndex = feature;
        m_features.Own(std::move(object));
        return fields.At();
    }
    const char* OnPlainPin(CPlainRecord fields)
    {
        PinFields pin;
        CPlainTail tail;
        if (m_package == nullptr || m_open != Open::Nothing || !fields.Keyword(eda_format::kPin) ||
            !Take(fields, pin) || !fields.End(tail))
            return nullptr;
        AddPin(pin, tail);
        return fields.At();
    }
    const char* OnPlainProperty(CPlainRecord fields)
    {
        std::string_view name;
        std::string_view value;
        if (m_properties == nullptr || !fields.Keyword(eda_format::kProperty) || !fields.Text(name) ||
            !fields.QuotedToEnd(value))
            return nullptr;
        auto property = record_pool::New<CJOBXProperty>();
        property->m_sName = m_cache.Of(name);
        property->m_sValue = value;
        property->SetKind(JOBXattributeKind::Text);
        m_properties->Own(std::move(property));
        return fields.At();
    }

    const char* OnPlainContourLine(CPlainRecord fields, char second)
    {
        if (second == 'R')
            return OnPlainOutline<3, 0>(fields, eda_format::kCircle);
        const bool isBegin = second == 'T';
        if (m_open != (isBegin ? Open::Nothing : Open::Contour))
            return nullptr;
        const char* const next = OnPlainOutline<0, 0>(fields, isBegin ? eda_format::kContour : eda_format::kContourEnd);
        if (next != nullptr && isBegin)
            OpenOutline(Open::Contour);
        else if (next != nullptr)
            CloseOutline(Open::Contour, Open::Nothing);
        return next;
    }
    const char* OnPlainPolygonLine(CPlainRecord fields, char second)
    {
        if ((m_open == Open::Polygon) == (second == 'B'))
            return nullptr;
        if (second == 'S')
            return OnPlainOutline<2, 0>(fields, eda_format::kSegment);
        if (second == 'C')
            return OnPlainOutline<4, 1>(fields, eda_format::kCurve);
        const bool isBegin = second == 'B';
        const char* const next = isBegin ? OnPlainOutline<2, 1>(fields, eda_format::kPolygon)
                                         : OnPlainOutline<0, 0>(fields, eda_format::kPolygonEnd);
        if (next != nullptr && isBegin)
            OpenOutline(Open::Polygon);
        else if (next != nullptr)
            CloseOutline(Open::Polygon, m_isInContour ? Open::Contour : Open::Nothing);
        return next;
    }
    template <std::size_t Numbers, std::size_t Words>
    const char* OnPlainOutline(CPlainRecord fields, std::string_view keyword)
    {
        std::array<std::string_view, Numbers + Words> texts;
        CPlainTail tail;
        if (m_outlines == nullptr || !fields.Keyword(keyword))
            return nullptr;
        std::size_t taken = 0;
        for (std::string_view& text : texts)
            if (taken++ < Numbers ? !fields.NumberText(text) : !fields.Text(text))
                return nullptr;
        if (!fields.End(tail))
            return nullptr;
        auto record = NewOutline(keyword);
        AddFields(record->m_arrParameters, std::span<const std::string_view>(texts), m_cache);
        KeepOutline(std::move(record), tail);
        return fields.At();
    }

    void ReadLine(std::string_view line)
    {
        if (line.front() == '#')
            return ReadComment(Trimmed(line.substr(1)));
        if (IsTableEntry(line))
            return ReadTableEntry(line);
        if (m_unit.Take(line, Line()))
            return;
        const CTailText tail = CutTail(line);
        CCheckedRecord fields(tail.record, Line(), m_messages, kEdaFields);
        for (const Record& record : kRecords)
            if (fields.Is(record.keyword))
                return (this->*record.read)(fields, tail);
        m_messages.SayUnknown(eda_message::kUnknown, Line(), "record", fields.Keyword());
    }

    // Comments hold the attribute tables and the numbers of nets and packages.
    void ReadComment(std::string_view comment)
    {
        if (IsTableEntry(comment))
            return ReadTableEntry(comment);
        ReadNumber(comment, eda_format::kNet, m_data.m_arrNets.GetSize());
        ReadNumber(comment, eda_format::kPackage, m_data.m_arrPkgs.GetSize());
    }
    void ReadTableEntry(std::string_view entry)
    {
        AddTableEntry(entry, *m_data.GetAttributeNameNumbers(), m_data.m_arrAttributeNames,
                      *m_data.GetAttributeTextNumbers(), m_data.m_arrAttributeTexts);
    }
    // "NET 3" and "PKG 3" announce the record that comes next.
    void ReadNumber(std::string_view comment, std::string_view keyword, __int64 position)
    {
        int number = 0;
        if (IsNumbered(comment, keyword, number) && number != position)
            m_messages.Say(eda_message::kOtherNumber, Line(), "The comment says ", Quoted{comment},
                           ", but the position is ", static_cast<long long>(position), ".");
    }

    void OnHeader(CCheckedRecord& fields, const CTailText& tail)
    {
        std::string_view text;
        if (!fields.IsAtEnd() && fields.Rest(text))
            m_data.m_sHeader = text;
        SayTail(tail);
    }
    void OnLayers(CCheckedRecord& fields, const CTailText& tail)
    {
        CString name;
        while (!fields.IsAtEnd() && fields.Text(name))
            m_data.m_arrLayerNames.Add(name);
        SayTail(tail);
    }

    void OnNet(CCheckedRecord& fields, const CTailText& tail)
    {
        std::string_view name;
        fields.Rest(name);
        AddNet(name, tail);
    }
    template <class Tail>
    void AddNet(std::string_view name, const Tail& tail)
    {
        BeginRecord();
        auto net = record_pool::New<CJOBXdataNet>();
        net->m_nNumber = static_cast<int>(m_data.m_arrNets.GetSize());
        net->SetSourceLine(Line());
        net->m_sName = name;
        m_attributes.Take(tail, Line(), *net);
        CheckName(name);
        m_net = m_data.m_arrNets.Own(std::move(net));
        m_subnets.Begin(m_net->m_arrSnts);
        m_properties = &m_net->m_arrProperties;
    }
    void CheckName(std::string_view name)
    {
        if (const int before = name.empty() ? 0 : m_netNames.LineBefore(name, Line()); before != 0)
            m_messages.Say(eda_message::kSameName, Line(), "The net ", Quoted{name},
                           " has the name of the net on line ", before, ".");
    }

    void OnSubnet(CCheckedRecord& fields, const CTailText& tail)
    {
        if (m_net == nullptr)
            return SayNoOwner(fields, "net");
        SubnetFields subnet;
        Take(fields, subnet);
        if (!subnet.side.empty() && !IsSide(subnet.side))
            m_messages.Say(eda_message::kNoComponent, Line(), "The side ", Quoted{subnet.side}, " is neither T nor B.");
        if (subnet.kind.empty() || IsSubnetKind(subnet.kind))
            fields.End();
        else
            m_messages.SayUnknown(eda_message::kUnknown, Line(), "subnet type", subnet.kind);
        AddSubnet(subnet, tail);
    }
    template <class Tail>
    void AddSubnet(const SubnetFields& fields, const Tail& tail)
    {
        auto subnet = record_pool::New<CJOBXSnt>();
        subnet->m_nLineNumber = Line();
        subnet->m_sKind = fields.kind;
        subnet->m_sSide = fields.side;
        subnet->m_nComponentNumber = fields.component;
        subnet->m_nToeprintNumber = fields.toeprint;
        subnet->m_sFillType = fields.fillType;
        subnet->m_sCutoutType = fields.cutoutType;
        subnet->m_dFillSize = fields.fillSize;
        m_attributes.Take(tail, Line(), *subnet);
        CJOBXSnt* const kept = m_subnets.Own(std::move(subnet));
        m_features.Begin(kept->m_arrNetObjs);
        m_hasFeatures = true;
    }

    void OnFeature(CCheckedRecord& fields, const CTailText& tail)
    {
        if (!m_hasFeatures)
            return SayNoOwner(fields, "subnet or feature group");
        auto object = record_pool::New<CJOBXdataNetObj>();
        object->m_nLineNumber = Line();
        std::string_view kind;
        if (fields.Text(kind))
            object->m_sKind = kind;
        if (!kind.empty() && !IsFeatureType(kind))
            m_messages.SayUnknown(eda_message::kUnknown, Line(), "feature type", kind);
        fields.Integer(object->m_nLayerIndex);
        if (object->m_nLayerIndex >= m_data.m_arrLayerNames.GetSize() || object->m_nLayerIndex < 0)
            m_messages.Say(eda_message::kNoLayer, Line(), "The layer number ", object->m_nLayerIndex,
                           " is not in the list of layers, which has ",
                           static_cast<long long>(m_data.m_arrLayerNames.GetSize()), " names.");
        fields.Integer(object->m_nFeatureIndex);
        fields.End();
        if (!tail.whole.empty())
            object->m_sText = tail.whole;
        m_features.Own(std::move(object));
    }

    void OnPackage(CCheckedRecord& fields, const CTailText& tail)
    {
        BeginRecord();
        auto package = record_pool::New<CJOBXdataPkg>();
        package->m_nNumber = static_cast<int>(m_data.m_arrPkgs.GetSize());
        package->SetSourceLine(Line());
        fields.Text(package->m_sName);
        fields.Real(package->m_dPitch);
        fields.Point(package->m_ptLowerLeft);
        fields.Point(package->m_ptUpperRight);
        fields.End();
        m_attributes.Take(tail, Line(), *package);
        m_package = m_data.m_arrPkgs.Own(std::move(package));
        m_properties = &m_package->m_arrProperties;
        m_pins.Begin(m_package->m_arrPins);
        m_packageOutlines.Begin(m_package->m_arrOutlines);
        m_outlines = &m_packageOutlines;
    }

    void OnPin(CCheckedRecord& fields, const CTailText& tail)
    {
        CloseOutline();
        if (m_package == nullptr)
            return SayNoOwner(fields, "package");
        PinFields pin;
        Take(fields, pin);
        fields.End();
        AddPin(pin, tail);
    }
    template <class Tail>
    void AddPin(const PinFields& fields, const Tail& tail)
    {
        auto pin = record_pool::New<CJOBXdataPkgPin>();
        pin->SetSourceLine(Line());
        pin->m_sName = fields.name;
        pin->m_sType = fields.type;
        pin->m_ptCenter = fields.center;
        pin->m_dHoleSize = fields.holeSize;
        pin->m_sElectricalType = fields.electricalType;
        pin->m_sMountType = fields.mountType;
        m_attributes.Take(tail, Line(), *pin);
        m_pin = m_pins.Own(std::move(pin));
        m_properties = nullptr; // made with the first property: few pins have any
        m_pinOutlines.Begin(m_pin->m_arrOutlines);
        m_outlines = &m_pinOutlines;
    }

    void OnFeatureGroup(CCheckedRecord& fields, const CTailText& tail)
    {
        BeginRecord();
        auto group = std::make_unique<CJOBXdataFgr>();
        group->m_nLineNumber = Line();
        fields.Text(group->m_sKind);
        fields.End();
        m_attributes.Take(tail, Line(), *group);
        CJOBXdataFgr* const kept = m_data.GetFeatureGroups()->Own(std::move(group));
        m_properties = &kept->m_arrProperties;
        m_features.Begin(kept->m_arrNetObjs);
        m_hasFeatures = true;
    }

    void OnProperty(CCheckedRecord& fields, const CTailText& /*tail*/)
    {
        if (m_properties == nullptr && m_pin != nullptr)
            m_properties = m_pin->pMakeTailAttributes();
        if (m_properties == nullptr)
            return SayNoOwner(fields, "net, package, pin or feature group");
        auto property = record_pool::New<CJOBXProperty>();
        const CPropertyText text(fields.IsAtEnd() ? std::string_view() : m_text.Line());
        if (fields.IsAtEnd())
            m_messages.Say(eda_message::kTooFew, Line(), "The record ", Quoted{fields.Keyword()},
                           " has too few fields.");
        property->m_sName = m_cache.Of(text.name);
        property->m_sValue = text.value;
        if (text.hasQuotes)
            property->SetKind(JOBXattributeKind::Text);
        CFieldScanner values(text.numbers);
        AddFields(property->m_arrFurtherValues, values, m_cache);
        m_properties->Own(std::move(property));
    }

    template <int Numbers, int Words>
    void OnShape(CCheckedRecord& fields, const CTailText& tail)
    {
        ReadOutline(fields, tail, Numbers, Words);
    }
    void OnContour(CCheckedRecord& fields, const CTailText& tail)
    {
        if (ReadOutline(fields, tail, 0, 0))
            OpenOutline(Open::Contour);
    }
    void OnContourEnd(CCheckedRecord& fields, const CTailText& tail)
    {
        if (ReadOutline(fields, tail, 0, 0))
            CloseOutline(Open::Contour, Open::Nothing);
    }
    void OnPolygon(CCheckedRecord& fields, const CTailText& tail)
    {
        if (ReadOutline(fields, tail, 2, 1))
            OpenOutline(Open::Polygon);
    }
    void OnSegment(CCheckedRecord& fields, const CTailText& tail)
    {
        if (ReadOutline(fields, tail, 2, 0) && m_open != Open::Polygon)
            SayNeverOpened();
    }
    void OnCurve(CCheckedRecord& fields, const CTailText& tail)
    {
        if (ReadOutline(fields, tail, 4, 1) && m_open != Open::Polygon)
            SayNeverOpened();
    }
    void OnPolygonEnd(CCheckedRecord& fields, const CTailText& tail)
    {
        if (ReadOutline(fields, tail, 0, 0))
            CloseOutline(Open::Polygon, m_isInContour ? Open::Contour : Open::Nothing);
    }

    // One line of an outline, which has so many numbers and then so many words; false when there is nothing to which it
    // could belong.
    bool ReadOutline(CCheckedRecord& fields, const CTailText& tail, int numbers, int words)
    {
        if (m_outlines == nullptr)
        {
            SayNoOwner(fields, "package or pin");
            return false;
        }
        CFieldScanner texts(tail.record);
        texts.Skip();
        auto record = NewOutline(fields.Keyword());
        AddFields(record->m_arrParameters, texts, m_cache);
        CheckOutline(fields, numbers, words);
        KeepOutline(std::move(record), tail);
        return true;
    }
    std::unique_ptr<CJOBXdataPkgObj> NewOutline(std::string_view keyword)
    {
        auto record = record_pool::New<CJOBXdataPkgObj>();
        record->m_nLineNumber = Line();
        record->m_sKeyword = keyword;
        return record;
    }
    template <class Tail>
    void KeepOutline(std::unique_ptr<CJOBXdataPkgObj> record, const Tail& tail)
    {
        m_attributes.Take(tail, Line(), *record);
        m_outlines->Own(std::move(record));
    }
    static void CheckOutline(CCheckedRecord& fields, int numbers, int words)
    {
        double number = 0.0;
        for (int i = 0; i < numbers; ++i)
            fields.Real(number);
        std::string_view word;
        for (int i = 0; i < words; ++i)
            fields.Text(word);
        fields.End();
    }
    void OpenOutline(Open open)
    {
        if (m_open == open || m_open == Open::Polygon)
            SayNeverClosed();
        m_isInContour = open == Open::Contour || m_open == Open::Contour;
        m_open = open;
        m_openLine = Line();
    }
    void CloseOutline(Open open, Open then)
    {
        if (m_open == Open::Polygon && open == Open::Contour)
            SayNeverClosed();
        else if (m_open != open)
            SayNeverOpened();
        m_open = then;
        m_isInContour = then == Open::Contour;
    }
    // Where a record begins that cannot be inside an outline.
    void CloseOutline()
    {
        if (m_open != Open::Nothing)
            SayNeverClosed();
        m_open = Open::Nothing;
        m_isInContour = false;
        m_outlines = nullptr;
    }
    void SayNeverClosed()
    {
        m_messages.Say(eda_message::kNeverClosed, m_openLine, "The ", m_open == Open::Polygon ? "polygon" : "contour",
                       " that begins here is not closed.");
    }
    void SayNeverOpened()
    {
        m_messages.Say(eda_message::kNeverOpened, Line(), "The line ", Quoted{m_text.Line()},
                       " is outside of a contour.");
    }

    // A net, package or feature group: nothing that was open goes on.
    void BeginRecord()
    {
        CloseOutline();
        m_net = nullptr;
        m_package = nullptr;
        m_pin = nullptr;
        m_hasFeatures = false;
    }
    void FinishLists()
    {
        m_subnets.Finish();
        m_features.Finish();
        m_pins.Finish();
        m_packageOutlines.Finish();
        m_pinOutlines.Finish();
    }
    void SayNoOwner(const CCheckedRecord& fields, const char* owner)
    {
        m_messages.Say(eda_message::kNoOwner, Line(), "The record ", Quoted{fields.Keyword()}, " belongs to no ", owner,
                       ".");
    }
    // HDR and LYR have no place for attributes.
    void SayTail(const CTailText& tail)
    {
        if (!tail.whole.empty())
            m_messages.Say(eda_message::kTooMany, Line(), "The attributes ", Quoted{tail.whole},
                           " of this record are not kept.");
    }

    CLineScanner& m_text;
    int m_line = 0;
    CFileMessages& m_messages;
    CJOBXdata& m_data;
    CFileUnit m_unit;
    CNumberIndex m_names{*m_data.GetAttributeNameNumbers(), m_data.m_arrAttributeNames};
    CNumberIndex m_texts{*m_data.GetAttributeTextNumbers(), m_data.m_arrAttributeTexts};
    CAttributeReader m_attributes;
    CTextCache m_cache{};
    CFirstNames m_netNames;
    // The records that are open; null until the first one.
    CJOBXdataNet* m_net = nullptr;
    CJOBXdataPkg* m_package = nullptr;
    CJOBXdataPkgPin* m_pin = nullptr;
    CJOBXPropertyArray* m_properties = nullptr;
    CListFiller<CJOBXdataPkgObj>* m_outlines = nullptr;
    bool m_hasFeatures = false; // whether features have a record to belong to
    Open m_open = Open::Nothing;
    bool m_isInContour = false;
    int m_openLine = 0;
    CListFiller<CJOBXSnt> m_subnets{};
    CListFiller<CJOBXdataNetObj> m_features{};
    CListFiller<CJOBXdataPkgPin> m_pins{};
    CListFiller<CJOBXdataPkgObj> m_packageOutlines{};
    CListFiller<CJOBXdataPkgObj> m_pinOutlines{};
};

const CCompleteEdaReading::Record CCompleteEdaReading::kRecords[18] = {
    {eda_format::kFeature, &CCompleteEdaReading::OnFeature},
    {eda_format::kSubnet, &CCompleteEdaReading::OnSubnet},
    {eda_format::kNet, &CCompleteEdaReading::OnNet},
    {eda_format::kPin, &CCompleteEdaReading::OnPin},
    {eda_format::kSegment, &CCompleteEdaReading::OnSegment},
    {eda_format::kCurve, &CCompleteEdaReading::OnCurve},
    {eda_format::kPolygon, &CCompleteEdaReading::OnPolygon},
    {eda_format::kPolygonEnd, &CCompleteEdaReading::OnPolygonEnd},
    {eda_format::kContour, &CCompleteEdaReading::OnContour},
    {eda_format::kContourEnd, &CCompleteEdaReading::OnContourEnd},
    {eda_format::kRectangle, &CCompleteEdaReading::OnShape<4, 0>},
    {eda_format::kCircle, &CCompleteEdaReading::OnShape<3, 0>},
    {eda_format::kSquare, &CCompleteEdaReading::OnShape<3, 0>},
    {eda_format::kPackage, &CCompleteEdaReading::OnPackage},
    {eda_format::kProperty, &CCompleteEdaReading::OnProperty},
    {eda_format::kFeatureGroup, &CCompleteEdaReading::OnFeatureGroup},
    {eda_format::kHeader, &CCompleteEdaReading::OnHeader},
    {eda_format::kLayers, &CCompleteEdaReading::OnLayers},
};
} // namespace

void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXdata& data)
{
    data.SetUnit(context.job.unit);
    if (file.WasRead())
        CCompleteEdaReading(context, file, data).Read();
}

void ReadCompletely(const CReadingContext& /*context*/, CSourceFile& file, CJOBXeda& eda)
{
    while (file.WasRead() && file.Text().NextLine())
        if (file.Text().Line().front() != '#')
            eda.GetShorts().Add(CString(file.Text().Line()));
}
