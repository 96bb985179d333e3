#pragma once

#include "foundation/base/CExPtrArray.h"

#include <memory>

// An owning array that can be copied; the base of every list of the compact model.
// Ownership: as COwningPtrArray; copies are deep: each element is cloned and keeps its class. Null entries are left
//            out. Self-assignment is safe.
// Results:   exhausted memory raises CMemoryException; a failed assignment leaves the elements copied so far.
template <class T>
class CCopyableArray : public COwningPtrArray<T>
{
public:
    CCopyableArray() = default;
    CCopyableArray(const CCopyableArray& other) : COwningPtrArray<T>() { *this = other; }
    CCopyableArray& operator=(const CCopyableArray& other)
    {
        this->CopyElements(other, [](const T& element) { return element.clone(); });
        return *this;
    }
    ~CCopyableArray() override = default;
    virtual CCopyableArray* clone() const = 0; // the caller owns the copy
};

// A copyable array of elements that have lengths.
template <class T>
class CRescalableArray : public CCopyableArray<T>
{
public:
    // Rescales every element; skips null entries.
    void vRescale(double factor)
    {
        for (T& element : this->Records())
            element.vRescale(factor);
    }
};
