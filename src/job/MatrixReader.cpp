#include "foundation/KeywordTable.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBXmatrix.h"
#include "job/MatrixFormat.h"

#include <memory>

namespace
{
// The last block begun. Its closing brace does not end it.
struct MatrixReading
{
    CJOBXmatrix& matrix;
    CJOBXmatrixStep* step = nullptr; // at most one of the two is set
    CJOBXmatrixLayer* layer = nullptr;
};

void OnStep(MatrixReading& reading, std::string_view /*line*/)
{
    reading.step = reading.matrix.m_arrSteps.Own(std::make_unique<CJOBXmatrixStep>());
    reading.layer = nullptr;
}

void OnLayer(MatrixReading& reading, std::string_view /*line*/)
{
    reading.layer = reading.matrix.m_arrLayers.Own(std::make_unique<CJOBXmatrixLayer>());
    reading.step = nullptr;
}

void OnColumn(MatrixReading& reading, std::string_view line)
{
    reading.step->m_nColumn = ParseInteger(KeyValue(line));
}

void OnStepName(MatrixReading& reading, std::string_view line)
{
    reading.step->m_sName = KeyValue(line);
}

void OnRow(MatrixReading& reading, std::string_view line)
{
    reading.layer->m_nRow = ParseInteger(KeyValue(line));
}

template <CString CJOBXmatrixLayer::*member>
void OnLayerText(MatrixReading& reading, std::string_view line)
{
    reading.layer->*member = KeyValue(line);
}

// Tried from the top, first match wins. The order is behaviour: do not sort them. Keywords match as prefixes, so
// "LAYER_X=1" begins a layer. Keys that the open block does not have are dropped, as are closing braces.
constexpr Keyword<MatrixReading> kOutside[] = {
    {matrix_format::kLayer, OnLayer},
    {matrix_format::kStep, OnStep},
};

constexpr Keyword<MatrixReading> kInStep[] = {
    {matrix_format::kColumn, OnColumn}, // "COLOR" too sets the column; intended
    {matrix_format::kLayer, OnLayer},
    {matrix_format::kName, OnStepName},
    {matrix_format::kStep, OnStep},
};

constexpr Keyword<MatrixReading> kInLayer[] = {
    {matrix_format::kAddType, OnLayerText<&CJOBXmatrixLayer::m_sAddType>},
    {matrix_format::kContext, OnLayerText<&CJOBXmatrixLayer::m_sContext>},
    {matrix_format::kColor, OnLayerText<&CJOBXmatrixLayer::m_sColor>},
    {matrix_format::kEndName, OnLayerText<&CJOBXmatrixLayer::m_sEndName>},
    {matrix_format::kLayer, OnLayer},
    {matrix_format::kName, OnLayerText<&CJOBXmatrixLayer::m_sName>},
    {matrix_format::kPolarity, OnLayerText<&CJOBXmatrixLayer::m_sPolarity>},
    {matrix_format::kOldName, OnLayerText<&CJOBXmatrixLayer::m_sOldName>},
    {matrix_format::kRow, OnRow},
    {matrix_format::kStartName, OnLayerText<&CJOBXmatrixLayer::m_sStartName>},
    {matrix_format::kStep, OnStep},
    {matrix_format::kType, OnLayerText<&CJOBXmatrixLayer::m_sType>},
};

void OnLine(MatrixReading& reading, std::string_view line)
{
    if (reading.layer != nullptr)
        Dispatch<kInLayer>(reading, line);
    else if (reading.step != nullptr)
        Dispatch<kInStep>(reading, line);
    else
        Dispatch<kOutside>(reading, line);
}

void ReadLines(CLineScanner& text, CJOBXmatrix& matrix)
{
    MatrixReading reading{matrix};
    while (text.NextLine())
        OnLine(reading, text.Line());
}
} // namespace

int CJOBXmatrix::ParseODBOfMFC(const CString& matrixDirectory)
{
    return Guarded(
        [&]
        {
            const CString path =
                CKUtility::GetInstance()->FindPath(matrixDirectory, matrix_format::kMatrix, __FILE__, __LINE__);
            CLineScanner text(path, __FILE__, __LINE__);
            ReadLines(text, *this);
            return text.WasRead() ? 1 : 0;
        });
}
