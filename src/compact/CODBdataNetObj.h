#pragma once

#include "compact/CCopyableArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

// One feature that belongs to a subnet of the compact model.
// Units:     none; indexes count from 0.
// Ownership: owned by its array; copies are deep.
class JOBX_API CODBdataNetObj : public CRaisingNew
{
public:
    CODBdataNetObj() = default;
    CODBdataNetObj(const CODBdataNetObj&) = default;
    CODBdataNetObj& operator=(const CODBdataNetObj&) = default;
    virtual ~CODBdataNetObj();
    virtual CODBdataNetObj* clone() const; // the caller owns the copy

    int m_nFeatureIndex = -1; // in the features of its layer
    int m_nLayerIndex = -1;   // in the layer names of the EDA data
    CString m_sKind;          // "C" copper, "L" laminate, "H" hole, or "FGR"
    CString m_sText;
    int m_nLineNumber = 0; // in the source file, counted from 1
};

extern template class JOBX_API CExPtrArray<CODBdataNetObj*, CODBdataNetObj*>;

// The features of a subnet; owns them.
class JOBX_API CODBdataNetObjArray : public CCopyableArray<CODBdataNetObj>
{
public:
    CODBdataNetObjArray* clone() const override; // the caller owns the copy
};
