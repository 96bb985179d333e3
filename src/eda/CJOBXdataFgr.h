#pragma once

#include "eda/CJOBXdataNetObj.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

// A feature group: features that belong together but to no net, such as the texts of a component. Complete reading makes
// them of the FGR records behind the packages; classic reading makes none.
// Ownership: owned by its array, owns its features and properties; not copyable.
class JOBX_API CJOBXdataFgr : public CRaisingNew, public CJOBXtailed
{
public:
    CJOBXdataFgr() = default;
    CJOBXdataFgr(const CJOBXdataFgr&) = delete;
    CJOBXdataFgr& operator=(const CJOBXdataFgr&) = delete;
    virtual ~CJOBXdataFgr();

    CString m_sKind;                    // "TEXT", "COORD", or as in the file
    CJOBXdataNetObjArray m_arrNetObjs;  // its features
    CJOBXPropertyArray m_arrProperties; // from PRP lines
    int m_nLineNumber = 0;              // in the file it came from, counted from 1
};

extern template class JOBX_API CExPtrArray<CJOBXdataFgr*, CJOBXdataFgr*>;

// The feature groups of a step in file order; owns them.
class JOBX_API CJOBXdataFgrArray : public COwningPtrArray<CJOBXdataFgr>
{
public:
    CJOBXdataFgrArray() = default;
    ~CJOBXdataFgrArray() override;
};
