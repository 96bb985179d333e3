#include "foundation/corekit/CLProperty.h"

template class CExPtrArray<CLProperty*, CLProperty*>;

CLProperty::~CLProperty() = default;

CLProperty* CLProperty::clone() const
{
    return new CLProperty(*this);
}

CLPropertyArray::CLPropertyArray(const CLPropertyArray& other) : COwningPtrArray()
{
    *this = other;
}

CLPropertyArray& CLPropertyArray::operator=(const CLPropertyArray& other)
{
    CopyElements(other, [](const CLProperty& element) { return element.clone(); });
    return *this;
}

CLPropertyArray::~CLPropertyArray() = default;

CLPropertyArray* CLPropertyArray::clone() const
{
    return new CLPropertyArray(*this);
}

bool CLPropertyArray::operator==(const CLPropertyArray& other) const
{
    return GetSize() == other.GetSize() && EqualsAtPositionsOf(other);
}
