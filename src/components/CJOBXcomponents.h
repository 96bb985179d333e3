#pragma once

#include "components/CJOBXcmp.h"
#include "foundation/CJOBXattributeList.h"
#include "foundation/CJOBXfoldered.h"
#include "foundation/CJOBXunit.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "foundation/framework/JobxExport.h"

// The components file of one component layer: its components and the numbered tables of attribute names and texts.
// Units:     lengths in the unit of the file; reading does not set the units text.
// Ownership: owned by its array; owns its components; not copyable.
// Results:   a malformed number reads as 0 and is kept; exhausted memory raises CMemoryException and keeps the
//            components before the last one complete.
// It has the attribute list of its folder only if the folder has no features; else the layer has the list.
class JOBX_API CJOBXcomponents : public CRaisingNew, public CJOBXmeasured, public CJOBXattributed, public CJOBXfoldered
{
public:
    CJOBXcomponents();
    CJOBXcomponents(const CJOBXcomponents&) = delete;
    CJOBXcomponents& operator=(const CJOBXcomponents&) = delete;
    virtual ~CJOBXcomponents();

    // Reads the file at `path` and appends its contents. Always returns 1, even if the file cannot be opened.
    int ParseODBOfMFC(CString path);
    // Writes the file "components" in the directory `dir`; does nothing if it cannot be opened.
    void WriteODBData(CString dir) const;

    // Parses a list of attributes such as "0=2,1", the text after ";", and appends them to `component` with their names
    // from this object's table. Does nothing for a null component.
    void AddPropertyData(CString attributes, CJOBXcmp* component) const;
    // The first name (text) of that number in its table, "" if there is none.
    CString GetAttributeName(int number) const;
    CString GetAttributeText(int number) const;
    // Index of the first component whose side is 0; 0 if there is none.
    int nGetFirstBtmIndex() const;

    // Multiplies every location by `factor`; the units text does not change.
    void UnitConvert(const double& factor);

    CJOBXcmpArray m_arrCmps;
    CStringArray m_arrAttributeNames;
    CArrayN m_arrAttributeNameNumbers; // parallel to the names
    CStringArray m_arrAttributeTexts;
    CArrayN m_arrAttributeTextNumbers; // parallel to the texts
    CString m_sUnits = "INCH";         // or "MM"
    CString m_sLayerName;              // set by the step: the layer's directory
    CString m_sRelativePath;           // set by the step: the file below the step's layers
};

extern template class JOBX_API CExPtrArray<CJOBXcomponents*, CJOBXcomponents*>;

// The components files of one step; owns them.
class JOBX_API CJOBXcomponentsArray : public COwningPtrArray<CJOBXcomponents>
{
public:
    CJOBXcomponentsArray();
    ~CJOBXcomponentsArray() override;

    // Writes each element into the directory `dir`, in order; each one replaces the file of the one before.
    void WriteODBData(CString dir) const;
    // Converts every file.
    void UnitConvert(const double& factor);
};
