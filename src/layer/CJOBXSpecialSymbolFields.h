#pragma once

#include "foundation/base/RecordFields.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "layer/CJOBXlayerFields.h"

// The fields of CJOBXSpecialSymbol.
template <>
struct jobx::Fields<CJOBXSpecialSymbol>
{
    static constexpr RecordName kName{"symbol", "A user symbol", "symbol", "symbol"};
    static constexpr auto kList = std::tuple{
        Texts("texts", "Set by hosts", &CJOBXSpecialSymbol::m_arrTexts),
        Text("name",
             "Its directory's path after a read of the whole job, the last part of it after a read of chosen steps",
             &CJOBXSpecialSymbol::m_sName),
        Text("path", "Its directory", &CJOBXSpecialSymbol::m_sPath).AsName(),
        Part(
            "layer", "", [](auto& symbol) -> auto& { return *symbol.GetLayer(); }),
    };
};
