#pragma once

#include "compact/CODBdataNet.h"
#include "compact/CODBdataPkg.h"
#include "foundation/framework/CRaisingNew.h"

// The EDA data of the compact model: the nets with their features, and the packages.
// Units:     lengths in the unit named by the units text; a unit change multiplies those of the packages but keeps the
//            text and the nets.
// Ownership: owned by its job, owns everything below it; copies are deep.
class JOBX_API CODBdata : public CRaisingNew
{
public:
    CODBdata() = default;
    CODBdata(const CODBdata&) = default;
    CODBdata& operator=(const CODBdata&) = default;
    virtual ~CODBdata();
    virtual CODBdata* clone() const; // the caller owns the copy

    // Rescales every package; m_dRescaleFactor does not change.
    void vRescale(double factor);

    CString m_sHeader;
    CStringArray m_arrLayerNames; // CODBdataNetObj::m_nLayerIndex indexes this list
    CODBdataNetArray m_arrNets;
    CODBdataPkgArray m_arrPkgs;
    CJOBXPropertyArray m_arrProperties;
    CString m_sUnits = "INCH";     // or "MM" or "MIL"
    double m_dRescaleFactor = 1.0; // last computed
    CStringArray m_arrAttributeNames;
    CStringArray m_arrAttributeTexts;
};
