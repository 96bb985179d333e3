#pragma once

#include "foundation/framework/CArray.h"

#include <algorithm>
#include <utility>

// A growable array of values that can be copied, moved and compared; the base class of the core kit's arrays.
// Ownership: has its elements by value; copies are deep, self-assignment is safe.
// Results:   as CArray: a bad index raises CInvalidArgException, exhausted memory CMemoryException.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CValueArray : public CArray<TYPE, ARG_TYPE>
{
public:
    CValueArray() = default;
    CValueArray(const CValueArray& other) : CArray<TYPE, ARG_TYPE>() { this->Copy(other); }
    CValueArray(CValueArray&& other) noexcept { Swap(other); }
    CValueArray& operator=(const CValueArray& other)
    {
        this->Copy(other);
        return *this;
    }
    CValueArray& operator=(CValueArray&& other) noexcept
    {
        Swap(other);
        return *this;
    }
    ~CValueArray() override = default;

    // Swaps the elements of two arrays without copying them.
    void Swap(CValueArray& other) noexcept { this->SwapBuffers(other); }

    // The same size and equal elements at each index; an array always equals itself.
    bool operator==(const CValueArray& other) const
    {
        return this == &other ||
               std::equal(this->m_pData, this->m_pData + this->m_nSize, other.m_pData, other.m_pData + other.m_nSize);
    }
};
