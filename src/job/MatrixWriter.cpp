#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/FreshDirectory.h"
#include "job/CJOBXmatrix.h"
#include "job/MatrixFormat.h"

namespace
{
template <class Value>
void WriteKey(CTextWriter& out, const char* key, const Value& value)
{
    out << "    " << key << '=' << value << '\n';
}
} // namespace

void CJOBXmatrix::WriteODBData(const CString& jobDirectory) const
{
    CKUtility& utility = *CKUtility::GetInstance();
    const CString directory = utility.CKPathCombine(jobDirectory, matrix_format::kMatrix, __FILE__, __LINE__);
    ReplaceDirectory(directory);
    CTextWriter out(utility.CKPathCombine(directory, matrix_format::kMatrix, __FILE__, __LINE__), __FILE__, __LINE__);
    matrix_format::WriteBlocks(out, m_arrSteps);
    matrix_format::WriteBlocks(out, m_arrLayers);
}

void CJOBXmatrixLayer::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    matrix_format::WriteBlock(out, *this);
}

void CJOBXmatrixLayerArray::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    matrix_format::WriteBlocks(out, *this);
}

void matrix_format::WriteBlock(CTextWriter& out, const CJOBXmatrixLayer& layer)
{
    out << '\n' << matrix_format::kLayer << " {\n";
    WriteKey(out, matrix_format::kRow, layer.m_nRow);
    WriteKey(out, matrix_format::kContext, layer.m_sContext);
    WriteKey(out, matrix_format::kType, layer.m_sType);
    WriteKey(out, matrix_format::kName, layer.m_sName);
    WriteKey(out, matrix_format::kPolarity, layer.m_sPolarity);
    WriteKey(out, matrix_format::kStartName, layer.m_sStartName);
    WriteKey(out, matrix_format::kEndName, layer.m_sEndName);
    WriteKey(out, matrix_format::kOldName, layer.m_sOldName);
    WriteKey(out, matrix_format::kAddType, layer.m_sAddType);
    WriteKey(out, matrix_format::kColor, layer.m_sColor);
    out << '}';
}

void matrix_format::WriteBlocks(CTextWriter& out, const CJOBXmatrixLayerArray& layers)
{
    for (const CJOBXmatrixLayer& layer : layers.Records())
    {
        matrix_format::WriteBlock(out, layer);
        out << '\n';
    }
}

void CJOBXmatrixStep::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    matrix_format::WriteBlock(out, *this);
}

void CJOBXmatrixStepArray::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    matrix_format::WriteBlocks(out, *this);
}

void matrix_format::WriteBlock(CTextWriter& out, const CJOBXmatrixStep& step)
{
    out << '\n' << matrix_format::kStep << " {\n";
    WriteKey(out, matrix_format::kColumn, step.m_nColumn);
    WriteKey(out, matrix_format::kName, step.m_sName);
    out << '}';
}

void matrix_format::WriteBlocks(CTextWriter& out, const CJOBXmatrixStepArray& steps)
{
    for (const CJOBXmatrixStep& step : steps.Records())
    {
        matrix_format::WriteBlock(out, step);
        out << '\n';
    }
}
