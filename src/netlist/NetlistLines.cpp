#include "netlist/NetlistLines.h"

#include "foundation/CommonFields.h"
#include "netlist/CJOBXnetlist.h"
#include "netlist/NetlistFormat.h"
#include "saving/CAttributeTables.h"
#include "saving/COptionalFields.h"

#include <limits>
#include <queue>
#include <set>
#include <vector>

namespace
{
// The numbers that nets have in the file. Points refer to the first net of a number.
class CNetNumbers
{
public:
    explicit CNetNumbers(const CJOBXnetArray& nets)
    {
        for (const CJOBXnet& net : nets.Records())
            if (!HasNone(net))
                m_taken.insert(net.m_nNumber);
        const int largest = m_taken.empty() ? -1 : *m_taken.rbegin();
        m_free = largest >= 0 && largest < std::numeric_limits<int>::max() ? largest + 1 : 0;
    }

    // Asked once for each net, in their order.
    int Of(const CJOBXnet& net)
    {
        if (HasNone(net))
            return Free();
        const bool isFirst = m_used.insert(net.m_nNumber).second;
        return isFirst || net.m_arrPts.GetSize() == 0 ? net.m_nNumber : Free();
    }
    int OfNone() const
    {
        int number = -1;
        while (m_taken.contains(number))
            --number;
        return number;
    }

private:
    static bool HasNone(const CJOBXnet& net) { return net.m_nNumber < 0 && net.GetSourceLine() == 0; }
    int Free()
    {
        while (m_taken.contains(m_free))
            ++m_free;
        m_taken.insert(m_free);
        return m_free;
    }

    std::set<int> m_taken;
    std::set<int> m_used;
    int m_free = 0;
};

// The points of one net that are not listed yet.
struct LeftPoints
{
    const CJOBXnetPtArray* points;
    int net;
    __int64 next = 0;
    int line = 0; // of the first of them that has one

    explicit LeftPoints(const CJOBXnetPtArray& all, int number) : points(&all), net(number) { FindLine(); }
    bool IsEmpty() const { return next >= points->GetSize(); }
    int LineAt(__int64 index) const
    {
        const CJOBXnetPt* const point = points->GetAt(index);
        return point != nullptr ? point->GetSourceLine() : 0;
    }
    void FindLine()
    {
        __int64 at = next;
        while (at < points->GetSize() && LineAt(at) == 0)
            ++at;
        line = at < points->GetSize() ? LineAt(at) : std::numeric_limits<int>::max();
    }
};

class CNetlistLines
{
public:
    CNetlistLines(const CJOBXnetlist& netlist, const CMendedReferences& references, CRecordLines& lines)
        : m_netlist(netlist), m_references(references), m_lines(lines)
    {
    }

    void List()
    {
        ListHead();
        CNetNumbers numbers(m_netlist.m_arrNets);
        std::vector<LeftPoints> left;
        for (const CJOBXnet& net : m_netlist.m_arrNets.Records())
        {
            const int number = numbers.Of(net);
            ListNet(net, number);
            left.emplace_back(net.m_arrPts, number);
        }
        left.emplace_back(m_netlist.m_arrPts, numbers.OfNone());
        ListPoints(left);
    }

private:
    void ListHead()
    {
        const CString& optimize = m_netlist.GetOptimize();
        const CString& staggered = m_netlist.GetStaggered();
        if (!optimize.IsEmpty() || !staggered.IsEmpty())
        {
            m_lines.Begin(0, CRecordLines::kUnknownLine);
            m_lines.Word(netlist_format::kHeader);
        }
        if (!optimize.IsEmpty())
            m_lines.Word(netlist_format::kOptimize).Word(optimize.View());
        if (!staggered.IsEmpty())
            m_lines.Word(netlist_format::kStaggered).Word(staggered.View());
        m_lines.KeyValue(0, "UNITS", m_netlist.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH");
    }
    // A netlist has no attribute tables, so its attributes have numbers without names.
    void EndRecord(const CJOBXtailed& record)
    {
        GlueTail(m_noTables.TextOf(jobx::TailAttributes{}(record)), record.GetID(), m_lines);
    }
    void ListNet(const CJOBXnet& net, int number)
    {
        m_lines.Begin(0, net.GetSourceLine());
        m_lines.Word(netlist_format::kNet).GlueInteger(number);
        COptionalFields(m_lines).Text(net.m_sName.View());
        EndRecord(net);
    }

    // In the order of their lines, but never against that in their net.
    void ListPoints(std::vector<LeftPoints>& left)
    {
        using Key = std::pair<int, std::size_t>; // the line, and which of those left
        std::priority_queue<Key, std::vector<Key>, std::greater<>> queue;
        for (std::size_t i = 0; i < left.size(); ++i)
            if (!left[i].IsEmpty())
                queue.emplace(left[i].line, i);
        while (!queue.empty())
        {
            const std::size_t first = queue.top().second;
            queue.pop();
            ListNext(left[first]);
            if (!left[first].IsEmpty())
                queue.emplace(left[first].line, first);
        }
    }
    // The new ones before the next point with a line, that point, and the new ones behind it.
    void ListNext(LeftPoints& left)
    {
        while (!left.IsEmpty() && left.LineAt(left.next) == 0)
            ListPoint(left);
        if (!left.IsEmpty())
            ListPoint(left);
        while (!left.IsEmpty() && left.LineAt(left.next) == 0)
            ListPoint(left);
        left.FindLine();
    }
    void ListPoint(LeftPoints& left)
    {
        if (const CJOBXnetPt* const point = left.points->GetAt(left.next++))
        {
            const CMendedReferences::Numbers* const mended = m_references.Find(point);
            ListPoint(*point, mended != nullptr && !mended->isGone ? mended->values[0] : left.net);
        }
    }
    void ListPoint(const CJOBXnetPt& point, int net)
    {
        m_lines.Begin(0, point.GetSourceLine());
        m_lines.Integer(net).Real(point.m_dRadius).Real(point.m_ptPosition.x).Real(point.m_ptPosition.y);
        COptionalFields fields(m_lines);
        fields.Text(point.m_sSide.View());
        if (point.m_dRadius == 0.0)
            fields.Real(point.m_dWidth).Real(point.m_dHeight);
        fields.Text(point.m_sEndPoint.View()).Text(point.m_sExposure.View());
        if (!point.m_sStaggeredMark.IsEmpty())
            fields.Text(point.m_sStaggeredMark.View());
        if (point.m_sStaggeredMark.View() == netlist_format::kStaggered)
            fields.Point(point.m_ptStaggeredPosition).Real(point.m_dStaggeredRadius);
        const CStringArray& flags = point.GetFlags();
        for (INT_PTR i = 0; i < flags.GetSize(); ++i)
            fields.Text(flags[i].View());
        EndRecord(point);
    }

    const CJOBXnetlist& m_netlist;
    const CMendedReferences& m_references;
    CRecordLines& m_lines;
    const CAttributeTypes m_noTypes;
    const CArrayN m_noNumbers;
    const CStringArray m_noTexts;
    CAttributeTables m_noTables{m_noNumbers, m_noTexts, m_noNumbers, m_noTexts, m_noTypes};
};
} // namespace

void ListLines(const CJOBXnetlist& netlist, const CMendedReferences& references, CRecordLines& lines)
{
    CNetlistLines(netlist, references, lines).List();
}
