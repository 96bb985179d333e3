#include "eda/CJOBXnet.h"

#include "eda/CJOBXnetFields.h"
#include "eda/NetlistText.h"
#include "foundation/CTextWriter.h"
#include "foundation/ScaleLengths.h"
#include "foundation/corekit/CKUtility.h"

template class CExPtrArray<CJOBXnet*, CJOBXnet*>;

namespace
{
void WritePoint(CTextWriter& writer, const CJOBXnetPt& point, int net)
{
    CTextLine out(writer);
    out << net << ' ' << Fixed{point.m_dRadius} << ' ' << Fixed{point.m_ptPosition.x} << ' '
        << Fixed{point.m_ptPosition.y} << ' ' << point.m_sSide << ' ';
    if (point.m_dRadius == 0.0)
        out << Fixed{point.m_dWidth} << ' ' << Fixed{point.m_dHeight} << ' ';
    out << point.m_sEndPoint << ' ' << point.m_sExposure;
    // The mark itself is never written, other marks leave no trace: intended.
    if (point.m_sStaggeredMark == "staggered")
        out << ' ' << Fixed{point.m_ptStaggeredPosition.x} << ' ' << Fixed{point.m_ptStaggeredPosition.y} << ' '
            << Fixed{point.m_dStaggeredRadius};
    const CStringArray& flags = point.GetFlags();
    for (INT_PTR i = 0; i < flags.GetSize(); ++i)
        out << ' ' << flags.GetAt(i);
    out << '\n';
}
} // namespace

CJOBXnet::CJOBXnet() = default;

CJOBXnet::~CJOBXnet() = default;

void CJOBXnet::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXnetArray::CJOBXnetArray() = default;

CJOBXnetArray::~CJOBXnetArray() = default;

void CJOBXnetArray::WriteODBData(CString dir) const
{
    using namespace netlist_text;
    CTextWriter out(CKUtility::GetInstance()->CKPathCombine(dir, "netlist", __FILE__, __LINE__), __FILE__, __LINE__);
    out << kComment << "\nUNITS=" << m_sUnits << '\n' << kComment << '\n';
    for (__int64 i = 0; i < GetSize(); ++i)
        if (const CJOBXnet* const net = GetAt(i))
            CTextLine(out) << kNet << net->m_nNumber << ' ' << net->m_sName << '\n';
    out << kComment << '\n' << kComment << "Netlist points\n" << kComment << '\n';
    for (__int64 i = 0; i < GetSize(); ++i)
    {
        const CJOBXnet* const net = GetAt(i);
        if (net == nullptr)
            continue;
        for (__int64 k = 0; k < net->m_arrPts.GetSize(); ++k)
            if (const CJOBXnetPt* const point = net->m_arrPts.GetAt(k))
                WritePoint(out, *point, net->m_nNumber);
    }
}

void CJOBXnetArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of what is converted
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXnet* const net = GetAt(i))
            net->UnitConvert(by);
}
