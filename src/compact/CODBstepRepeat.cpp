#include "compact/CODBstepRepeat.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

#include <algorithm>
#include <cmath>
#include <utility>

template class CExPtrArray<CODBstepRepeat*, CODBstepRepeat*>;

namespace
{
// The memory that one entry and its place in an array take. A result above 2 GB is refused as if memory were exhausted.
constexpr __int64 kEntryBytes = sizeof(CODBstepRepeat) + sizeof(CODBstepRepeat*);
constexpr __int64 kMaxEntries = (__int64{1} << 31) / kEntryBytes;

// Whether columns and rows are exchanged. The bounds themselves are excluded.
bool IsNearQuarterTurn(double angle)
{
    const double turn = std::abs(angle);
    return (turn > 89.9 && turn < 90.1) || (turn > 269.9 && turn < 270.1);
}

// The number of entries in the result. A product above the limit is never computed.
__int64 FlattenedCount(const CPointN& count, __int64 entries)
{
    if (count.GetX() < 1 || count.GetY() < 1 || entries == 0)
        return 0;
    const __int64 copies = static_cast<__int64>(count.GetX()) * count.GetY();
    if (copies > kMaxEntries / entries)
        AfxThrowMemoryException();
    return copies * entries;
}

// "YSE" is intended: hosts rely on getting "YES" from two "YES" mirrors.
CString FlattenedMirror(const CString& parent, const CString& child)
{
    if (parent == "NO" && child == "NO")
        return "NO";
    return parent == "YSE" && child == "YES" ? "NO" : "YES";
}

// Sets what all copies of the entry have in common.
void PlaceUnder(const CODBstepRepeat& parent, CODBstepRepeat& entry)
{
    if (parent.m_dAngle != 0.0)
    {
        entry.m_ptPosition.Rotate(-parent.m_dAngle);
        entry.m_ptPitch.Rotate(-parent.m_dAngle);
        if (IsNearQuarterTurn(parent.m_dAngle))
            std::swap(entry.m_ptCount.x, entry.m_ptCount.y);
    }
    entry.m_ptPosition.SetData(parent.m_ptPosition.GetX() + entry.m_ptPosition.GetX(),
                               parent.m_ptPosition.GetY() + entry.m_ptPosition.GetY());
    entry.m_dAngle += parent.m_dAngle;
    entry.m_sMirror = FlattenedMirror(parent.m_sMirror, entry.m_sMirror);
    entry.m_sFlip = parent.m_sFlip;
}
} // namespace

CODBstepRepeat::~CODBstepRepeat() = default;

CODBstepRepeat* CODBstepRepeat::clone() const
{
    return NewCopy(*this);
}

void CODBstepRepeat::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBstepRepeatArray* CODBstepRepeatArray::clone() const
{
    return NewCopy(*this);
}

CODBstepRepeatArray* CODBstepRepeatArray::Add_Parent(const CODBstepRepeat* parent) const
{
    if (parent == nullptr)
        return nullptr;
    const __int64 missing = std::count(GetData(), GetData() + GetSize(), nullptr);
    const __int64 total = FlattenedCount(parent->m_ptCount, GetSize() - missing);
    if (total == 0)
        return nullptr;
    CODBstepRepeatArray placed(*this);
    for (__int64 k = 0; k < placed.GetSize(); ++k)
        PlaceUnder(*parent, *placed.GetAt(k));

    auto result = MakeNew<CODBstepRepeatArray>();
    result->SetSize(total);
    __int64 next = 0;
    for (int i = 0; i < parent->m_ptCount.GetX(); ++i)
        for (int j = 0; j < parent->m_ptCount.GetY(); ++j)
            for (__int64 k = 0; k < placed.GetSize(); ++k)
            {
                CODBstepRepeat* const copy = placed.GetAt(k)->clone();
                result->SetAt(next++, copy);
                copy->m_ptPosition.SetData(copy->m_ptPosition.GetX() + i * parent->m_ptPitch.GetX(),
                                           copy->m_ptPosition.GetY() + j * parent->m_ptPitch.GetY());
            }
    return result.release();
}
