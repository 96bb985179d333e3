#include "compact/CODBSpecialSymbol.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBSpecialSymbol*, CODBSpecialSymbol*>;

CODBSpecialSymbol::~CODBSpecialSymbol() = default;

CODBSpecialSymbol* CODBSpecialSymbol::clone() const
{
    return NewCopy(*this);
}

CODBSpecialSymbolArray* CODBSpecialSymbolArray::clone() const
{
    return NewCopy(*this);
}
