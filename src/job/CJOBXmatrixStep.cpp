#include "job/CJOBXmatrixStep.h"

#include "job/MatrixFile.h"

template class CExPtrArray<CJOBXmatrixStep*, CJOBXmatrixStep*>;

using namespace matrix_file;

CJOBXmatrixStep::CJOBXmatrixStep() = default;

CJOBXmatrixStep::~CJOBXmatrixStep() = default;

void CJOBXmatrixStep::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    WriteBlock(out, *this);
}

CJOBXmatrixStepArray::CJOBXmatrixStepArray() = default;

CJOBXmatrixStepArray::~CJOBXmatrixStepArray() = default;

void CJOBXmatrixStepArray::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    WriteBlocks(out, *this);
}

void CJOBXmatrixStepArray::SetODBmatrixStepArrayName(const CString& name)
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXmatrixStep* const step = GetAt(i))
            step->m_sName = name;
}

void matrix_file::WriteBlock(CTextWriter& out, const CJOBXmatrixStep& step)
{
    out << '\n' << kStep << " {\n";
    WriteKey(out, kColumn, step.m_nColumn);
    WriteKey(out, kName, step.m_sName);
    out << '}';
}

void matrix_file::WriteBlocks(CTextWriter& out, const CJOBXmatrixStepArray& steps)
{
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        if (const CJOBXmatrixStep* const step = steps.GetAt(i))
        {
            WriteBlock(out, *step);
            out << '\n';
        }
}
