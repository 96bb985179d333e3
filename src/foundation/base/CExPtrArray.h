#pragma once

#include "foundation/base/CPointerCounts.h"
#include "foundation/framework/CArray.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <new>

// A growable array of pointers with search, removal, deletion and reordering; the base of every list of the model.
// Ownership: deletes elements only in the operations whose names begin with Delete. Its own destructor does not; the
//            model's ...Array classes derive from COwningPtrArray below, whose destructor deletes them. An element may
//            be in one owning array only: to move it to another, detach it with Remove, RemoveLastElement or
//            MoveElementTo.
// Results:   the operations declared here return null, -1 or false for a bad index. Those of the base array, and
//            DeleteAt and MoveElementTo with a bad first index, raise CInvalidArgException.
// Searches compare pointers, not objects, and return the first match.
template <class TYPE, class ARG_TYPE>
class CExPtrArray : public CArray<TYPE, ARG_TYPE>
{
    using Base = CArray<TYPE, ARG_TYPE>;

public:
    CExPtrArray() = default;
    ~CExPtrArray() override = default;

    // Removes all null entries.
    virtual void RemoveNullElement() { KeepUntil(std::remove(this->m_pData, this->m_pData + this->m_nSize, TYPE{})); }

    // Keeps the first occurrence of every pointer and removes the others; deletes nothing. Never raises: without memory
    // for its table, it is only slower.
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

    // Appends `element` unless it is in the array. Returns its new index, or -1.
    __int64 Add_if_only_do_not_exists(ARG_TYPE element) { return Exists(element) ? -1 : Base::Add(element); }

    // Stores `element` at `index` without deleting the old one; does nothing for a bad index.
    void SetAt(__int64 index, ARG_TYPE element)
    {
        if (IsInside(index))
            this->m_pData[index] = element;
    }
    // The element at `index`, or the last one; null if there is none.
    TYPE GetAt(__int64 index) const { return IsInside(index) ? this->m_pData[index] : TYPE{}; }
    TYPE GetLastElement() const { return GetAt(GetLastIndex()); }
    // -1 if empty.
    __int64 GetLastIndex() const { return this->m_nSize - 1; }
    // Whether `index` is inside the array.
    bool IsValidIndex(const int& index) const { return IsInside(index); }

    // Whether `element` is in the array, and its first index, -1 if it is not.
    bool Exists(const TYPE element) const { return FindIndex(element) >= 0; }
    int FindIndex(const TYPE element) const
    {
        const TYPE* const end = this->m_pData + this->m_nSize;
        const TYPE* const found = std::find(static_cast<const TYPE*>(this->m_pData), end, element);
        return found == end ? -1 : static_cast<int>(found - this->m_pData);
    }

    // Removes the first occurrence without deleting it; false if there is none.
    bool Remove(const TYPE element)
    {
        const int index = FindIndex(element);
        if (index < 0)
            return false;
        Base::RemoveAt(index);
        return true;
    }
    // Removes the last element and returns it to the caller; null if the array is empty.
    TYPE RemoveLastElement()
    {
        const TYPE last = GetLastElement();
        if (this->m_nSize > 0)
            Base::RemoveAt(this->m_nSize - 1);
        return last;
    }

    // Deletes and removes the first occurrence; false if there is none.
    bool Delete(TYPE element);
    // Deletes and removes `count` elements from `index` on. If that goes past the end, the elements up to the end are
    // deleted before the invalid-argument exception is raised.
    void DeleteAt(int index, int count);
    // Deletes every element in index order and frees the buffer.
    void DeleteAll();
    // Deletes and removes the last element; false if the array is empty.
    bool DeleteLastElement();

    // Moves the elements from index `from` to index `to` to the end of `destination`, keeping their order; deletes
    // nothing. If `to` < `from` or `destination` is this array, returns false and moves nothing. If some index is
    // outside this array, raises the invalid-argument exception at the first bad index, going from `to` down, after
    // appending a null for it.
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

    // Removes the first occurrence of every element of `other`; deletes nothing. Subtracting an array from itself
    // empties it. Never raises: without memory for its table, it is only slower.
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

    // Reverses the order of the elements; deletes nothing.
    void Reverse() { std::reverse(this->m_pData, this->m_pData + this->m_nSize); }

    // The same size and the same pointers in the same order.
    bool IsElementEqual(const Base& other) const
    {
        return std::equal(this->m_pData, this->m_pData + this->m_nSize, other.GetData(),
                          other.GetData() + other.GetSize());
    }

private:
    // Removes the elements from there on.
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
    for (__int64 i = 0; i < this->m_nSize; ++i)
        delete this->m_pData[i];
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

// The records of an array in index order, without null entries; returned by COwningPtrArray::Records. For a range-based
// `for` and the standard algorithms. A view of the array, which must outlive it.
// Results:   records may be changed, and entries replaced by SetAt, while iterating. Adding or removing entries
//            invalidates the range and its iterators, as with a std::vector; to remove entries in a loop, use indexes.
template <class RECORD>
class CRecordRange
{
    using Entry = RECORD* const*;

public:
    class Iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = RECORD;
        using difference_type = std::ptrdiff_t;
        using pointer = RECORD*;
        using reference = RECORD&;

        Iterator() = default;
        Iterator(Entry at, Entry end) : m_at(at), m_end(end) { SkipNulls(); }

        RECORD& operator*() const { return **m_at; }
        RECORD* operator->() const { return *m_at; }
        Iterator& operator++()
        {
            ++m_at;
            SkipNulls();
            return *this;
        }
        Iterator operator++(int)
        {
            const Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator& other) const { return m_at == other.m_at; }

    private:
        void SkipNulls()
        {
            while (m_at != m_end && *m_at == nullptr)
                ++m_at;
        }

        Entry m_at = nullptr;
        Entry m_end = nullptr;
    };

    // The records among `count` entries from `first` on.
    CRecordRange(Entry first, __int64 count) : m_begin(first), m_end(first + count) {}

    // Forward iterators that skip null entries.
    Iterator begin() const { return {m_begin, m_end}; }
    Iterator end() const { return {m_end, m_end}; }

private:
    Entry m_begin;
    Entry m_end;
};

// A pointer array that owns its elements: its destructor deletes them. Not copyable, except for derived arrays that say
// so; their copies are deep.
template <class T>
class COwningPtrArray : public CExPtrArray<T*, T*>
{
public:
    COwningPtrArray() = default;
    COwningPtrArray(const COwningPtrArray&) = delete;
    COwningPtrArray& operator=(const COwningPtrArray&) = delete;
    ~COwningPtrArray() override { this->DeleteAll(); }

    // The records that are not null, in order: for (const CJOBXnet& net : nets.Records()). Like GetAt, gives access to
    // them whether or not the array is const.
    CRecordRange<T> Records() const { return {this->m_pData, this->m_nSize}; }

    // Appends an element, takes ownership of it and returns it. On failure, deletes it and passes the exception on.
    T* Own(std::unique_ptr<T> element)
    {
        this->Add(element.get());
        return element.release();
    }

protected:
    // Replaces the elements by copies of the other array's, made by `copy`; null entries are skipped. Exhausted memory
    // raises CMemoryException and keeps the elements copied so far.
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
        catch (const std::bad_alloc&) // from the parts of an element
        {
            AfxThrowMemoryException();
        }
    }

    // Compares the elements at the positions of `other`. Past this array's end there is null, and null equals only
    // null. The size is not compared, so an empty `other` equals anything: intended, hosts rely on it.
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
