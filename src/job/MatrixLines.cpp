#include "job/MatrixLines.h"

#include "job/CJOBXmatrix.h"
#include "job/MatrixFormat.h"
#include "saving/KeyedLines.h"

namespace
{
constexpr CSavedKey<CJOBXmatrixStep> kSavedStepKeys[] = {
    {matrix_format::kColumn, ListKey<&CJOBXmatrixStep::m_nColumn>},
    {matrix_format::kID, ListKeyOfID<CJOBXmatrixStep>},
    {matrix_format::kName, ListKey<&CJOBXmatrixStep::m_sName>},
};

constexpr CSavedKey<CJOBXmatrixLayer> kSavedLayerKeys[] = {
    {matrix_format::kRow, ListKey<&CJOBXmatrixLayer::m_nRow>},
    {matrix_format::kContext, ListKey<&CJOBXmatrixLayer::m_sContext>},
    {matrix_format::kType, ListKey<&CJOBXmatrixLayer::m_sType>},
    {matrix_format::kID, ListKeyOfID<CJOBXmatrixLayer>},
    {matrix_format::kName, ListKey<&CJOBXmatrixLayer::m_sName>},
    {matrix_format::kPolarity, ListKey<&CJOBXmatrixLayer::m_sPolarity>},
    {matrix_format::kStartName, ListKey<&CJOBXmatrixLayer::m_sStartName>},
    {matrix_format::kEndName, ListKey<&CJOBXmatrixLayer::m_sEndName>},
    {matrix_format::kOldName, ListKey<&CJOBXmatrixLayer::m_sOldName>},
    {matrix_format::kAddType, ListKey<&CJOBXmatrixLayer::m_sAddType>},
    {matrix_format::kColor, ListKey<&CJOBXmatrixLayer::m_sColor>},
};
} // namespace

void ListLines(const CJOBXmatrix& matrix, CRecordLines& lines)
{
    ListFurtherKeysAndBlocks(matrix, lines);
    for (const CJOBXmatrixStep& step : matrix.m_arrSteps.Records())
        ListBlock(matrix_format::kStep, kSavedStepKeys, step, lines);
    for (const CJOBXmatrixLayer& layer : matrix.m_arrLayers.Records())
        ListBlock(matrix_format::kLayer, kSavedLayerKeys, layer, lines);
}
