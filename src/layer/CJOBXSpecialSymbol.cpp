#include "layer/CJOBXSpecialSymbol.h"

template class CExPtrArray<CJOBXSpecialSymbol*, CJOBXSpecialSymbol*>;

CJOBXSpecialSymbol::CJOBXSpecialSymbol() = default;

CJOBXSpecialSymbol::~CJOBXSpecialSymbol() = default;

CJOBXSpecialSymbolArray::CJOBXSpecialSymbolArray() = default;

CJOBXSpecialSymbolArray::~CJOBXSpecialSymbolArray() = default;

int CJOBXSpecialSymbolArray::nGetSpecialSymbolIndex(const CString& name) const
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (const CJOBXSpecialSymbol* const symbol = GetAt(i); symbol != nullptr && symbol->m_sName == name)
            return static_cast<int>(i);
    return -1;
}

void CJOBXSpecialSymbolArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXSpecialSymbol& symbol : Records())
        symbol.GetLayer()->UnitConvert(by);
}
