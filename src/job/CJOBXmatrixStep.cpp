#include "job/CJOBXmatrixStep.h"

template class CExPtrArray<CJOBXmatrixStep*, CJOBXmatrixStep*>;

CJOBXmatrixStep::CJOBXmatrixStep() = default;

CJOBXmatrixStep::~CJOBXmatrixStep() = default;

CJOBXmatrixStepArray::CJOBXmatrixStepArray() = default;

CJOBXmatrixStepArray::~CJOBXmatrixStepArray() = default;

void CJOBXmatrixStepArray::SetODBmatrixStepArrayName(const CString& name)
{
    for (CJOBXmatrixStep& step : Records())
        step.m_sName = name;
}
