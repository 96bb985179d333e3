#include "netlist/CJOBXnetPt.h"

#include "foundation/ScaleLengths.h"
#include "foundation/framework/Guarded.h"
#include "netlist/CJOBXnetPtFields.h"

#include <atomic>

template class CExPtrArray<CJOBXnetPt*, CJOBXnetPt*>;

CJOBXnetPt::CJOBXnetPt() = default;

CJOBXnetPt::~CJOBXnetPt() = default;

const CStringArray& CJOBXnetPt::GetFlags() const
{
    static const CStringArray kNone;
    return m_pFlags != nullptr ? *m_pFlags : kNone;
}

void CJOBXnetPt::AddFlag(const CString& flag)
{
    if (m_pFlags.use_count() > 1)
    {
        auto own = Guarded([this] { return std::make_shared<CStringArray>(*m_pFlags); });
        own->Add(flag); // `flag` may be in the shared list: add it before releasing that list
        m_pFlags = std::move(own);
        return;
    }
    std::atomic_thread_fence(std::memory_order_acquire); // pairs with the release by another thread that gave up the
                                                         // list
    if (m_pFlags == nullptr)
        m_pFlags = Guarded([] { return std::make_shared<CStringArray>(); });
    m_pFlags->Add(flag);
}

void CJOBXnetPt::ShareFlags(const CJOBXnetPt& other)
{
    m_pFlags = other.m_pFlags;
}

void CJOBXnetPt::RemoveAllFlags()
{
    m_pFlags.reset();
}

void CJOBXnetPt::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXnetPtArray::CJOBXnetPtArray() = default;

CJOBXnetPtArray::~CJOBXnetPtArray() = default;

void CJOBXnetPtArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXnetPt& point : Records())
        point.UnitConvert(by);
}
