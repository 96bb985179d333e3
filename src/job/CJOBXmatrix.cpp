#include "job/CJOBXmatrix.h"

#include "foundation/KeywordTable.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/FreshDirectory.h"
#include "foundation/framework/Guarded.h"
#include "job/MatrixFile.h"

#include <memory>

using namespace matrix_file;

namespace
{
constexpr char kMatrix[] = "matrix"; // the folder and the file in it

// The block that was begun last; its closing brace does not end it.
struct State
{
    CJOBXmatrix& matrix;
    CJOBXmatrixStep* step = nullptr; // at most one of the two is set
    CJOBXmatrixLayer* layer = nullptr;
};

void BeginStep(State& state, std::string_view /*line*/)
{
    state.step = state.matrix.m_arrSteps.Own(std::make_unique<CJOBXmatrixStep>());
    state.layer = nullptr;
}

void BeginLayer(State& state, std::string_view /*line*/)
{
    state.layer = state.matrix.m_arrLayers.Own(std::make_unique<CJOBXmatrixLayer>());
    state.step = nullptr;
}

void TakeColumn(State& state, std::string_view line)
{
    state.step->m_nColumn = ParseInteger(KeyValue(line));
}

void TakeStepName(State& state, std::string_view line)
{
    state.step->m_sName = KeyValue(line);
}

void TakeRow(State& state, std::string_view line)
{
    state.layer->m_nRow = ParseInteger(KeyValue(line));
}

template <CString CJOBXmatrixLayer::*member>
void TakeLayerText(State& state, std::string_view line)
{
    state.layer->*member = KeyValue(line);
}

// Tried from the top, the first match wins. The order is behaviour: do not sort them. Keywords are beginnings, so
// "LAYER_X=1" begins a layer; a key that the open block does not have is dropped, and so is a closing brace.
constexpr Keyword<State> kOutside[] = {
    {kLayer, BeginLayer},
    {kStep, BeginStep},
};

constexpr Keyword<State> kInStep[] = {
    {kColumn, TakeColumn}, // "COLOR" too: it sets the column, intended
    {kLayer, BeginLayer},
    {kName, TakeStepName},
    {kStep, BeginStep},
};

constexpr Keyword<State> kInLayer[] = {
    {kAddType, TakeLayerText<&CJOBXmatrixLayer::m_sAddType>},
    {kContext, TakeLayerText<&CJOBXmatrixLayer::m_sContext>},
    {kColor, TakeLayerText<&CJOBXmatrixLayer::m_sColor>},
    {kEndName, TakeLayerText<&CJOBXmatrixLayer::m_sEndName>},
    {kLayer, BeginLayer},
    {kName, TakeLayerText<&CJOBXmatrixLayer::m_sName>},
    {kPolarity, TakeLayerText<&CJOBXmatrixLayer::m_sPolarity>},
    {kOldName, TakeLayerText<&CJOBXmatrixLayer::m_sOldName>},
    {kRow, TakeRow},
    {kStartName, TakeLayerText<&CJOBXmatrixLayer::m_sStartName>},
    {kStep, BeginStep},
    {kType, TakeLayerText<&CJOBXmatrixLayer::m_sType>},
};

void TakeLine(State& state, std::string_view line)
{
    if (state.layer != nullptr)
        Dispatch<kInLayer>(state, line);
    else if (state.step != nullptr)
        Dispatch<kInStep>(state, line);
    else
        Dispatch<kOutside>(state, line);
}

bool IsCopper(const CJOBXmatrixLayer* layer)
{
    return layer != nullptr &&
           ((layer->m_sContext == "BOARD" && layer->m_sType == "SIGNAL") || layer->m_sType == "POWER_GROUND");
}
} // namespace

CJOBXmatrix::CJOBXmatrix() = default;

CJOBXmatrix::~CJOBXmatrix() = default;

int CJOBXmatrix::ParseODBOfMFC(const CString& matrixDirectory)
{
    return Guarded(
        [&]
        {
            const CString path = CKUtility::GetInstance()->FindPath(matrixDirectory, kMatrix, __FILE__, __LINE__);
            CTextScanner text(path, __FILE__, __LINE__);
            State state{*this};
            while (text.NextLine())
                TakeLine(state, text.Line());
            return text.WasRead() ? 1 : 0;
        });
}

void CJOBXmatrix::WriteODBData(const CString& jobDirectory) const
{
    CKUtility& utility = *CKUtility::GetInstance();
    const CString directory = utility.CKPathCombine(jobDirectory, kMatrix, __FILE__, __LINE__);
    ReplaceDirectory(directory);
    CTextWriter out(utility.CKPathCombine(directory, kMatrix, __FILE__, __LINE__), __FILE__, __LINE__);
    WriteBlocks(out, m_arrSteps);
    WriteBlocks(out, m_arrLayers);
}

CString CJOBXmatrix::sGetMatrixLayerType(int index) const
{
    const CJOBXmatrixLayer* const layer = m_arrLayers[index];
    return layer != nullptr ? layer->m_sType : CString();
}

CString CJOBXmatrix::GetTopLayerName() const
{
    for (__int64 i = 0; i < m_arrLayers.GetSize(); ++i)
        if (const CJOBXmatrixLayer* const layer = m_arrLayers.GetAt(i); IsCopper(layer))
            return layer->m_sName;
    return {};
}

CString CJOBXmatrix::GetBottomLayerName() const
{
    for (__int64 i = m_arrLayers.GetLastIndex(); i >= 0; --i)
        if (const CJOBXmatrixLayer* const layer = m_arrLayers.GetAt(i); IsCopper(layer))
            return layer->m_sName;
    return {};
}

CJOBXmatrixLayer* CJOBXmatrix::pGetMatrixLayerFromName(CString& name) const
{
    name.MakeUpper();
    for (__int64 i = 0; i < m_arrLayers.GetSize(); ++i)
        if (CJOBXmatrixLayer* const layer = m_arrLayers.GetAt(i); layer != nullptr && layer->m_sName == name)
            return layer;
    return nullptr;
}

CJOBXmatrixLayer* CJOBXmatrix::GetMatrixLayerFromName(const CString& name) const
{
    return m_arrLayers.GetMatrixLayer(name);
}
