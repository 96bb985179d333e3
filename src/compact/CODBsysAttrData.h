#pragma once

#include "compact/CCopyableArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"

// The definition of one system attribute in the compact model: its name and the texts of its options.
// Ownership: owned by its array; copies are deep.
class JOBX_API CODBsysAttrData : public CRaisingNew
{
public:
    CODBsysAttrData() = default;
    CODBsysAttrData(const CODBsysAttrData&) = default;
    CODBsysAttrData& operator=(const CODBsysAttrData&) = default;
    virtual ~CODBsysAttrData();
    virtual CODBsysAttrData* clone() const; // the caller owns the copy

    CStringArray m_arrOptions;
    CString m_sName;
};

extern template class JOBX_API CExPtrArray<CODBsysAttrData*, CODBsysAttrData*>;

// The system-attribute definitions of a job; owns them.
class JOBX_API CODBsysAttrDataArray : public CCopyableArray<CODBsysAttrData>
{
public:
    CODBsysAttrDataArray* clone() const override; // the caller owns the copy
};
