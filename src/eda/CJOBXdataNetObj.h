#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/CPooledRecord.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One feature that belongs to a subnet: an FID line, or an FGR line kept as text.
// Units:     none; indexes count from 0.
// Ownership: owned by its array; not copyable, pGetSameODBdataNetObj makes a copy.
// A board has more of these than of anything else: 40 bytes, and the usual kinds need no memory of their own.
class JOBX_API CJOBXdataNetObj : public CPooledRecord
{
public:
    CJOBXdataNetObj() = default;
    CJOBXdataNetObj(const CJOBXdataNetObj&) = delete;
    CJOBXdataNetObj& operator=(const CJOBXdataNetObj&) = delete;
    virtual ~CJOBXdataNetObj();

    // A copy of the indexes, the line number and the kind; the second text is left out, which is intended. The caller
    // owns it.
    CJOBXdataNetObj* pGetSameODBdataNetObj() const;
    // "FID kind layer feature", for an FGR line too. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;

    int m_nFeatureIndex = -1; // in the features of its layer
    int m_nLayerIndex = -1;   // in the layer names of the EDA data
    CString m_sKind;          // of an FID line: "C" copper, "L" laminate, "H" hole, or whatever stood there; "FGR"
    CString m_sText;          // the rest of an FGR line
    int m_nLineNumber = 0;    // in the file it came from, counted from 1
};

extern template class JOBX_API CExPtrArray<CJOBXdataNetObj*, CJOBXdataNetObj*>;

// The features of a subnet in file order; owns them.
class JOBX_API CJOBXdataNetObjArray : public COwningPtrArray<CJOBXdataNetObj>
{
public:
    CJOBXdataNetObjArray() = default;
    ~CJOBXdataNetObjArray() override;

    // How many are of the kind "H"; "h" is another kind.
    int nGetNumberOfHoles() const;
    // One line for each. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;
};
