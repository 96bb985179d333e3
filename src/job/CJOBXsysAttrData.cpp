#include "job/CJOBXsysAttrData.h"

#include "foundation/CTextScanner.h"
#include "foundation/corekit/TextTools.h"
#include "foundation/framework/Guarded.h"

#include <memory>
#include <utility>

template class CExPtrArray<CJOBXsysAttrData*, CJOBXsysAttrData*>;

namespace
{
constexpr int kValueToken = 2;    // of a line of keyword, equals sign and value
constexpr int kMostOptions = 100; // of one options line

struct State
{
    CJOBXsysAttrDataArray& definitions;
    std::unique_ptr<CJOBXsysAttrData> open; // kept when it is closed
};

void Begin(State& state, const CStringArray& /*tokens*/)
{
    state.open = std::make_unique<CJOBXsysAttrData>();
}

void End(State& state, const CStringArray& /*tokens*/)
{
    if (state.open != nullptr)
        state.definitions.Own(std::move(state.open));
}

// Of a value with blanks the first word.
void TakeName(State& state, const CStringArray& tokens)
{
    if (state.open != nullptr)
        state.open->m_sName = tokens[kValueToken];
}

// The pieces between semicolons, empty ones too; what follows the hundredth semicolon is dropped.
void TakeOptions(State& state, const CStringArray& tokens)
{
    if (state.open == nullptr)
        return;
    const CString& list = tokens[kValueToken];
    std::string_view rest = list.View();
    for (int count = 0; count < kMostOptions; ++count)
    {
        const std::size_t separator = rest.find(';');
        state.open->m_arrOptions.Add(CString(rest.substr(0, separator)));
        if (separator == std::string_view::npos)
            return;
        rest.remove_prefix(separator + 1);
    }
}

struct TokenKeyword
{
    const char* token; // the whole first token, case-sensitive
    void (*take)(State& state, const CStringArray& tokens);
};

// All but the first leave a line outside a definition alone.
constexpr TokenKeyword kKeywords[] = {
    {"OPTION", Begin}, // also inside a definition, which is lost then
    {"}", End},
    {"NAME", TakeName},
    {"OPTIONS", TakeOptions},
};

void TakeTokens(State& state, const CStringArray& tokens)
{
    for (const TokenKeyword& keyword : kKeywords)
        if (tokens[0] == keyword.token)
            return keyword.take(state, tokens);
}
} // namespace

CJOBXsysAttrData::CJOBXsysAttrData() = default;

CJOBXsysAttrData::~CJOBXsysAttrData() = default;

CString CJOBXsysAttrData::sGetOptionsFromIndexID(int index) const
{
    return index < m_arrOptions.GetSize() && !m_arrOptions.IsEmpty() ? m_arrOptions[index] : CString();
}

CJOBXsysAttrDataArray::CJOBXsysAttrDataArray() = default;

CJOBXsysAttrDataArray::~CJOBXsysAttrDataArray() = default;

int CJOBXsysAttrDataArray::ParseODBOfMFC(const CString& filePath)
{
    return Guarded(
        [&]
        {
            CTextScanner text(filePath, __FILE__, __LINE__);
            State state{*this, nullptr};
            CStringArray tokens;
            while (text.NextLine())
            {
                XTokenString(CString(text.Line()), " ", tokens, 0, 0, 0, 1, 0);
                TakeTokens(state, tokens);
            }
            return text.WasRead() ? 1 : 0;
        });
}

CJOBXsysAttrData* CJOBXsysAttrDataArray::pGetODBsysAttrDataFromName(const CString& name) const
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXsysAttrData* const definition = GetAt(i); definition != nullptr && definition->m_sName == name)
            return definition;
    return nullptr;
}

CString CJOBXsysAttrDataArray::sGetOptionsFromOptionNameAndIndexID(const CString& name, int index) const
{
    const CJOBXsysAttrData* const named = pGetODBsysAttrDataFromName(name);
    const CJOBXsysAttrData* const definition = named != nullptr ? named : GetLastElement();
    return definition != nullptr ? definition->sGetOptionsFromIndexID(index) : CString();
}
