#pragma once

#include "components/CJOBXcmpTop.h"
#include "foundation/CExPtrArray.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/CPooledRecord.h"
#include "foundation/JobxExport.h"
#include "foundation/corekit/CLProperty.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One placed component: its package, place, names, properties, attributes and toeprints.
// Units:     lengths in the unit of the file it came from; the rotation in degrees as in the file.
// Ownership: owned by its array; owns its toeprints, properties and attributes; not copyable.
class JOBX_API CJOBXcmp : public CPooledRecord
{
public:
    CJOBXcmp();
    CJOBXcmp(const CJOBXcmp&) = delete;
    CJOBXcmp& operator=(const CJOBXcmp&) = delete;
    virtual ~CJOBXcmp();

    // Writes the component's lines to an open file. Of the attributes only the last one that has both numbers is
    // written, and the toeprints are written with the component's rotation; both are intended. A null file writes
    // nothing.
    void WriteODBData(std::FILE* file) const;

    // The value of the first property "ALT_SYMBOLS" that has one, else of the first property "PART_NAME" that has one,
    // else the part name.
    CString sGetPartName() const;
    // The first toeprint of that pin, null when there is none.
    CJOBXcmpTop* pGetODBcmpToeFromID(int pin) const;

    // Multiplies the location and those of the toeprints by `factor`.
    void UnitConvert(const double& factor);

    int m_nNumber = -1; // from the comment line that begins the component
    int m_nSide = -1;   // 0 marks a bottom component; set by the host only
    CJOBXcmpTopArray m_arrTops;
    CString m_sPartName;
    CString m_sName;   // the reference designator
    int m_nMirror = 0; // 1 mirrored, 0 not
    double m_dRotation = 0.0;
    CPointD m_ptLocation;
    int m_nPkgRef = -1;                 // position of the package among the EDA data's packages
    CLPropertyArray m_arrProperties;    // from the PRP lines
    CJOBXPropertyArray m_arrAttributes; // from what follows ";", on the component's line and on its toeprints'
};

extern template class JOBX_API CExPtrArray<CJOBXcmp*, CJOBXcmp*>;

// The components of one file; owns them.
class JOBX_API CJOBXcmpArray : public COwningPtrArray<CJOBXcmp>
{
public:
    CJOBXcmpArray();
    ~CJOBXcmpArray() override;

    // Converts every component.
    void UnitConvert(const double& factor);
};
