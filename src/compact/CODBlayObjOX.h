#pragma once

#include "compact/CCopyableArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

// One element of a contour of the compact model: its start ("OB"), a segment to a point ("OS"), an arc to a point
// ("OC"), or its end ("OE").
// Units:     points in the unit of the object that contains it.
// Ownership: owned by its array; copies are deep.
class JOBX_API CODBlayObjOX : public CRaisingNew
{
public:
    CODBlayObjOX() = default;
    CODBlayObjOX(const CODBlayObjOX&) = default;
    CODBlayObjOX& operator=(const CODBlayObjOX&) = default;
    virtual ~CODBlayObjOX();
    virtual CODBlayObjOX* clone() const; // the caller owns the copy

    // Multiplies both points by `factor`.
    void vRescale(double factor);

    int m_nLineNumber = 0;  // in the source file, counted from 1
    CString m_sClockwise;   // "Y" or "N"; of an arc
    CString m_sPolygonType; // "I" for an island, "H" for a hole; of a start
    CPointD m_ptCenter;     // of an arc
    CPointD m_ptPoint;      // the start, or the end of a segment or an arc
    CString m_sKind;
};

extern template class JOBX_API CExPtrArray<CODBlayObjOX*, CODBlayObjOX*>;

// The elements of one contour, in order; owns them.
class JOBX_API CODBlayObjOXArray : public CRescalableArray<CODBlayObjOX>
{
public:
    CODBlayObjOXArray* clone() const override; // the caller owns the copy
};
