#pragma once

#include "foundation/CJOBXsourced.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"

// A toeprint: the place where a pin of a placed component meets the board, and its net.
// Units:     lengths in the unit of its file; the rotation in degrees as in the file.
// Ownership: owned by its component's list; not copyable.
class JOBX_API CJOBXcmpTop : public CJOBXrecord, public CJOBXtailed, public CJOBXsourced
{
public:
    CJOBXcmpTop();
    CJOBXcmpTop(const CJOBXcmpTop&) = delete;
    CJOBXcmpTop& operator=(const CJOBXcmpTop&) = delete;
    virtual ~CJOBXcmpTop();

    // Multiplies the location by `factor`.
    void UnitConvert(const double& factor);

    CString m_sName;
    int m_nNet = -1;    // index into the EDA data's nets
    int m_nSubnet = -1; // index into that net's subnets
    int m_nMirror = 0;  // 1 if mirrored
    int m_nPin = -1;    // index into the pins of the component's package
    double m_dRotation = 0.0;
    CPointD m_ptLocation;
};

extern template class JOBX_API CExPtrArray<CJOBXcmpTop*, CJOBXcmpTop*>;

// The toeprints of one component; owns them.
class JOBX_API CJOBXcmpTopArray : public COwningPtrArray<CJOBXcmpTop>
{
public:
    CJOBXcmpTopArray();
    ~CJOBXcmpTopArray() override;

    // The first toeprint of that pin, null if there is none; and its index, -1 if there is none.
    CJOBXcmpTop* pGetCmpToeWithPinID(int pin) const;
    int nGetCmpPinIndexWithPinID(int pin) const;

    // Converts every toeprint.
    void UnitConvert(const double& factor);
};
