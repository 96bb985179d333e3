#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "foundation/framework/JobxExport.h"

class CJOBXdata;

// The EDA directory of a step.
// Ownership: owns its data object, made by the constructor and never null; not copyable.
class JOBX_API CJOBXeda : public CRaisingNew
{
public:
    CJOBXeda();
    CJOBXeda(const CJOBXeda&) = delete;
    CJOBXeda& operator=(const CJOBXeda&) = delete;
    virtual ~CJOBXeda();

    // Reads the file "data" in the directory `edaDirectory`, ignoring the case of its name, with
    // CJOBXdata::ParseODBOfMFC. Returns 0 if the directory does not exist or the file cannot be opened.
    int ParseODBOfMFC(CString edaDirectory);

    // The records of the file "shortf", which lists intended shorts: each as its line, without comments. Filled by
    // complete reading only.
    CStringArray& GetShorts() { return m_arrShorts; }
    const CStringArray& GetShorts() const { return m_arrShorts; }

    CJOBXdata* const m_pData;

private:
    CStringArray m_arrShorts;
};
