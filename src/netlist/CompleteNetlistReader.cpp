#include "foundation/CListFiller.h"
#include "foundation/CRecordPool.h"
#include "netlist/CJOBXnetlist.h"
#include "netlist/NetlistFormat.h"
#include "netlist/NetlistReader.h"
#include "reading/CCheckedRecord.h"
#include "reading/CFileUnit.h"
#include "reading/CFirstNames.h"
#include "reading/NetlistMessageKinds.h"
#include "reading/Tail.h"

#include <map>
#include <memory>
#include <string>

namespace
{
constexpr CCheckedRecord::Kinds kNetlistFields{netlist_message::kTooFew, netlist_message::kTooMany,
                                               netlist_message::kNotNumber};

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
        while (m_text.NextLine())
            ReadLine(m_text.Line());
        m_points.Finish();
        m_netlist.m_arrNets.m_sUnits = m_netlist.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH";
    }

private:
    int Line() const noexcept { return m_text.LineNumber(); }

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
        auto net = record_pool::New<CJOBXnet>();
        fields.KeywordInteger(netlist_format::kNet, net->m_nNumber);
        std::string_view name;
        if (fields.Rest(name))
            net->m_sName = name;
        m_attributes.Take(tail, Line(), *net);
        if (const int before = m_netNames.LineBefore(name, Line()); before != 0 && !name.empty())
            m_messages.Say(netlist_message::kSameName, Line(), "The net ", Quoted{name},
                           " has the name of the net on line ", before, ".");
        CJOBXnet* const kept = m_netlist.m_arrNets.Own(std::move(net));
        if (!m_nets.try_emplace(kept->m_nNumber, kept).second)
            m_messages.Say(netlist_message::kSameNumber, Line(), "Another net has the number ", kept->m_nNumber, ".");
    }

    void OnPoint(CCheckedRecord& fields, const CTailText& tail)
    {
        int number = -1;
        fields.KeywordInteger({}, number);
        auto point = record_pool::New<CJOBXnetPt>();
        ReadPoint(fields, *point);
        m_attributes.Take(tail, Line(), *point);
        PointsOf(number).Own(std::move(point));
    }
    CListFiller<CJOBXnetPt>& PointsOf(int number)
    {
        const auto net = m_nets.find(number);
        if (net == m_nets.end())
            m_messages.Say(netlist_message::kNoNet, Line(), "No net has the number ", number, ".");
        CJOBXnetPtArray& points = net != m_nets.end() ? net->second->m_arrPts : m_netlist.m_arrPts;
        if (!m_points.IsFor(points))
            m_points.Begin(points);
        return m_points;
    }

    void ReadPoint(CCheckedRecord& fields, CJOBXnetPt& point)
    {
        fields.Real(point.m_dRadius);
        fields.Point(point.m_ptPosition);
        fields.Text(point.m_sSide);
        if (point.m_dRadius == 0.0)
        {
            fields.Real(point.m_dWidth);
            fields.Real(point.m_dHeight);
        }
        fields.Text(point.m_sEndPoint);
        fields.Text(point.m_sExposure);
        ReadFlags(fields, point);
    }
    // Points with the flags of the one before share them.
    void ReadFlags(CCheckedRecord& fields, CJOBXnetPt& point)
    {
        const std::string_view flags = fields.Left();
        if (m_flagged != nullptr && flags == m_flags)
            return point.ShareFlags(*m_flagged);
        m_flags = flags;
        m_flagged = &point;
        for (CString word; !fields.IsAtEnd() && fields.Text(word);)
            if (word.View() == netlist_format::kStaggered)
                ReadStaggered(fields, point, word);
            else
                point.AddFlag(word);
    }
    void ReadStaggered(CCheckedRecord& fields, CJOBXnetPt& point, const CString& mark)
    {
        m_flagged = nullptr; // the numbers are no flags
        point.m_sStaggeredMark = mark;
        fields.Point(point.m_ptStaggeredPosition);
        fields.Real(point.m_dStaggeredRadius);
    }

    CLineScanner& m_text;
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
    // The flags read last and a point that has them; null if it has more than flags.
    std::string m_flags;
    const CJOBXnetPt* m_flagged = nullptr;
};
} // namespace

void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXnetlist& netlist)
{
    netlist.SetUnit(context.job.unit);
    if (file.WasRead())
        CCompleteNetlistReading(context, file, netlist).Read();
}
