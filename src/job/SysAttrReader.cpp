#include "foundation/CLineScanner.h"
#include "foundation/corekit/TextTools.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBXsysAttrData.h"
#include "job/SysAttrFormat.h"

#include <memory>
#include <utility>

namespace
{
constexpr int kValueToken = 2;    // in a line of keyword, equals sign and value
constexpr int kMostOptions = 100; // in one options line

struct SysAttrReading
{
    CJOBXsysAttrDataArray& definitions;
    std::unique_ptr<CJOBXsysAttrData> open; // added to the list when it is closed
};

void OnDefinition(SysAttrReading& reading, const CStringArray& /*tokens*/)
{
    reading.open = std::make_unique<CJOBXsysAttrData>();
}

void OnEnd(SysAttrReading& reading, const CStringArray& /*tokens*/)
{
    if (reading.open != nullptr)
        reading.definitions.Own(std::move(reading.open));
}

// Only the first word of a value with blanks.
void OnName(SysAttrReading& reading, const CStringArray& tokens)
{
    if (reading.open != nullptr)
        reading.open->m_sName = tokens[kValueToken];
}

// The pieces between semicolons, including empty ones. Text after the hundredth semicolon is dropped.
void OnOptions(SysAttrReading& reading, const CStringArray& tokens)
{
    if (reading.open == nullptr)
        return;
    const CString& list = tokens[kValueToken];
    std::string_view rest = list.View();
    for (int count = 0; count < kMostOptions; ++count)
    {
        const std::size_t separator = rest.find(';');
        reading.open->m_arrOptions.Add(CString(rest.substr(0, separator)));
        if (separator == std::string_view::npos)
            return;
        rest.remove_prefix(separator + 1);
    }
}

struct TokenKeyword
{
    const char* token; // the whole first token, case-sensitive
    void (*take)(SysAttrReading& reading, const CStringArray& tokens);
};

// All but the first ignore lines outside a definition.
constexpr TokenKeyword kSysAttrKeywords[] = {
    {sys_attr_format::kOption, OnDefinition}, // also inside a definition, which is then lost
    {sys_attr_format::kEnd, OnEnd},
    {sys_attr_format::kName, OnName},
    {sys_attr_format::kOptions, OnOptions},
};

void OnTokens(SysAttrReading& reading, const CStringArray& tokens)
{
    for (const TokenKeyword& keyword : kSysAttrKeywords)
        if (tokens[0] == keyword.token)
            return keyword.take(reading, tokens);
}
} // namespace

int CJOBXsysAttrDataArray::ParseODBOfMFC(const CString& filePath)
{
    return Guarded(
        [&]
        {
            CLineScanner text(filePath, __FILE__, __LINE__);
            SysAttrReading reading{*this, nullptr};
            CStringArray tokens;
            while (text.NextLine())
            {
                XTokenString(CString(text.Line()), " ", tokens, 0, 0, 0, 1, 0);
                OnTokens(reading, tokens);
            }
            return text.WasRead() ? 1 : 0;
        });
}
