#pragma once

#include "compact/CODBnet.h"
#include "foundation/framework/CRaisingNew.h"

// The netlist of the compact model. CODB::vChangeUnit does not change it; the host calls vRescale.
// Units:     lengths in the unit named by the units text of the nets.
// Ownership: owned by its job, owns its nets and points; copies are deep.
class JOBX_API CODBnetlist : public CRaisingNew
{
public:
    CODBnetlist() = default;
    CODBnetlist(const CODBnetlist&) = default;
    CODBnetlist& operator=(const CODBnetlist&) = default;
    virtual ~CODBnetlist();
    virtual CODBnetlist* clone() const; // the caller owns the copy

    // Rescales m_arrPts and the points of every net.
    void vRescale(double factor);

    CODBnetPtArray m_arrPts; // points without a net
    CODBnetArray m_arrNets;
};
