#pragma once

#include "compact/CCopyableArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/corekit/CPointN.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

// One step-and-repeat entry of the compact model: another step, where it is placed and how often it is repeated.
// Units:     lengths in the unit of the header it came from; the angle in degrees, clockwise.
// Ownership: owned by its array; copies are deep.
class JOBX_API CODBstepRepeat : public CRaisingNew
{
public:
    CODBstepRepeat() = default;
    CODBstepRepeat(const CODBstepRepeat&) = default;
    CODBstepRepeat& operator=(const CODBstepRepeat&) = default;
    virtual ~CODBstepRepeat();
    virtual CODBstepRepeat* clone() const; // the caller owns the copy

    // Multiplies position and pitch by `factor`; count, angle and texts stay.
    void vRescale(double factor);

    CString m_sName; // of the placed step
    CPointD m_ptPosition;
    CPointD m_ptPitch; // between columns and between rows
    CPointN m_ptCount; // of columns and of rows
    double m_dAngle = 0.0;
    CString m_sMirror = "NO"; // or "YES"
    CString m_sFlip;
};

extern template class JOBX_API CExPtrArray<CODBstepRepeat*, CODBstepRepeat*>;

// The step-and-repeat table of one step; owns its entries.
class JOBX_API CODBstepRepeatArray : public CRescalableArray<CODBstepRepeat>
{
public:
    CODBstepRepeatArray* clone() const override;

    // The entries of this table as they stand in the step that `parent` places this step into: one copy of every entry
    // for each place of the parent, column by column, in each of them row by row, and there in table order. Null for a
    // null parent and when there is nothing to place: no entries, or a count of the parent below 1.
    // Each copy is turned with its pitch by the parent's angle about the datum, its counts of columns and rows
    // exchanged near a quarter turn either way, and moved to its place; its angle is the sum of both, not reduced. Its
    // mirror is "NO" when both are, else "YES": two mirrors do not cancel, which is intended; only a parent whose
    // mirror is the text "YSE" turns "YES" to "NO". The flip is the parent's.
    // Ownership: the caller owns the result.
    // Results:   raises CMemoryException, before anything is built, when the result would take more than 2 GB, and when
    //            memory is exhausted. This table and the parent never change.
    CODBstepRepeatArray* Add_Parent(const CODBstepRepeat* parent) const;
};
