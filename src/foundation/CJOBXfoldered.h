#pragma once

#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"

// A part of a job that has a folder of its own. Saving a job finds the files of the part by it, whatever its name is by
// then.
class JOBX_API CJOBXfoldered
{
public:
    CJOBXfoldered(const CJOBXfoldered&) = delete;
    CJOBXfoldered& operator=(const CJOBXfoldered&) = delete;

    // The folder from which complete reading made the part, below the job and with "/" between the parts, such as
    // "steps/pcb/layers/top"; "" for one that was not read completely, or made by a host.
    const CString& GetSourceFolder() const noexcept { return m_sSourceFolder; }
    void SetSourceFolder(const CString& folder) { m_sSourceFolder = folder; }

protected:
    CJOBXfoldered() = default;
    ~CJOBXfoldered() = default;

private:
    CString m_sSourceFolder;
};
