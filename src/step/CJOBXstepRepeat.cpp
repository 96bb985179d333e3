#include "step/CJOBXstepRepeat.h"

#include "foundation/CTextWriter.h"
#include "foundation/ScaleLengths.h"
#include "step/CJOBXstepRepeatFields.h"
#include "step/StephdrText.h"

template class CExPtrArray<CJOBXstepRepeat*, CJOBXstepRepeat*>;

namespace
{
void WriteEntry(CTextWriter& out, const CJOBXstepRepeat& entry)
{
    using namespace stephdr_text;
    const auto line = [&out](std::string_view key, const auto& value) { out << ' ' << key << '=' << value << '\n'; };
    out << kEntryWritten << '\n';
    line(kName, entry.m_sName);
    line(kX, General{entry.m_ptPosition.x});
    line(kY, General{entry.m_ptPosition.y});
    line(kDX, General{entry.m_ptPitch.x});
    line(kDY, General{entry.m_ptPitch.y});
    line(kNX, entry.m_ptCount.x);
    line(kNY, entry.m_ptCount.y);
    line(kAngle, General{entry.m_dAngle});
    line(kMirror, entry.m_sMirror);
    line(kFlip, entry.m_sFlip);
    out << kEntryEnd << '\n';
}
} // namespace

void WriteStepRepeats(CTextWriter& out, const CJOBXstepRepeatArray& entries)
{
    for (__int64 i = 0; i < entries.GetSize(); ++i)
        if (const CJOBXstepRepeat* const entry = entries.GetAt(i))
            WriteEntry(out, *entry);
}

CJOBXstepRepeat::CJOBXstepRepeat() = default;

CJOBXstepRepeat::~CJOBXstepRepeat() = default;

void CJOBXstepRepeat::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXstepRepeatArray::CJOBXstepRepeatArray() = default;

CJOBXstepRepeatArray::~CJOBXstepRepeatArray() = default;

void CJOBXstepRepeatArray::WriteODBData(std::FILE* file) const
{
    CTextWriter out(file);
    WriteStepRepeats(out, *this);
}

void CJOBXstepRepeatArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of what is converted
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXstepRepeat* const entry = GetAt(i))
            entry->UnitConvert(by);
}
