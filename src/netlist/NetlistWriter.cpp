#include "foundation/CTextWriter.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/FreshDirectory.h"
#include "netlist/CJOBXnetlist.h"
#include "netlist/NetlistFormat.h"

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
    // The mark itself is never written, and other marks are lost; this is intended.
    if (point.m_sStaggeredMark == "staggered")
        out << ' ' << Fixed{point.m_ptStaggeredPosition.x} << ' ' << Fixed{point.m_ptStaggeredPosition.y} << ' '
            << Fixed{point.m_dStaggeredRadius};
    const CStringArray& flags = point.GetFlags();
    for (INT_PTR i = 0; i < flags.GetSize(); ++i)
        out << ' ' << flags.GetAt(i);
    out << '\n';
}
} // namespace

void CJOBXnetArray::WriteODBData(CString dir) const
{
    CTextWriter out(CKUtility::GetInstance()->CKPathCombine(dir, netlist_format::kNetlist, __FILE__, __LINE__),
                    __FILE__, __LINE__);
    out << netlist_format::kComment << "\nUNITS=" << m_sUnits << '\n' << netlist_format::kComment << '\n';
    for (const CJOBXnet& net : Records())
        CTextLine(out) << netlist_format::kNet << net.m_nNumber << ' ' << net.m_sName << '\n';
    out << netlist_format::kComment << '\n'
        << netlist_format::kComment << "Netlist points\n"
        << netlist_format::kComment << '\n';
    for (const CJOBXnet& net : Records())
    {
        for (const CJOBXnetPt& point : net.m_arrPts.Records())
            WritePoint(out, point, net.m_nNumber);
    }
}

void CJOBXnetlist::WriteODBData(CString stepDir) const
{
    const CKUtility* const files = CKUtility::GetInstance();
    const CString netlists = files->CKPathCombine(stepDir, netlist_format::kFolders, __FILE__, __LINE__);
    const CString cadnet = files->CKPathCombine(netlists, netlist_format::kFolder, __FILE__, __LINE__);
    ReplaceDirectory(netlists);
    ReplaceDirectory(cadnet);
    m_arrNets.WriteODBData(cadnet);
}
