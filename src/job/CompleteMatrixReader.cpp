#include "job/CJOBXmatrix.h"
#include "job/MatrixFormat.h"
#include "job/MatrixReader.h"
#include "reading/CKeyLines.h"
#include "reading/MatrixMessageKinds.h"

#include <algorithm>
#include <map>
#include <memory>
#include <span>
#include <vector>

namespace
{
constexpr CKeyKinds kMatrixKinds{matrix_message::kNotNumber, matrix_message::kNotKey,    matrix_message::kUnknown,
                                 matrix_message::kTwice,     matrix_message::kNotClosed, matrix_message::kNotOpen};

constexpr CKey<CJOBXmatrix> kMatrixKeys[] = {
    {matrix_format::kID, nullptr},
};

constexpr CKey<CJOBXmatrixStep> kMatrixStepKeys[] = {
    {matrix_format::kColumn, StoreKey<&CJOBXmatrixStep::m_nColumn>},
    {matrix_format::kName, StoreKey<&CJOBXmatrixStep::m_sName>},
    {matrix_format::kID, StoreKeyAsID<CJOBXmatrixStep>},
};

constexpr CKey<CJOBXmatrixLayer> kMatrixLayerKeys[] = {
    {matrix_format::kRow, StoreKey<&CJOBXmatrixLayer::m_nRow>},
    {matrix_format::kContext, StoreKey<&CJOBXmatrixLayer::m_sContext>},
    {matrix_format::kType, StoreKey<&CJOBXmatrixLayer::m_sType>},
    {matrix_format::kName, StoreKey<&CJOBXmatrixLayer::m_sName>},
    {matrix_format::kPolarity, StoreKey<&CJOBXmatrixLayer::m_sPolarity>},
    {matrix_format::kStartName, StoreKey<&CJOBXmatrixLayer::m_sStartName>},
    {matrix_format::kEndName, StoreKey<&CJOBXmatrixLayer::m_sEndName>},
    {matrix_format::kOldName, StoreKey<&CJOBXmatrixLayer::m_sOldName>},
    {matrix_format::kAddType, StoreKey<&CJOBXmatrixLayer::m_sAddType>},
    {matrix_format::kColor, StoreKey<&CJOBXmatrixLayer::m_sColor>},
    {matrix_format::kID, StoreKeyAsID<CJOBXmatrixLayer>},
    {"DIELECTRIC_TYPE", nullptr},
    {"DIELECTRIC_NAME", nullptr},
    {"FORM", nullptr},
    {"CU_TOP", nullptr},
    {"CU_BOTTOM", nullptr},
    {"REF", nullptr},
};

constexpr std::string_view kContexts[] = {"BOARD", "MISC"};
constexpr std::string_view kPolarities[] = {"POSITIVE", "NEGATIVE"};
constexpr std::string_view kTypes[] = {"SIGNAL",       "POWER_GROUND",     "MIXED",     "DIELECTRIC", "SOLDER_MASK",
                                       "SOLDER_PASTE", "SILK_SCREEN",      "COMPONENT", "DRILL",      "ROUT",
                                       "MASK",         "CONDUCTIVE_PASTE", "DOCUMENT"};

class CCompleteMatrixReading
{
public:
    CCompleteMatrixReading(CSourceFile& file, CJOBXmatrix& matrix)
        : m_lines(file, kMatrixKinds), m_messages(file.Messages()), m_matrix(matrix)
    {
    }

    void Read()
    {
        m_lines.ReadBlocks(
            m_matrix, [this] { return Open(); }, [this] { Close(); }, [this] { Store(); });
        CheckSteps();
        CheckLayers();
    }

private:
    template <class T>
    struct Block
    {
        const T* record;
        int line; // where it begins
    };

