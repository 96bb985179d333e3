#include "foundation/CListFiller.h"
#include "foundation/CRecordPool.h"
#include "foundation/CTextCache.h"
#include "netlist/CJOBXnetlist.h"
#include "netlist/NetlistFormat.h"
#include "netlist/NetlistReader.h"
#include "reading/CCheckedRecord.h"
#include "reading/CFileUnit.h"
#include "reading/CFirstNames.h"
#include "reading/CPlainRecord.h"
#include "reading/NetlistMessageKinds.h"
#include "reading/Tail.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <string>

namespace
{
constexpr CCheckedRecord::Kinds kNetlistFields{netlist_message::kTooFew, netlist_message::kTooMany,
                                               netlist_message::kNotNumber};

// The fields of a point. A field that is missing keeps its value.
struct PointFields
{
    int net = -1;
    double radius = 0.0;
    CPointD position{};
    std::string_view side{};
    double width = 0.0;
    double height = 0.0;
    std::string_view endPoint{};
    std::string_view exposure{};
};

template <class Fields>
bool Take(Fields& fields, PointFields& point)
{
    return fields.Real(point.radius) && fields.Point(point.position) && fields.Text(point.side) &&
           (point.radius != 0.0 || (fields.Real(point.width) && fields.Real(point.height))) &&
           fields.Text(point.endPoint) && fields.Text(point.exposure);
}

struct StaggeredFields
{
    std::string_view mark{};
    CPointD position{};
    double radius = 0.0;
};

template <class Fields>
bool Take(Fields& fields, StaggeredFields& staggered)
{
    return fields.Point(staggered.position) && fields.Real(staggered.radius);
}

// Gives points their flags. Points with the same flags share them, unless too many others were read in between.
// Ownership: borrows the points.
class CSharedFlags
{
public:
    // `flags` are separated by blanks.
    void Give(std::string_view flags, CJOBXnetPt& point)
    {
        if (flags.empty())
            return;
        Known& known = m_known[Slot(flags)];
        if (known.flags == flags)
            return point.ShareFlags(*known.point);
        known.flags = flags;
        known.point = &point;
        while (!flags.empty())
        {
            const std::size_t blank = std::min(flags.find(' '), flags.size());
            point.AddFlag(CString(flags.substr(0, blank)));
            flags = WithoutLeading(flags.substr(blank), ' ');
        }
    }

private:
    struct Known
    {
        std::string flags{}; // "" for none
        const CJOBXnetPt* point = nullptr;
    };
    static constexpr std::size_t kSlots = 64;

    static std::size_t Slot(std::string_view flags) noexcept
    {
        std::size_t sum = 0;
        for (const char letter : flags)
            sum = sum * 31 + static_cast<unsigned char>(letter);
        return sum % kSlots;
    }

    std::array<Known, kSlots> m_known{};
};

class CCompleteNetlistReading
{
public:
    CCompleteNetlistReading(const CReadingContext& context, CSourceFile& file, CJOBXnetlist& netlist)
        : m_text(file.Text()),
          m_messages(file.Messages()),
          m_netlist(netlist),
          m_unit(m_messages, netlist, context.job.unit),
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
        m_points.Finish();
        m_netlist.m_arrNets.m_sUnits = m_netlist.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH";
    }

private:
    int Line() const noexcept { return m_line; }

    // Lines in their usual form, of which at most the net or its name gives a message; any other line is left to
    // ReadLine.
    void ReadPlainLines()
    {
        ReadLinesAhead(m_text,
                       [this](const char* at, const char* end, int line)
                       {
                           m_line = line;
                           return *at == netlist_format::kNet.front() ? OnPlainNet({at, end}) : OnPlainPoint({at, end});
                       });
    }
    const char* OnPlainNet(CPlainRecord fields)
    {
        int number = 0;
        std::string_view name;
        CPlainTail tail;
        if (!fields.Keyword(netlist_format::kNet) || !fields.KeywordInteger(number) || !fields.Rest(name) ||
            !fields.End(tail))
            return nullptr;
        AddNet(number, name, tail);
        return fields.At();
    }
    const char* OnPlainPoint(CPlainRecord fields)
    {
        PointFields point;
        StaggeredFields staggered;
        std::string_view flags;
        if (!fields.KeywordInteger(point.net) || !Take(fields, point))
            return nullptr;
        CPlainRecord behind = fields;
        if (behind.Is(' ') && behind.Keyword(netlist_format::kStaggered))
        {
            fields = behind;
            staggered.mark = netlist_format::kStaggered;
            if (!Take(fields, staggered))
                return nullptr;
        }
        if (!fields.WordsToEnd(flags) || flags.find(netlist_format::kStaggered) != std::string_view::npos)
            return nullptr;
        AddPoint(point, staggered, flags, CPlainTail{});
        return fields.At();
    }

    void ReadLine(std::string_view line)
    {
        if (line.starts_with(netlist_format::kComment) || m_unit.Take(line, Line()))
            return;
        const CTailText tail = CutTail(line);
        CCheckedRecord fields(tail.record, Line(), m_messages, kNetlistFields);
        if (line.starts_with(netlist_format::kNet))
            OnNet(fields, tail);
        else if (number_text::IsDigit(line.front()) || line.front() == '-')
            OnPoint(fields, tail);
        else if (fields.Is(netlist_format::kHeader))
            OnHeader(fields);
        else
            m_messages.SayUnknown(netlist_message::kUnknown, Line(), "record", fields.Keyword());
    }

