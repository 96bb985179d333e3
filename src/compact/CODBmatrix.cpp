#include "compact/CODBmatrix.h"

#include "compact/NewCopy.h"

CODBmatrix::~CODBmatrix() = default;

CODBmatrix* CODBmatrix::clone() const
{
    return NewCopy(*this);
}
