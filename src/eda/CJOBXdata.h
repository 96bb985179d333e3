#pragma once

#include "eda/CJOBXdataNet.h"
#include "eda/CJOBXdataPkg.h"
#include "foundation/CJOBXunit.h"
#include "foundation/framework/CRaisingNew.h"

// The EDA data of a step: its nets with the features they are made of, and its packages.
// Units:     lengths in the unit of the file, whatever the units text says; the reader takes no unit from the file.
// Ownership: owns everything below it; not copyable.
// Results:   readers return 1, or 0 for a file that cannot be opened; a malformed number reads as 0 and is kept. A
//            record without anything open to belong to is ignored. Exhausted memory raises CMemoryException.
class JOBX_API CJOBXdata : public CRaisingNew, public CJOBXmeasured
{
public:
    CJOBXdata() = default;
    CJOBXdata(const CJOBXdata&) = delete;
    CJOBXdata& operator=(const CJOBXdata&) = delete;
    virtual ~CJOBXdata();

    // Reads the data file at `path` and appends what it finds: reading twice doubles every record. Fills the header,
    // the layer names, the nets and the packages; the other members stay.
    int ParseODBOfMFC(CString path);
    // Makes or replaces the file "data" in the directory `dir`; a file that cannot be opened is skipped.
    void WriteODBData(CString dir) const;
    // Multiplies the lengths of every package by `factor`; nets have none that change, and the units text stays.
    void UnitConvert(const double& factor);

    // The position of a layer name; 0 also when it is not there, which is intended.
    int GetLayerIndex(CString name) const;
    // The position of an attribute name or text; -1 when it is not there.
    int FindAttributeNameIndex(CString name) const;
    int FindAttributeContentIndex(CString text) const;

    CString m_sHeader;
    CStringArray m_arrLayerNames; // in file order; net objects count in it
    CJOBXdataNetArray m_arrNets;
    CJOBXdataPkgArray m_arrPkgs;
    CJOBXPropertyArray m_arrProperties;
    CString m_sUnits = "INCH"; // or "MM"; written, never read
    CStringArray m_arrAttributeNames;
    CStringArray m_arrAttributeTexts;
};
