#pragma once

#include "compact/CODBdataNet.h"
#include "compact/CODBdataPkg.h"
#include "foundation/framework/CRaisingNew.h"

// The EDA data part of the compact model: the nets with the features they are made of, and the packages.
// Units:     lengths in the unit that the units text names; a unit change multiplies those of the packages and never
//            rewrites the text. Nets have none that change.
// Ownership: owned by its job, owns everything below it; copies are deep.
class JOBX_API CODBdata : public CRaisingNew
{
public:
    CODBdata() = default;
    CODBdata(const CODBdata&) = default;
    CODBdata& operator=(const CODBdata&) = default;
    virtual ~CODBdata();
    virtual CODBdata* clone() const; // the caller owns the copy

    // Rescales every package; the factor member stays.
    void vRescale(double factor);

    CString m_sHeader;
    CStringArray m_arrLayerNames; // net objects count in it
    CODBdataNetArray m_arrNets;
    CODBdataPkgArray m_arrPkgs;
    CJOBXPropertyArray m_arrProperties;
    CString m_sUnits = "INCH";     // or "MM" or "MIL"
    double m_dRescaleFactor = 1.0; // the last one computed
    CStringArray m_arrAttributeNames;
    CStringArray m_arrAttributeTexts;
};
