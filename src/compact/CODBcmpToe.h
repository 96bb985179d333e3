#pragma once

#include "compact/CCopyableArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

// A toeprint of the compact model: the place where a pin of a placed component meets the board, and its net.
// Units:     lengths in the unit of the components part; the rotation in degrees.
// Ownership: owned by its component's list; copies are deep.
class JOBX_API CODBcmpToe : public CRaisingNew
{
public:
    CODBcmpToe() = default;
    CODBcmpToe(const CODBcmpToe&) = default;
    CODBcmpToe& operator=(const CODBcmpToe&) = default;
    virtual ~CODBcmpToe();
    virtual CODBcmpToe* clone() const; // the caller owns the copy

    // Multiplies the location by `factor`.
    void vRescale(double factor);

    CString m_sName;
    int m_nNet = -1;    // index into the EDA data's nets
    int m_nSubnet = -1; // index into that net's subnets
    int m_nMirror = 0;  // 1 if mirrored
    double m_dRotation = 0.0;
    CPointD m_ptLocation;
    int m_nPin = -1; // index into the pins of the component's package
};

extern template class JOBX_API CExPtrArray<CODBcmpToe*, CODBcmpToe*>;

// The toeprints of one component; owns them.
class JOBX_API CODBcmpToeArray : public CRescalableArray<CODBcmpToe>
{
public:
    CODBcmpToeArray* clone() const override; // the caller owns the copy
};
