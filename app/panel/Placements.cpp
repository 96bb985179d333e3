#include "panel/Placements.h"

#include "output/ExitError.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace
{
// The step-and-repeat tables of a job by step name.
class RepeatTables
{
public:
    explicit RepeatTables(const CJOBX& job)
    {
        for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
            m_steps.try_emplace(MakeLower(step.m_sName), &step);
    }
    // Null if the job has no such step.
    const CJOBXstepObj* Find(const CString& name) const
    {
        const auto found = m_steps.find(MakeLower(name));
        return found == m_steps.end() ? nullptr : found->second;
    }

private:
    std::unordered_map<CString, const CJOBXstepObj*> m_steps;
};

const CJOBXstepRepeatArray& TableOf(const CJOBXstepObj& step)
{
    return step.GetHeader()->m_arrStepRepeats;
}

[[noreturn]] void RaiseCycle(const CJOBXstepObj& step, const CJOBXstepObj& through)
{
    const std::string name = Printable(step.m_sName.View());
    throw ExitError(ExitCode::UnreadableInput,
                    &step == &through ? fmt::format("step \"{}\" repeats itself", name)
                                      : fmt::format("step \"{}\" repeats itself: step \"{}\" in it repeats it again",
                                                    name, Printable(through.m_sName.View())));
}

// The number of placements in a step on all levels. Anything above the limit counts as the limit plus one.
class PlacementCounter
{
public:
    explicit PlacementCounter(const RepeatTables& tables) : m_tables(tables) {}

    // A step that repeats itself raises ExitError.
    std::int64_t Count(const CJOBXstepObj& root)
    {
        m_open.push_back({&root});
        m_isOpen.insert(&root);
        while (!m_open.empty())
        {
            OpenStep& top = m_open.back();
            if (top.next == TableOf(*top.step).GetSize())
                Close();
            else if (const CJOBXstepRepeat* const entry = TableOf(*top.step).GetAt(top.next); !Enter(entry))
            {
                if (entry != nullptr)
                    Add(top, *entry);
                ++top.next;
            }
        }
        return m_totals.at(&root);
    }

private:
    struct OpenStep
    {
        const CJOBXstepObj* step;
        __int64 next = 0;
        std::int64_t total = 0;
    };

    // Enters the step placed by `entry`, unless its total is known or the job does not have it.
    bool Enter(const CJOBXstepRepeat* entry)
    {
        const CJOBXstepObj* const child = entry == nullptr ? nullptr : m_tables.Find(entry->m_sName);
        if (child == nullptr || m_totals.contains(child))
            return false;
        if (!m_isOpen.insert(child).second)
            RaiseCycle(*child, *m_open.back().step);
        m_open.push_back({child});
        return true;
    }
    void Add(OpenStep& to, const CJOBXstepRepeat& entry) const
    {
        if (entry.m_ptCount.x < 1 || entry.m_ptCount.y < 1)
            return;
        const CJOBXstepObj* const child = m_tables.Find(entry.m_sName);
        const std::int64_t each = 1 + (child == nullptr ? 0 : m_totals.at(child));
        const std::int64_t copies = static_cast<std::int64_t>(entry.m_ptCount.x) * entry.m_ptCount.y;
        to.total = copies > (kMaxPlacements - to.total) / each ? kMaxPlacements + 1 : to.total + copies * each;
    }
    void Close()
    {
        m_totals[m_open.back().step] = m_open.back().total;
        m_isOpen.erase(m_open.back().step);
        m_open.pop_back();
    }

    const RepeatTables& m_tables;
    std::vector<OpenStep> m_open;
    std::unordered_set<const CJOBXstepObj*> m_isOpen;
    std::unordered_map<const CJOBXstepObj*, std::int64_t> m_totals;
};

// The table with a separate entry for each placement, so that a parent of any angle rotates each placement exactly. The
// mirror keeps the text of the file.
std::unique_ptr<CODBstepRepeatArray> SinglePlaces(const CJOBXstepObj& step, const ShownUnit& unit)
{
    const auto length = [&](double number) { return unit.Length(number, *step.GetHeader()); };
    auto places = std::make_unique<CODBstepRepeatArray>();
    for (const CJOBXstepRepeat& entry : TableOf(step).Records())
    {
        for (int i = 0; i < entry.m_ptCount.x; ++i)
            for (int j = 0; j < entry.m_ptCount.y; ++j)
            {
                CODBstepRepeat& place = *places->Own(std::make_unique<CODBstepRepeat>());
                place.m_sName = entry.m_sName;
                place.m_ptPosition.SetData(length(entry.m_ptPosition.x + i * entry.m_ptPitch.x),
                                           length(entry.m_ptPosition.y + j * entry.m_ptPitch.y));
                place.m_ptCount.SetData(1, 1);
                place.m_dAngle = entry.m_dAngle;
                place.m_sMirror = entry.m_sMirror;
                place.m_sFlip = entry.m_sFlip;
            }
    }
    return places;
}

// Places a step's table depth first: everything inside a placement comes before the next one.
class Placer
{
public:
    Placer(const RepeatTables& tables, const ShownUnit& unit) : m_tables(tables), m_unit(unit) {}

    Placements Place(const CJOBXstepObj& root)
    {
        Open(std::unique_ptr<CODBstepRepeatArray>(PlacesOf(root).clone()), -1);
        while (!m_open.empty())
        {
            OpenTable& top = m_open.back();
            if (top.next == top.places->GetSize())
                m_open.pop_back();
            else
                PlaceNext(top);
        }
        return std::exchange(m_result, {});
    }

private:
    struct OpenTable
    {
        std::unique_ptr<CODBstepRepeatArray> places;
        std::int64_t parent;
        __int64 next = 0;
    };

    void Open(std::unique_ptr<CODBstepRepeatArray> places, std::int64_t parent)
    {
        if (places != nullptr)
            m_open.push_back({std::move(places), parent});
    }
    void PlaceNext(OpenTable& table)
    {
        std::unique_ptr<CODBstepRepeat> entry(table.places->GetAt(table.next));
        table.places->SetAt(table.next++, nullptr);
        const CODBstepRepeat& placed = *entry;
        const auto index = static_cast<std::int64_t>(m_result.all.size());
        m_result.all.push_back({std::move(entry), static_cast<int>(m_open.size()), table.parent});
        if (const CJOBXstepObj* const child = m_tables.Find(placed.m_sName))
            Open(std::unique_ptr<CODBstepRepeatArray>(PlacesOf(*child).Add_Parent(&placed)), index);
        else
            m_result.unknownSteps.insert(placed.m_sName);
    }
    const CODBstepRepeatArray& PlacesOf(const CJOBXstepObj& step)
    {
        std::unique_ptr<CODBstepRepeatArray>& places = m_places[&step];
        if (places == nullptr)
            places = SinglePlaces(step, m_unit);
        return *places;
    }

    const RepeatTables& m_tables;
    ShownUnit m_unit;
    std::unordered_map<const CJOBXstepObj*, std::unique_ptr<CODBstepRepeatArray>> m_places;
    std::vector<OpenTable> m_open;
    Placements m_result;
};
} // namespace

struct PlacementFinder::Parts
{
    Parts(const CJOBX& job, const ShownUnit& unit) : tables(job), counter(tables), placer(tables, unit) {}

    RepeatTables tables;
    PlacementCounter counter;
    Placer placer;
};

PlacementFinder::PlacementFinder(const CJOBX& job, const ShownUnit& unit) : m_pParts(std::make_unique<Parts>(job, unit))
{
}

PlacementFinder::~PlacementFinder() = default;

Placements PlacementFinder::Find(const CJOBXstepObj& step, std::int64_t room)
{
    if (m_pParts->counter.Count(step) > room)
        throw ExitError(ExitCode::UnreadableInput, fmt::format("more than {} placements, counted up to step \"{}\"",
                                                               kMaxPlacements, Printable(step.m_sName.View())));
    return m_pParts->placer.Place(step);
}
