#include "foundation/CLineScanner.h"
#include "foundation/CListFiller.h"
#include "foundation/CRecordPool.h"
#include "foundation/CTextCache.h"
#include "foundation/KeywordTable.h"
#include "foundation/framework/Guarded.h"
#include "netlist/CJOBXnetlist.h"
#include "netlist/NetlistFormat.h"

#include <algorithm>
#include <map>
#include <memory>

namespace
{
constexpr int kMostTokens = 19; // of a point line, after its net number; the rest is dropped

// The numbers of the nets, and the first net of each number. A tree, because no file can make it slow as it could a
// hash table.
class CFirstNets
{
public:
    explicit CFirstNets(const CJOBXnetArray& nets)
    {
        for (CJOBXnet& net : nets.Records())
            Add(net);
    }

    void Add(CJOBXnet& net) { m_nets.try_emplace(m_nets.end(), net.m_nNumber, &net); }
    CJOBXnet* Find(int number) const
    {
        const auto found = m_nets.find(number);
        return found != m_nets.end() ? found->second : nullptr;
    }

private:
    std::map<int, CJOBXnet*> m_nets;
};

struct NetlistReading
{
    CJOBXnetArray& nets;
    CFirstNets firstNets;
    CJOBXnet* net = nullptr; // of the last net or point line
    CListFiller<CJOBXnetPt> points{};
    CTextCache texts{};
    // The last flags read and a point that has them, null if none.
    std::string_view flags{};
    const CJOBXnetPt* flagged = nullptr;
};

void OnIgnored(NetlistReading& /*reading*/, std::string_view /*line*/) {}

int NetNumber(CFieldScanner& fields)
{
    std::string_view number;
    fields.Text(number);
    return ParseInteger(WithoutLeading(number, netlist_format::kNet.front()));
}

void OnNet(NetlistReading& reading, std::string_view line)
{
    CFieldScanner fields(line);
    auto net = record_pool::New<CJOBXnet>();
    net->m_nNumber = NetNumber(fields);
    net->m_sName = fields.Rest();
    reading.net = reading.nets.Own(std::move(net));
    reading.firstNets.Add(*reading.net);
}

// Reads at most `most` of the remaining words.
void ReadFlags(NetlistReading& reading, CFieldScanner& fields, int most, CJOBXnetPt& point)
{
    const std::string_view flags = fields.Rest();
    const bool isCut = std::count(flags.begin(), flags.end(), ' ') >= most; // `most` depends on the number of fields
                                                                            // before
    if (reading.flagged != nullptr && reading.flags == flags && !isCut)
    {
        point.ShareFlags(*reading.flagged);
        return;
    }
    CString flag;
    for (int i = 0; i < most && fields.Text(flag); ++i)
        point.AddFlag(flag);
    reading.flags = flags;
    reading.flagged = isCut ? nullptr : &point;
}

// Fields by position. The words where the staggered numbers would be are read as numbers, whatever they are; this is
// intended.
void ReadPoint(NetlistReading& reading, CFieldScanner& fields, CJOBXnetPt& point)
{
    fields.Real(point.m_dRadius);
    fields.Real(point.m_ptPosition.x);
    fields.Real(point.m_ptPosition.y);
    fields.Text(point.m_sSide);
    int token = 10;
    if (point.m_dRadius == 0.0)
    {
        fields.Real(point.m_dWidth);
        fields.Real(point.m_dHeight);
        token = 12;
    }
    fields.Text(point.m_sEndPoint);
    fields.Text(point.m_sExposure);
    std::string_view mark;
    if (fields.Text(mark))
        point.m_sStaggeredMark = reading.texts.Of(mark);
    fields.Real(point.m_ptStaggeredPosition.x);
    fields.Real(point.m_ptStaggeredPosition.y);
    fields.Real(point.m_dStaggeredRadius);
    if (!fields.IsAtEnd())
        ReadFlags(reading, fields, kMostTokens - token, point);
}

void OnPoint(NetlistReading& reading, std::string_view line)
{
    CFieldScanner fields(line);
    const int number = NetNumber(fields);
    if (reading.net == nullptr || reading.net->m_nNumber != number)
    {
        CJOBXnet* const net = reading.firstNets.Find(number);
        if (net == nullptr)
            return;
        reading.net = net;
    }
    if (!reading.points.IsFor(reading.net->m_arrPts))
        reading.points.Begin(reading.net->m_arrPts);
    auto point = record_pool::New<CJOBXnetPt>();
    ReadPoint(reading, fields, *point);
    reading.points.Own(std::move(point));
}

// Tried from the top, first match wins. A units line counts as a point line. It is dropped unless a net 0 came before
// it.
constexpr Keyword<NetlistReading> kNetlistKeywords[] = {
    {netlist_format::kComment, OnIgnored},
    {netlist_format::kHeader, OnIgnored},
    {netlist_format::kNet, OnNet},
    {"", OnPoint},
};

void ReadLines(CLineScanner& text, CJOBXnetArray& nets)
{
    NetlistReading reading{nets, CFirstNets(nets)};
    while (text.NextLine())
        Dispatch<kNetlistKeywords>(reading, text.Line());
    reading.points.Finish();
}
} // namespace

int CJOBXnetlist::ParseODBOfMFC(CString path)
{
    return Guarded(
        [&]
        {
            CLineScanner text(path, __FILE__, __LINE__);
            ReadLines(text, m_arrNets);
            return text.WasRead() ? 1 : 0;
        });
}
