#include "job/CJOBXmatrixStep.h"

template class CExPtrArray<CJOBXmatrixStep*, CJOBXmatrixStep*>;

CJOBXmatrixStep::CJOBXmatrixStep() = default;

CJOBXmatrixStep::~CJOBXmatrixStep() = default;

CJOBXmatrixStepArray::CJOBXmatrixStepArray() = default;

CJOBXmatrixStepArray::~CJOBXmatrixStepArray() = default;

void CJOBXmatrixStepArray::SetODBmatrixStepArrayName(const CString& name)
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXmatrixStep* const step = GetAt(i))
            step->m_sName = name;
}