    // "H optimize y staggered n": two names, each with its value.
    void OnHeader(CCheckedRecord& fields)
    {
        for (int i = 0; i < 2; ++i)
        {
            std::string_view name;
            CString value;
            if (!fields.Text(name) || !fields.Text(value))
                return;
            if (name == netlist_format::kOptimize)
                m_netlist.SetOptimize(value);
            else if (name == netlist_format::kStaggered)
                m_netlist.SetStaggered(value);
            else
                m_messages.SayUnknown(netlist_message::kUnknown, Line(), "key", name);
        }
        fields.End();
    }

    void OnNet(CCheckedRecord& fields, const CTailText& tail)
    {
        int number = -1;
        fields.KeywordInteger(netlist_format::kNet, number);
        std::string_view name;
        fields.Rest(name);
        AddNet(number, name, tail);
    }
    template <class Tail>
    void AddNet(int number, std::string_view name, const Tail& tail)
    {
        auto net = record_pool::New<CJOBXnet>();
        net->SetSourceLine(Line());
        net->m_nNumber = number;
        net->m_sName = name;
        m_attributes.Take(tail, Line(), *net);
        if (const int before = name.empty() ? 0 : m_netNames.LineBefore(name, Line()); before != 0)
            m_messages.Say(netlist_message::kSameName, Line(), "The net ", Quoted{name},
                           " has the name of the net on line ", before, ".");
        CJOBXnet* const kept = m_netlist.m_arrNets.Own(std::move(net));
        const std::size_t count = m_nets.size();
        m_nets.try_emplace(m_nets.end(), number, kept); // most files number them in order
        if (m_nets.size() == count)
            m_messages.Say(netlist_message::kSameNumber, Line(), "Another net has the number ", number, ".");
    }

    void OnPoint(CCheckedRecord& fields, const CTailText& tail)
    {
        PointFields point;
        fields.KeywordInteger({}, point.net);
        Take(fields, point);
        StaggeredFields staggered;
        std::string flags;
        for (std::string_view word; !fields.IsAtEnd() && fields.Text(word);)
            if (word == netlist_format::kStaggered)
            {
                staggered.mark = word;
                Take(fields, staggered);
            }
            else
                flags.append(flags.empty() ? 0 : 1, ' ').append(word);
        AddPoint(point, staggered, flags, tail);
    }
    template <class Tail>
    void AddPoint(const PointFields& fields, const StaggeredFields& staggered, std::string_view flags, const Tail& tail)
    {
        auto point = record_pool::New<CJOBXnetPt>();
        point->SetSourceLine(Line());
        point->m_dRadius = fields.radius;
        point->m_ptPosition = fields.position;
        point->m_sSide = fields.side;
        point->m_dWidth = fields.width;
        point->m_dHeight = fields.height;
        point->m_sEndPoint = fields.endPoint;
        point->m_sExposure = fields.exposure;
        if (!staggered.mark.empty())
            point->m_sStaggeredMark = m_cache.Of(staggered.mark);
        point->m_ptStaggeredPosition = staggered.position;
        point->m_dStaggeredRadius = staggered.radius;
        m_flags.Give(flags, *point);
        m_attributes.Take(tail, Line(), *point);
        PointsOf(fields.net).Own(std::move(point));
    }
    CListFiller<CJOBXnetPt>& PointsOf(int number)
    {
        if (m_net == nullptr || number != m_net->m_nNumber)
        {
            const auto net = m_nets.find(number);
            m_net = net != m_nets.end() ? net->second : nullptr;
        }
        if (m_net == nullptr)
            m_messages.Say(netlist_message::kNoNet, Line(), "No net has the number ", number, ".");
        CJOBXnetPtArray& points = m_net != nullptr ? m_net->m_arrPts : m_netlist.m_arrPts;
        if (!m_points.IsFor(points))
            m_points.Begin(points);
        return m_points;
    }

    CLineScanner& m_text;
    int m_line = 0;
    CFileMessages& m_messages;
    CJOBXnetlist& m_netlist;
    CFileUnit m_unit;
    // A netlist has no attribute tables.
    CArrayN m_numbers;
    CStringArray m_noTexts;
    CNumberIndex m_names{m_numbers, m_noTexts};
    CNumberIndex m_texts{m_numbers, m_noTexts};
    CAttributeReader m_attributes;
    CFirstNames m_netNames;
    std::map<int, CJOBXnet*> m_nets; // the first of each number
    CListFiller<CJOBXnetPt> m_points{};
    CJOBXnet* m_net = nullptr; // of the last point; null if it has none
    CSharedFlags m_flags;
    CTextCache m_cache;
};
} // namespace

void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXnetlist& netlist)
{
    netlist.SetUnit(context.job.unit);
    if (file.WasRead())
        CCompleteNetlistReading(context, file, netlist).Read();
}
