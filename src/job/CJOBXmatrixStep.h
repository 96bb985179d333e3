#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One column of a job's matrix: a step. Not copyable.
class JOBX_API CJOBXmatrixStep : public CRaisingNew
{
public:
    CJOBXmatrixStep();
    CJOBXmatrixStep(const CJOBXmatrixStep&) = delete;
    CJOBXmatrixStep& operator=(const CJOBXmatrixStep&) = delete;
    virtual ~CJOBXmatrixStep();

    // The block with an empty line before it and no line end after its closing brace. A null file writes nothing.
    void WriteODBData(FILE* file) const;

    int m_nColumn = 0;
    CString m_sName; // as the file spells it; the step's folder may differ in letter case
};

extern template class JOBX_API CExPtrArray<CJOBXmatrixStep*, CJOBXmatrixStep*>;

// The steps of a matrix in file order; owns them. Null entries are passed over.
class JOBX_API CJOBXmatrixStepArray : public COwningPtrArray<CJOBXmatrixStep>
{
public:
    CJOBXmatrixStepArray();
    ~CJOBXmatrixStepArray() override;

    // Each step's block, each followed by a line end. A null file writes nothing.
    void WriteODBData(FILE* file) const;
    // Gives every step this name.
    void SetODBmatrixStepArrayName(const CString& name);
};
