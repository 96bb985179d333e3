#pragma once

#include "components/CJOBXcmpTop.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXsourced.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/corekit/CLProperty.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"

#include <cstdio>

// One placed component: its package, place, names, properties, attributes and toeprints.
// Units:     lengths in the unit of its file; the rotation in degrees as in the file.
// Ownership: owned by its array; owns its toeprints, properties and attributes; not copyable.
class JOBX_API CJOBXcmp : public CJOBXrecord, public CJOBXtailed, public CJOBXsourced
{
public:
    CJOBXcmp();
    CJOBXcmp(const CJOBXcmp&) = delete;
    CJOBXcmp& operator=(const CJOBXcmp&) = delete;
    virtual ~CJOBXcmp();

    // Writes the component's lines to an open file. Only the last attribute with both numbers is written, and the
    // toeprints are written with the component's rotation; both are intended. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;

    // The first non-empty value of a property "ALT_SYMBOLS", else of a property "PART_NAME", else the part name.
    CString sGetPartName() const;
    // The first toeprint of that pin, null if there is none.
    CJOBXcmpTop* pGetODBcmpToeFromID(int pin) const;

    // The line of its file on which it stands, counted from 1; 0 after classic reading.
    int GetLine() const { return GetSourceLine(); }
    void SetLine(int line) { SetSourceLine(line); }
    // Multiplies its location and those of its toeprints by `factor`.
    void UnitConvert(const double& factor);

    int m_nNumber = -1; // from the comment line above the component
    int m_nSide = -1;   // 0 for a bottom component; only the host sets it
    int m_nMirror = 0;  // 1 if mirrored
    int m_nPkgRef = -1; // index into the EDA data's packages
    CJOBXcmpTopArray m_arrTops;
    CString m_sPartName;
    CString m_sName; // the reference designator
    double m_dRotation = 0.0;
    CPointD m_ptLocation;
    CLPropertyArray m_arrProperties; // from PRP lines
    CJOBXPropertyArray
        m_arrAttributes; // from the text after ";" on its line; in classic reading also on those of its toeprints
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
