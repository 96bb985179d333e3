#pragma once

#include "foundation/CPointerCounts.h"
#include "foundation/framework/CArray.h"

#include <algorithm>
#include <memory>
#include <new>

// Deletes the elements of an array in index order. Classes whose records are made side by side have a function of this
// name of their own.
template <class T>
void DeleteElements(T* const* elements, __int64 count)
{
    for (__int64 i = 0; i < count; ++i)
        delete elements[i];
}

// A growable array of pointers with search, removal, deletion and reordering; the base of every list of the model.
// Ownership: deletes elements only in the operations whose names begin with Delete. Its own destructor leaves them
//            alive; the model's ...Array classes derive from COwningPtrArray below, whose destructor deletes them. An
//            element may stand in one owning array only: to hand it over, detach it with Remove, RemoveLastElement or
//            MoveElementTo.
// Results:   the operations named here answer null, -1 or false for a bad index; those of the base array, and DeleteAt
//            and MoveElementTo with a bad first index, raise CInvalidArgException.
// Searches compare pointers, never the objects, from index 0 on; the first match wins.
template <class TYPE, class ARG_TYPE>
class CExPtrArray : public CArray<TYPE, ARG_TYPE>
{
    using Base = CArray<TYPE, ARG_TYPE>;

public:
    CExPtrArray() = default;
    ~CExPtrArray() override = default;

    // Takes every null entry out.
    virtual void RemoveNullElement() { KeepUntil(std::remove(this->m_pData, this->m_pData + this->m_nSize, TYPE{})); }

    // Keeps the first occurrence of every pointer and takes the later ones out; deletes nothing. Never raises: without
    // memory to count in, it takes longer.
    virtual void RemoveDuplicatedElements()
    {
        CPointerCounts<TYPE> counts(this->m_nSize);
        TYPE* kept = this->m_pData;
        for (INT_PTR i = 0; i < this->m_nSize; ++i)
        {
            const TYPE element = this->m_pData[i];
            const bool isLater =
                counts.IsReady() ? counts.Add(element) > 1 : std::find(this->m_pData, kept, element) != kept;
            if (!isLater)
                *kept++ = element;
        }
        KeepUntil(kept);
    }

    // Appends `element` unless it is there already: its new index, or -1.
    __int64 Add_if_only_do_not_exists(ARG_TYPE element) { return Exists(element) ? -1 : Base::Add(element); }

    // Stores `element` at `index`, without deleting what stood there; a bad index does nothing.
    void SetAt(__int64 index, ARG_TYPE element)
    {
        if (IsInside(index))
            this->m_pData[index] = element;
    }
    // The element at `index`, or the last one; null when there is none.
    TYPE GetAt(__int64 index) const { return IsInside(index) ? this->m_pData[index] : TYPE{}; }
    TYPE GetLastElement() const { return GetAt(GetLastIndex()); }
    // -1 when empty.
    __int64 GetLastIndex() const { return this->m_nSize - 1; }
    // Whether an element stands there.
    bool IsValidIndex(const int& index) const { return IsInside(index); }

    // Whether `element` is in the array, and at which index first; -1 when it is not.
    bool Exists(const TYPE element) const { return FindIndex(element) >= 0; }
    int FindIndex(const TYPE element) const
    {
        const TYPE* const end = this->m_pData + this->m_nSize;
        const TYPE* const found = std::find(static_cast<const TYPE*>(this->m_pData), end, element);
        return found == end ? -1 : static_cast<int>(found - this->m_pData);
    }

    // Takes the first occurrence out without deleting it; false when there is none.
    bool Remove(const TYPE element)
    {
        const int index = FindIndex(element);
        if (index < 0)
            return false;
        Base::RemoveAt(index);
        return true;
    }
    // Detaches the last element and hands it to the caller; null when empty.
    TYPE RemoveLastElement()
    {
        const TYPE last = GetLastElement();
        if (this->m_nSize > 0)
            Base::RemoveAt(this->m_nSize - 1);
        return last;
    }

    // Deletes the first occurrence and takes its slot out; false when there is none.
    bool Delete(TYPE element);
    // Deletes `count` elements from `index` on and takes their slots out. Reaching past the end raises the
    // invalid-argument exception after the elements before it are gone.
    void DeleteAt(int index, int count);
    // Deletes every element in index order and releases the buffer.
    void DeleteAll();
    // False when empty, else deletes the last element and takes its slot out.
    bool DeleteLastElement();

    // Appends the run `from`..`to` of this array to `destination` in its order and takes it out here; deletes nothing.
    // False, and nothing moved, when `to` < `from` or `destination` is this array. A run that leaves this array raises
    // the invalid-argument exception at its first bad index, counted from `to` down; a null was appended for that one.
    bool MoveElementTo(Base& destination, const int& from, const int& to)
    {
        if (to < from || &destination == this)
            return false;
        if (from >= 0 && to < this->m_nSize)
        {
            const __int64 first = destination.GetSize();
            const __int64 count = static_cast<__int64>(to) - from + 1;
            destination.SetSize(first + count);
            std::copy_n(this->m_pData + from, count, destination.GetData() + first);
            Base::RemoveAt(from, count);
            return true;
        }
        const __int64 first = destination.GetSize();
        for (__int64 k = to; k >= from; --k)
        {
            destination.InsertAt(first, GetAt(k));
            Base::RemoveAt(k);
        }
        return true;
    }

