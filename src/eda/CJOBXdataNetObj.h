#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/base/CJOBXrecord.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One feature that belongs to a subnet: an FID line, or an FGR line kept as text.
// Units:     none; indexes count from 0.
// Ownership: owned by its array; not copyable, but pGetSameODBdataNetObj makes a copy.
// Boards have more of these than of any other record. Each takes 40 bytes, and the common kinds allocate nothing else.
class JOBX_API CJOBXdataNetObj : public CJOBXrecord
{
public:
    CJOBXdataNetObj() = default;
    CJOBXdataNetObj(const CJOBXdataNetObj&) = delete;
    CJOBXdataNetObj& operator=(const CJOBXdataNetObj&) = delete;
    virtual ~CJOBXdataNetObj();

    // A copy of the indexes, the line number and the kind, but not of m_sText; this is intended. The caller owns it.
    CJOBXdataNetObj* pGetSameODBdataNetObj() const;
    // Writes "FID kind layer feature", even for an FGR line. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;

    int m_nFeatureIndex = -1; // in the features of its layer
    int m_nLayerIndex = -1;   // in the layer names of the EDA data
    CString m_sKind;          // "C" copper, "L" laminate, "H" hole, or any other text of an FID line; "FGR"
    // The rest of an FGR line. Complete reading keeps here what follows the first ";" of an FID line.
    CString m_sText;
    int m_nLineNumber = 0; // in the source file, counted from 1
};

extern template class JOBX_API CExPtrArray<CJOBXdataNetObj*, CJOBXdataNetObj*>;

// The features of a subnet in file order; owns them.
class JOBX_API CJOBXdataNetObjArray : public COwningPtrArray<CJOBXdataNetObj>
{
public:
    CJOBXdataNetObjArray() = default;
    ~CJOBXdataNetObjArray() override;

    // The number of features of the kind "H"; "h" is another kind.
    int nGetNumberOfHoles() const;
    // Writes one line per feature. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;
};
