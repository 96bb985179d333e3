#pragma once

#include "compact/CODBnet.h"
#include "foundation/framework/CRaisingNew.h"

// The netlist of the compact model. A job's unit change leaves it alone; a host rescales it itself.
// Units:     lengths in the unit that the nets' units text names.
// Ownership: owned by its job, owns its nets and points; copies are deep.
class JOBX_API CODBnetlist : public CRaisingNew
{
public:
    CODBnetlist() = default;
    CODBnetlist(const CODBnetlist&) = default;
    CODBnetlist& operator=(const CODBnetlist&) = default;
    virtual ~CODBnetlist();
    virtual CODBnetlist* clone() const; // the caller owns the copy

    // Rescales the points of this object and those of every net.
    void vRescale(double factor);

    CODBnetPtArray m_arrPts; // points of no net
    CODBnetArray m_arrNets;
};
