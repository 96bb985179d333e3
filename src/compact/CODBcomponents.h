#pragma once

#include "compact/CODBcmp.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CStringArray.h"

// The components part of the compact model: the components and the numbered tables of attribute names and texts.
// Units:     lengths in the unit named by the units text; a unit change multiplies them but keeps the text.
// Ownership: owned by its job, owns its components; copies are deep.
class JOBX_API CODBcomponents : public CRaisingNew
{
public:
    CODBcomponents() = default;
    CODBcomponents(const CODBcomponents&) = default;
    CODBcomponents& operator=(const CODBcomponents&) = default;
    virtual ~CODBcomponents();
    virtual CODBcomponents* clone() const; // the caller owns the copy

    // Rescales every component; m_dRescaleFactor does not change.
    void vRescale(double factor);

    CODBcmpArray m_arrCmps;
    CStringArray m_arrAttributeNames;
    CArrayN m_arrAttributeNameNumbers; // parallel to the names
    CStringArray m_arrAttributeTexts;
    CArrayN m_arrAttributeTextNumbers; // parallel to the texts
    CString m_sUnits = "INCH";         // or "MM" or "MIL"
    double m_dRescaleFactor = 1.0;     // last computed
    CString m_sLayerName;
    CString m_sRelativePath;
};