    bool Open()
    {
        if (m_lines.Begins(matrix_format::kLayer))
        {
            m_layer = m_matrix.m_arrLayers.Own(std::make_unique<CJOBXmatrixLayer>());
            m_layer->SetSourceLine(m_lines.Line());
            m_layers.push_back({m_layer, m_lines.Line()});
        }
        else if (m_lines.Begins(matrix_format::kStep))
        {
            m_step = m_matrix.m_arrSteps.Own(std::make_unique<CJOBXmatrixStep>());
            m_step->SetSourceLine(m_lines.Line());
            m_steps.push_back({m_step, m_lines.Line()});
        }
        return m_layer != nullptr || m_step != nullptr;
    }

    void Close()
    {
        m_layer = nullptr;
        m_step = nullptr;
    }

    void Store()
    {
        if (m_layer != nullptr)
            m_lines.Store(kMatrixLayerKeys, *m_layer);
        else if (m_step != nullptr)
            m_lines.Store(kMatrixStepKeys, *m_step);
        else
            m_lines.Store(kMatrixKeys, m_matrix);
    }

    // `what` is "layer" or "step", `place` its "row" or "column".
    void CheckNameAndPlace(const char* what, const char* place, const CString& name, int number, int line,
                           CFirstNames& names, std::map<int, int>& numbers)
    {
        if (name.IsEmpty())
            m_messages.Say(matrix_message::kNoName, line, "The ", what, " has no name.");
        else if (const int before = names.LineBefore(name.View(), line); before != 0)
            m_messages.Say(matrix_message::kSameName, line, "The ", what, " ", Quoted{name.View()},
                           " has the name of the ", what, " on line ", before, ".");
        if (const auto [first, isNew] = numbers.try_emplace(number, line); !isNew && number > 0)
            m_messages.Say(matrix_message::kSameNumber, line, "The ", what, " ", Quoted{name.View()}, " has the ",
                           place, " of the one on line ", first->second, ".");
    }

    void CheckSteps()
    {
        CFirstNames names;
        std::map<int, int> columns;
        for (const auto& [step, line] : m_steps)
            CheckNameAndPlace("step", "column", step->m_sName, step->m_nColumn, line, names, columns);
    }

    void CheckLayers()
    {
        CFirstNames names;
        std::map<int, int> rows;
        for (const auto& [layer, line] : m_layers)
        {
            CheckNameAndPlace("layer", "row", layer->m_sName, layer->m_nRow, line, names, rows);
            CheckWord("context", layer->m_sContext, kContexts, line);
            CheckWord("type", layer->m_sType, kTypes, line);
            CheckWord("polarity", layer->m_sPolarity, kPolarities, line);
        }
        for (const auto& [layer, line] : m_layers)
            for (const CString* const end : {&layer->m_sStartName, &layer->m_sEndName})
                if (!end->IsEmpty() && names.LineBefore(end->View(), 0) == 0)
                    m_messages.Say(matrix_message::kNoSpanLayer, line, "The layer ", Quoted{end->View()},
                                   " at an end of the layer ", Quoted{layer->m_sName.View()}, " is not in the matrix.");
    }

    void CheckWord(const char* key, const CString& word, std::span<const std::string_view> words, int line)
    {
        const auto isWord = [&](std::string_view known) { return AsciiEqualNoCase(word.View(), known); };
        if (!word.IsEmpty() && std::none_of(words.begin(), words.end(), isWord))
            m_messages.Say(matrix_message::kUnknownWord, line, "The ", key, " ", Quoted{word.View()}, " is not known.");
    }

    CKeyLines m_lines;
    CFileMessages& m_messages;
    CJOBXmatrix& m_matrix;
    CJOBXmatrixStep* m_step = nullptr; // of the open block; at most one of the two is set
    CJOBXmatrixLayer* m_layer = nullptr;
    std::vector<Block<CJOBXmatrixStep>> m_steps; // of this file
    std::vector<Block<CJOBXmatrixLayer>> m_layers;
};
} // namespace

void ReadCompletely(const CReadingContext& /*context*/, CSourceFile& file, CJOBXmatrix& matrix)
{
    if (file.WasRead())
        CCompleteMatrixReading(file, matrix).Read();
}
