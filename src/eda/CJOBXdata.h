#pragma once

#include "eda/CJOBXdataFgr.h"
#include "eda/CJOBXdataNet.h"
#include "eda/CJOBXdataPkg.h"
#include "foundation/CJOBXunit.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CRaisingNew.h"

// The EDA data of a step: its nets with their features, and its packages.
// Units:     lengths in the unit of the file, whatever the units text says; the reader does not set the units text.
// Ownership: owns everything below it; not copyable.
// Results:   readers return 1, or 0 for a file that cannot be opened; a malformed number reads as 0 and is kept. A
//            record that has no open record to go to is ignored. Exhausted memory raises CMemoryException.
class JOBX_API CJOBXdata : public CRaisingNew, public CJOBXmeasured
{
public:
    CJOBXdata() = default;
    CJOBXdata(const CJOBXdata&) = delete;
    CJOBXdata& operator=(const CJOBXdata&) = delete;
    virtual ~CJOBXdata();

    // Reads the data file at `path` and appends its contents: reading twice doubles every record. Fills the header, the
    // layer names, the nets and the packages; other members do not change.
    int ParseODBOfMFC(CString path);
    // Makes or replaces the file "data" in the directory `dir`; does nothing if it cannot be opened.
    void WriteODBData(CString dir) const;
    // Multiplies the lengths of every package by `factor`. Nets and the units text do not change.
    void UnitConvert(const double& factor);

    // The index of a layer name, 0 also if there is none; this is intended.
    int GetLayerIndex(CString name) const;
    // The index of an attribute name or text, -1 if there is none.
    int FindAttributeNameIndex(CString name) const;
    int FindAttributeContentIndex(CString text) const;

    CString m_sHeader;
    CStringArray m_arrLayerNames; // in file order; CJOBXdataNetObj::m_nLayerIndex indexes this list
    CJOBXdataNetArray m_arrNets;
    CJOBXdataPkgArray m_arrPkgs;
    CJOBXPropertyArray m_arrProperties;
    CString m_sUnits = "INCH"; // or "MM"; written, never read
    // Set by hosts or by complete reading.
    CStringArray m_arrAttributeNames;
    CStringArray m_arrAttributeTexts;

    // These are filled by complete reading only. All are borrowed.
    CJOBXdataFgrArray* GetFeatureGroups() { return &m_arrFeatureGroups; }
    const CJOBXdataFgrArray* GetFeatureGroups() const { return &m_arrFeatureGroups; }
    // The numbers of the attribute names and texts, in parallel to them.
    CArrayN* GetAttributeNameNumbers() { return &m_arrAttributeNameNumbers; }
    const CArrayN* GetAttributeNameNumbers() const { return &m_arrAttributeNameNumbers; }
    CArrayN* GetAttributeTextNumbers() { return &m_arrAttributeTextNumbers; }
    const CArrayN* GetAttributeTextNumbers() const { return &m_arrAttributeTextNumbers; }

private:
    CJOBXdataFgrArray m_arrFeatureGroups;
    CArrayN m_arrAttributeNameNumbers;
    CArrayN m_arrAttributeTextNumbers;
};
