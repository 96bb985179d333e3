#pragma once

#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"

#include <memory>

class CJOBXPropertyArray;

// An object read from lines of the form "KEY=VALUE". Keys that have no member of their own are kept here with their
// values, in the order of the file. Complete reading fills it; classic reading leaves it empty.
// Ownership: owns the keys; copies are deep.
// Memory:    one pointer.
class JOBX_API CJOBXkeyed
{
public:
    // The keys as names and values, borrowed; null if there are none.
    const CJOBXPropertyArray* pGetFurtherKeys() const noexcept { return m_pFurtherKeys.get(); }
    // The list for changes, borrowed; made if there is none.
    CJOBXPropertyArray* pMakeFurtherKeys();
    // The value of the first of these keys with that name, ignoring letter case; "" if there is none.
    CString sGetFurtherValue(const CString& key) const;

protected:
    CJOBXkeyed();
    CJOBXkeyed(const CJOBXkeyed& other);
    CJOBXkeyed& operator=(const CJOBXkeyed& other);
    ~CJOBXkeyed();

private:
    std::unique_ptr<CJOBXPropertyArray> m_pFurtherKeys;
};
