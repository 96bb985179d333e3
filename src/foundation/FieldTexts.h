// How the readers keep the fields of a line as a list of texts.
#pragma once

#include "foundation/CLineScanner.h"
#include "foundation/CRecordPool.h"
#include "foundation/CTextCache.h"
#include "foundation/framework/CStringArray.h"

#include <array>
#include <span>
#include <string_view>

// Appends the fields, which are split only once if there are as few as usual. The list's block has the right size.
inline void AddFields(CStringArray& texts, CFieldScanner fields, CTextCache& cache)
{
    std::array<std::string_view, 8> first;
    std::size_t taken = 0;
    while (taken < first.size() && fields.Text(first[taken]))
        ++taken;
    auto count = static_cast<INT_PTR>(taken);
    std::string_view field;
    for (CFieldScanner counted = fields; counted.Text(field);)
        ++count;
    INT_PTR at = texts.GetSize();
    record_pool::Extend(texts, count);
    for (std::size_t i = 0; i < taken; ++i)
        texts[at++] = cache.Of(first[i]);
    for (; fields.Text(field); ++at)
        texts[at] = cache.Of(field);
}

// Appends texts that are split already.
inline void AddFields(CStringArray& texts, std::span<const std::string_view> fields, CTextCache& cache)
{
    INT_PTR at = texts.GetSize();
    record_pool::Extend(texts, static_cast<INT_PTR>(fields.size()));
    for (const std::string_view field : fields)
        texts[at++] = cache.Of(field);
}
