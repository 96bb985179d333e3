#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CValueArray.h"
#include "foundation/framework/JobxExport.h"

extern template class JOBX_API CArray<int, int>;
extern template class JOBX_API CValueArray<int, int>;

// A list of 32-bit integers.
class JOBX_API CArrayN : public CValueArray<int, int>
{
public:
    CArrayN() = default;
    CArrayN(const CArrayN&) = default;
    CArrayN(CArrayN&&) noexcept = default;
    CArrayN& operator=(const CArrayN&) = default;
    CArrayN& operator=(CArrayN&&) noexcept = default;
    ~CArrayN() override;
    virtual CArrayN* clone() const; // the caller owns the copy
};

extern template class JOBX_API CExPtrArray<CArrayN*, CArrayN*>;
