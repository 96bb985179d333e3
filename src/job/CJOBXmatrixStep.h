#pragma once

#include "foundation/CJOBXidentified.h"
#include "foundation/CJOBXkeyed.h"
#include "foundation/CJOBXsourced.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One column of a job's matrix: a step. Not copyable.
class JOBX_API CJOBXmatrixStep : public CRaisingNew, public CJOBXkeyed, public CJOBXidentified, public CJOBXsourced
{
public:
    CJOBXmatrixStep();
    CJOBXmatrixStep(const CJOBXmatrixStep&) = delete;
    CJOBXmatrixStep& operator=(const CJOBXmatrixStep&) = delete;
    virtual ~CJOBXmatrixStep();

    // Writes an empty line and the block, without a line end after its closing brace. Does nothing for a null file.
    void WriteODBData(FILE* file) const;

    int m_nColumn = 0;
    CString m_sName; // as in the matrix file; the case of the step's folder may differ
};

extern template class JOBX_API CExPtrArray<CJOBXmatrixStep*, CJOBXmatrixStep*>;

// The steps of a matrix in file order; owns them. Null entries are skipped.
class JOBX_API CJOBXmatrixStepArray : public COwningPtrArray<CJOBXmatrixStep>
{
public:
    CJOBXmatrixStepArray();
    ~CJOBXmatrixStepArray() override;

    // Writes each step's block, followed by a line end. Does nothing for a null file.
    void WriteODBData(FILE* file) const;
    // Sets the name of every step.
    void SetODBmatrixStepArrayName(const CString& name);
};