    // Removes the first occurrence of every element of `other`; deletes nothing. The array itself leaves nothing. Never
    // raises: without memory to count in, it takes longer.
    void Subtract(const Base& other)
    {
        if (&other == this)
        {
            Base::RemoveAll();
            return;
        }
        CPointerCounts<TYPE> unwanted(other.GetSize());
        if (!unwanted.IsReady())
        {
            for (INT_PTR i = 0; i < other.GetSize(); ++i)
                Remove(other[i]);
            return;
        }
        for (INT_PTR i = 0; i < other.GetSize(); ++i)
            unwanted.Add(other[i]);
        KeepUntil(std::remove_if(this->m_pData, this->m_pData + this->m_nSize,
                                 [&unwanted](TYPE element) { return unwanted.Take(element); }));
    }

    // Puts the elements into the opposite order; deletes nothing.
    void Reverse() { std::reverse(this->m_pData, this->m_pData + this->m_nSize); }

    // Same size and the same pointers in the same order.
    bool IsElementEqual(const Base& other) const
    {
        return std::equal(this->m_pData, this->m_pData + this->m_nSize, other.GetData(),
                          other.GetData() + other.GetSize());
    }

private:
    // Takes out what stands from there on.
    void KeepUntil(const TYPE* end)
    {
        const INT_PTR kept = end - this->m_pData;
        Base::RemoveAt(kept, this->m_nSize - kept);
    }
    bool IsInside(__int64 index) const { return index >= 0 && index < this->m_nSize; }
};

// The deleting operations are compiled where the element type is complete: with the exported instantiations.
template <class TYPE, class ARG_TYPE>
bool CExPtrArray<TYPE, ARG_TYPE>::Delete(TYPE element)
{
    const int index = FindIndex(element);
    if (index < 0)
        return false;
    delete element;
    Base::RemoveAt(index);
    return true;
}

template <class TYPE, class ARG_TYPE>
void CExPtrArray<TYPE, ARG_TYPE>::DeleteAt(int index, int count)
{
    if (count < 1)
        return;
    const __int64 inside = IsInside(index) ? std::min<__int64>(count, this->m_nSize - index) : 0;
    for (__int64 i = 0; i < inside; ++i)
        delete this->m_pData[index + i];
    if (inside > 0)
        Base::RemoveAt(index, inside);
    if (inside < count)
        AfxThrowInvalidArgException();
}

template <class TYPE, class ARG_TYPE>
void CExPtrArray<TYPE, ARG_TYPE>::DeleteAll()
{
    DeleteElements(this->m_pData, this->m_nSize);
    Base::RemoveAll();
}

template <class TYPE, class ARG_TYPE>
bool CExPtrArray<TYPE, ARG_TYPE>::DeleteLastElement()
{
    if (this->m_nSize == 0)
        return false;
    delete RemoveLastElement();
    return true;
}

// A pointer array that owns its elements: its destructor deletes them. Not copyable; the copyable arrays of the model
// say so and copy deeply.
template <class T>
class COwningPtrArray : public CExPtrArray<T*, T*>
{
public:
    COwningPtrArray() = default;
    COwningPtrArray(const COwningPtrArray&) = delete;
    COwningPtrArray& operator=(const COwningPtrArray&) = delete;
    ~COwningPtrArray() override { this->DeleteAll(); }

    // Appends an element and takes it over; when that fails it is deleted and the exception goes on. Returns the
    // element.
    T* Own(std::unique_ptr<T> element)
    {
        this->Add(element.get());
        return element.release();
    }

protected:
    // Replaces the elements by new copies of the other array's, made by `copy`; null entries are left out. Exhausted
    // memory raises CMemoryException, with the elements copied before in the array.
    template <class Copy>
    void CopyElements(const COwningPtrArray& other, Copy copy)
    {
        if (this == &other)
            return;
        this->DeleteAll();
        try
        {
            for (__int64 i = 0; i < other.GetSize(); ++i)
                if (const T* const element = other.GetAt(i))
                    Own(std::unique_ptr<T>(copy(*element)));
        }
        catch (const std::bad_alloc&) // of an element's own parts
        {
            AfxThrowMemoryException();
        }
    }

    // Compares the argument's positions with this array's elements; null is taken past this array's end, a null equals
    // only a null. No size takes part, so an empty argument equals anything: intended, hosts rely on it.
    bool EqualsAtPositionsOf(const COwningPtrArray& other) const
    {
        for (__int64 i = 0; i < other.GetSize(); ++i)
        {
            const T* const mine = this->GetAt(i);
            const T* const theirs = other.GetAt(i);
            if (mine == nullptr || theirs == nullptr ? mine != theirs : !(*mine == *theirs))
                return false;
        }
        return true;
    }
};
