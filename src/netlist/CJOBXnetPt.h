#pragma once

#include "foundation/CJOBXsourced.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "foundation/framework/JobxExport.h"

#include <memory>

// One test point of a net.
// Units:     lengths in the unit of its file.
// Ownership: owned by its array; not copyable.
class JOBX_API CJOBXnetPt : public CJOBXrecord, public CJOBXtailed, public CJOBXsourced
{
public:
    CJOBXnetPt();
    CJOBXnetPt(const CJOBXnetPt&) = delete;
    CJOBXnetPt& operator=(const CJOBXnetPt&) = delete;
    virtual ~CJOBXnetPt();

    // All other words of the point's line, in order; few points have any.
    const CStringArray& GetFlags() const;
    // Append one of them, or remove all.
    void AddFlag(const CString& flag);
    void RemoveAllFlags();
    // Shares the flags of `other` without copying them.
    void ShareFlags(const CJOBXnetPt& other);

    // Multiplies every length by `factor` except the staggered radius; this is intended.
    void UnitConvert(const double& factor);

    CString m_sSide;          // top, bottom, both or inner
    CString m_sStaggeredMark; // "staggered" for a staggered point
    double m_dStaggeredRadius = 0.0;
    CString m_sExposure;
    CString m_sEndPoint;
    double m_dHeight = 0.0; // of a point that is not round
    double m_dWidth = 0.0;  // of a point that is not round
    CPointD m_ptPosition;
    CPointD m_ptStaggeredPosition;
    double m_dRadius = 0.0; // 0 for a point that is not round, which has width and height

private:
    // Null if there are none, because points come by the hundred thousand. Several points may share a list until one of
    // them changes its own.
    std::shared_ptr<CStringArray> m_pFlags;
};

extern template class JOBX_API CExPtrArray<CJOBXnetPt*, CJOBXnetPt*>;

// The points of one net; owns them.
class JOBX_API CJOBXnetPtArray : public COwningPtrArray<CJOBXnetPt>
{
public:
    CJOBXnetPtArray();
    ~CJOBXnetPtArray() override;

    // Converts every point.
    void UnitConvert(const double& factor);
};
