#pragma once

#include "components/CJOBXcmp.h"
#include "foundation/CExPtrArray.h"
#include "foundation/CJOBXunit.h"
#include "foundation/JobxExport.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"

// The components file of one component layer: its components and the tables that number the attributes' names and
// texts.
// Units:     lengths in the unit of the file; reading does not set the units text.
// Ownership: owned by its array; owns its components; not copyable.
// Results:   a malformed number reads as 0 and is kept; exhausted memory raises CMemoryException, the components that
//            were read before the last one stay whole.
class JOBX_API CJOBXcomponents : public CRaisingNew, public CJOBXmeasured
{
public:
    CJOBXcomponents();
    CJOBXcomponents(const CJOBXcomponents&) = delete;
    CJOBXcomponents& operator=(const CJOBXcomponents&) = delete;
    virtual ~CJOBXcomponents();

    // Reads the file at `path` and appends what it holds. Always 1, also when the file cannot be opened.
    int ParseODBOfMFC(CString path);
    // Writes the file "components" in the directory `dir`; nothing, when it cannot be opened.
    void WriteODBData(CString dir) const;

    // Reads a list "0=2,1" of attributes, as it stands after ";", and appends them to `component`, named by this
    // object's table. A null component takes nothing.
    void AddPropertyData(CString attributes, CJOBXcmp* component) const;
    // The first name (text) of that number in its table, "" when there is none.
    CString GetAttributeName(int number) const;
    CString GetAttributeText(int number) const;
    // Position of the first component whose side is 0; 0 when there is none.
    int nGetFirstBtmIndex() const;

    // Multiplies every location by `factor`; the units text stays.
    void UnitConvert(const double& factor);

    CJOBXcmpArray m_arrCmps;
    CStringArray m_arrAttributeNames;
    CArrayN m_arrAttributeNameNumbers; // in parallel to the names
    CStringArray m_arrAttributeTexts;
    CArrayN m_arrAttributeTextNumbers; // in parallel to the texts
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

    // Writes each element into the directory `dir`, in order; a later one replaces an earlier one's file.
    void WriteODBData(CString dir) const;
    // Converts every file.
    void UnitConvert(const double& factor);
};
