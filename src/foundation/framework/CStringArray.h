#pragma once

#include "foundation/framework/CArray.h"
#include "foundation/framework/CString.h"

extern template class JOBX_API CArray<CString, const CString&>;

// The framework's list of texts; copies are deep.
class JOBX_API CStringArray : public CArray<CString, const CString&>
{
public:
    CStringArray();
    CStringArray(const CStringArray& other);
    CStringArray& operator=(const CStringArray& other);
    ~CStringArray() override;

    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;

    // The same size and equal texts at each index, case-sensitive.
    bool operator==(const CStringArray& other) const;
};
