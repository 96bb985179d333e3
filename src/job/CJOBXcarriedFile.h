#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

// A file of a job that no reader took, so nothing of it is in the model.
// Ownership: a plain value; not copyable.
class JOBX_API CJOBXcarriedFile : public CRaisingNew
{
public:
    CJOBXcarriedFile();
    CJOBXcarriedFile(const CJOBXcarriedFile&) = delete;
    CJOBXcarriedFile& operator=(const CJOBXcarriedFile&) = delete;
    virtual ~CJOBXcarriedFile();

    // The path below the job directory, with "/" between its parts.
    const CString& GetPath() const noexcept { return m_sPath; }
    void SetPath(const CString& path) { m_sPath = path; }
    // In bytes.
    ULONGLONG GetSize() const noexcept { return m_nSize; }
    void SetSize(ULONGLONG size) noexcept { m_nSize = size; }

private:
    CString m_sPath;
    ULONGLONG m_nSize = 0;
};

extern template class JOBX_API CExPtrArray<CJOBXcarriedFile*, CJOBXcarriedFile*>;

// The files of a job that no reader took, in the byte order of their paths; owns them.
class JOBX_API CJOBXcarriedFileArray : public COwningPtrArray<CJOBXcarriedFile>
{
public:
    CJOBXcarriedFileArray();
    ~CJOBXcarriedFileArray() override;
};
