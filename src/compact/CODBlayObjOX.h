#pragma once

#include "compact/CCopyableArray.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

// One element of a contour of the compact model: where the contour begins ("OB"), a straight segment to a point ("OS"),
// an arc to a point ("OC"), or the end ("OE").
// Units:     points in the unit of the part that it belongs to.
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

    int m_nLineNumber = 0;  // in the file it came from, counted from 1
    CString m_sClockwise;   // "Y" or "N", for an arc
    CString m_sPolygonType; // "I" for an island, "H" for a hole, for a begin
    CPointD m_ptCenter;     // of an arc
    CPointD m_ptPoint;      // the begin, or the end of a segment or an arc
    CString m_sKind;
};

extern template class JOBX_API CExPtrArray<CODBlayObjOX*, CODBlayObjOX*>;

// The elements of one contour, in order; owns them.
class JOBX_API CODBlayObjOXArray : public CRescalableArray<CODBlayObjOX>
{
public:
    CODBlayObjOXArray* clone() const override; // the caller owns the copy
};
