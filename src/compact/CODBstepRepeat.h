#pragma once

#include "compact/CCopyableArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/corekit/CPointN.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

// One step-and-repeat entry of the compact model: which step is placed where, and how often.
// Units:     lengths in the unit of the header; the angle in degrees, clockwise.
// Ownership: owned by its array; copies are deep.
class JOBX_API CODBstepRepeat : public CRaisingNew
{
public:
    CODBstepRepeat() = default;
    CODBstepRepeat(const CODBstepRepeat&) = default;
    CODBstepRepeat& operator=(const CODBstepRepeat&) = default;
    virtual ~CODBstepRepeat();
    virtual CODBstepRepeat* clone() const; // the caller owns the copy

    // Multiplies position and pitch by `factor`; count, angle and texts do not change.
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

    // The entries of this table as they appear in the step into which `parent` places this step: a copy of every entry
    // for each placement by the parent, column by column, then row by row, then in table order. Null if `parent` is
    // null or there is nothing to place: no entries, or a count of the parent below 1.
    // Each copy and its pitch are rotated about the datum by the parent's angle. Near a quarter turn either way, its
    // numbers of columns and rows are exchanged. Then it is moved to its place. Its angle is the sum of both angles,
    // not reduced. Its mirror is "NO" if both mirrors are "NO", else "YES". Two mirrors do not cancel out; this is
    // intended. Only a parent whose mirror is the text "YSE" turns "YES" to "NO". The flip is the parent's.
    // Ownership: the caller owns the result.
    // Results:   raises CMemoryException when memory is exhausted, and, before anything is built, if the result would
    //            take more than 2 GB. This table and the parent do not change.
    CODBstepRepeatArray* Add_Parent(const CODBstepRepeat* parent) const;
};
