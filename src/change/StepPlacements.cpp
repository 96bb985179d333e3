#include "change/StepPlacements.h"

#include "foundation/framework/AsciiText.h"
#include "job/CJOBX.h"
#include "job/CJOBXsteps.h"
#include "step/CJOBXstepObj.h"
#include "step/CJOBXstephdr.h"

#include <algorithm>
#include <string_view>

namespace
{
constexpr int kMostPlacements = 100000;

class CPlacementSearch
{
public:
    CPlacementSearch(const CJOBX& job, const CJOBXstepObj& root)
        : m_job(job), m_unit(root.GetHeader()->GetUnit()), m_open{{&root, {}}}
    {
    }

    CStepPlacements Find()
    {
        while (!m_open.empty() && m_found.refusal.empty())
            Advance();
        if (!m_found.refusal.empty())
            m_found.all.clear();
        return std::move(m_found);
    }

private:
    // A step whose table is being placed, and how far.
    struct OpenStep
    {
        const CJOBXstepObj* step;
        CPlacement placement;
        __int64 entry = 0;
        int column = 0;
        int row = 0;
    };

    void Advance()
    {
        OpenStep& top = m_open.back();
        const CJOBXstepRepeatArray& table = top.step->GetHeader()->m_arrStepRepeats;
        if (top.entry >= table.GetSize())
            return m_open.pop_back();
        const CJOBXstepRepeat* const entry = table.GetAt(top.entry);
        if (entry == nullptr || entry->m_ptCount.y < 1 || top.column >= entry->m_ptCount.x)
        {
            ++top.entry;
            top.column = 0;
            top.row = 0;
            return;
        }
        const int column = top.column;
        const int row = top.row++;
        if (top.row == entry->m_ptCount.y)
        {
            top.row = 0;
            ++top.column;
        }
        Place(*entry, column, row);
    }

    void Place(const CJOBXstepRepeat& entry, int column, int row)
    {
        const CJOBXstepObj* const child = FindStep(m_job, entry.m_sName.View());
        if (child == nullptr)
            return Refuse("step \"", Text(entry.m_sName), "\" is repeated but not in the job");
        if (std::any_of(m_open.begin(), m_open.end(), [&](const OpenStep& each) { return each.step == child; }))
            return Refuse("step \"", Text(child->m_sName), "\" repeats itself");
        if (++m_count > kMostPlacements)
            return Refuse("it has more than ", std::to_string(kMostPlacements), " placements");
        const CPlacement placement = PlacementOf(entry, column, row, *child).In(m_open.back().placement);
        m_found.all.push_back({child, placement, m_count});
        m_open.push_back({child, placement});
    }

    // In the step that has the entry. The place is where the child's datum goes.
    CPlacement PlacementOf(const CJOBXstepRepeat& entry, int column, int row, const CJOBXstepObj& child) const
    {
        CPlacement placement;
        placement.pose.angle = NormalisedAngle(entry.m_dAngle);
        placement.pose.isMirrored = AsciiEqualNoCase(entry.m_sMirror.View(), "YES");
        placement.isFlipped = AsciiEqualNoCase(entry.m_sFlip.View(), "YES");
        const CPointD place(entry.m_ptPosition.GetX() + column * entry.m_ptPitch.GetX(),
                            entry.m_ptPosition.GetY() + row * entry.m_ptPitch.GetY());
        const CPointD at = InRootUnit(place, *m_open.back().step);
        const CPointD datum = placement.pose.Of(InRootUnit(child.GetHeader()->m_ptDatum, child));
        placement.shift = {at.GetX() - datum.GetX(), at.GetY() - datum.GetY()};
        return placement;
    }
    CPointD InRootUnit(const CPointD& point, const CJOBXstepObj& step) const
    {
        return step.GetHeader()->GetUnit() == m_unit ? point : ConvertedPoint(point, m_unit);
    }

    static std::string Text(const CString& name) { return std::string(name.View()); }
    void Refuse(std::string_view begin, std::string_view name, std::string_view end)
    {
        m_found.refusal = begin;
        m_found.refusal.append(name).append(end);
    }

    const CJOBX& m_job;
    JOBXunit m_unit; // of the root's header
    std::vector<OpenStep> m_open;
    int m_count = 0;
    CStepPlacements m_found;
};
} // namespace

CJOBXstepObj* FindStep(const CJOBX& job, std::string_view name)
{
    const CJOBXstepObjArray& steps = job.m_pSteps->m_arrSteps;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        if (CJOBXstepObj* const step = steps.GetAt(i); step != nullptr && AsciiEqualNoCase(step->m_sName.View(), name))
            return step;
    return nullptr;
}

CStepPlacements FindPlacements(const CJOBX& job, const CJOBXstepObj& root)
{
    return CPlacementSearch(job, root).Find();
}
