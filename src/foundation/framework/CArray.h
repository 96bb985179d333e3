#pragma once

#include "foundation/framework/CArchive.h"
#include "foundation/framework/CException.h"
#include "foundation/framework/CObject.h"
#include "foundation/framework/JobxExport.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>

// Takes back a block that the library gave to an array for its elements.
JOBX_API void JobxReturnBlock(void* block) noexcept;

// The framework's growable array: elements of TYPE in one contiguous block, passed as ARG_TYPE.
// Ownership: deletes its buffer, but never the objects that its elements point to.
// Growth:    appending to a full array adds size/8 elements, at least 4 and at most 1024, or the step of SetSize, which
//            is at most 2^23 - 1.
// Results:   a bad index or range raises CInvalidArgException, exhausted memory CMemoryException.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject
{
public:
    CArray() = default;
    CArray(const CArray&) = delete;
    CArray& operator=(const CArray&) = delete;
    ~CArray() override { RemoveAll(); }

    static CRuntimeClass* GetThisClass()
    {
        static CRuntimeClass theClass{"CArray", static_cast<int>(sizeof(CArray)), 0, nullptr, CObject::GetThisClass()};
        return &theClass;
    }
    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    // The number of elements.
    INT_PTR GetSize() const { return m_nSize; }
    INT_PTR GetCount() const { return m_nSize; }
    // Whether there are no elements; and the last index, then -1.
    BOOL IsEmpty() const { return m_nSize == 0 ? TRUE : FALSE; }
    INT_PTR GetUpperBound() const { return m_nSize - 1; }

    // Makes the array exactly `size` long; new elements are value-initialised. A negative `growBy` keeps the growth
    // step.
    void SetSize(INT_PTR size, INT_PTR growBy = -1)
    {
        if (size < 0)
            AfxThrowInvalidArgException();
        if (growBy >= 0)
            m_nGrowBy = std::min(growBy, kLargestStep) & kLargestStep;
        if (size == 0)
        {
            RemoveAll();
            return;
        }
        if (size > Capacity())
            Reallocate(GrownCapacity(size));
        if (size > m_nSize)
            std::uninitialized_value_construct(m_pData + m_nSize, m_pData + size);
        else
            std::destroy(m_pData + size, m_pData + m_nSize);
        KeepSize(size);
    }

    // Makes room for `capacity` elements in total. Up to that size, appending neither moves the buffer nor raises.
    void Reserve(INT_PTR capacity)
    {
        if (capacity > Capacity())
            Reallocate(capacity);
    }

    // Frees the unused part of the buffer.
    void FreeExtra()
    {
        if (m_nSize != Capacity())
            m_nSize == 0 ? RemoveAll() : Reallocate(m_nSize);
    }

    // Removes every element and frees the buffer.
    void RemoveAll()
    {
        if (m_pData == nullptr)
            return;
        std::destroy(m_pData, m_pData + m_nSize);
        ReplaceBlock(nullptr);
        m_nSize = 0;
    }

    // The element at that index, to read or change; SetAt replaces it. A bad index raises CInvalidArgException.
    const TYPE& GetAt(INT_PTR index) const { return m_pData[Checked(index)]; }
    TYPE& GetAt(INT_PTR index) { return m_pData[Checked(index)]; }
    void SetAt(INT_PTR index, ARG_TYPE element) { m_pData[Checked(index)] = element; }
    const TYPE& ElementAt(INT_PTR index) const { return m_pData[Checked(index)]; }
    TYPE& ElementAt(INT_PTR index) { return m_pData[Checked(index)]; }
    const TYPE& operator[](INT_PTR index) const { return m_pData[Checked(index)]; }
    TYPE& operator[](INT_PTR index) { return m_pData[Checked(index)]; }
    // The block of all elements, valid until the array grows, shrinks or is destroyed; null if there is none.
    const TYPE* GetData() const { return m_pData; }
    TYPE* GetData() { return m_pData; }

    // Stores `element` at `index`; the array grows if needed.
    void SetAtGrow(INT_PTR index, ARG_TYPE element)
    {
        if (index < 0)
            AfxThrowInvalidArgException();
        if (index == std::numeric_limits<INT_PTR>::max())
            AfxThrowMemoryException();
        TYPE copy(element); // `element` may be in the block that growing moves
        if (index >= m_nSize)
            SetSize(index + 1);
        m_pData[index] = std::move(copy);
    }

    // Appends `element` and returns its index.
    INT_PTR Add(ARG_TYPE element)
    {
        if (m_nSize == Capacity())
        {
            TYPE copy(element);
            Reallocate(GrownCapacity(m_nSize + 1));
            std::construct_at(m_pData + m_nSize, std::move(copy));
        }
        else
        {
            std::construct_at(m_pData + m_nSize, element);
        }
        const INT_PTR index = m_nSize;
        KeepSize(index + 1);
        return index;
    }

    // Appends the elements of `source`, copying pointers as they are. Returns the index of the first.
    INT_PTR Append(const CArray& source)
    {
        const INT_PTR oldSize = m_nSize;
        const INT_PTR count = source.m_nSize; // `source` may be this array
        SetSize(oldSize + count);
        std::copy_n(source.m_pData, count, m_pData + oldSize);
        return oldSize;
    }

    // Replaces the elements by those of `source`, copying pointers as they are.
    void Copy(const CArray& source)
    {
        if (this == &source)
            return;
        SetSize(source.m_nSize);
        std::copy_n(source.m_pData, source.m_nSize, m_pData);
    }

    // Inserts `element` `count` times before `index`, which may equal the size; later elements move up.
    void InsertAt(INT_PTR index, ARG_TYPE element, INT_PTR count = 1)
    {
        if (index < 0 || index > m_nSize || count <= 0)
            AfxThrowInvalidArgException();
        const TYPE copy(element); // `element` may be in the block that is moved
        OpenGap(index, count);
        std::fill_n(m_pData + index, count, copy);
    }

    // Inserts the elements of `source`, which may be this array, before `index`, which may equal the size.
    void InsertAt(INT_PTR index, const CArray* source)
    {
        if (index < 0 || index > m_nSize || source == nullptr)
            AfxThrowInvalidArgException();
        const INT_PTR count = source->m_nSize;
        if (count == 0)
            return;
        OpenGap(index, count);
        if (source != this)
        {
            std::copy_n(source->m_pData, count, m_pData + index);
            return;
        }
        // The gap has split the array's own elements.
        std::copy_n(m_pData, index, m_pData + index);
        std::copy_n(m_pData + index + count, count - index, m_pData + index + index);
    }

    // Removes `count` elements from `index` on; later ones move down.
    void RemoveAt(INT_PTR index, INT_PTR count = 1)
    {
        if (index < 0 || count < 0 || index > m_nSize || count > m_nSize - index)
            AfxThrowInvalidArgException();
        std::move(m_pData + index + count, m_pData + m_nSize, m_pData + index);
        std::destroy(m_pData + m_nSize - count, m_pData + m_nSize);
        KeepSize(m_nSize - count);
    }

    // The count and then the elements: numbers as in memory, texts and other types that the archive supports in its own
    // form. Pointers and other classes have no archived form: an array of them stores a count of zero, and loading a
    // count above zero raises the archive exception. Loading replaces the elements; if the archive raises, those loaded
    // so far are kept.
    void Serialize(CArchive& archive) override
    {
        CObject::Serialize(archive);
        if (archive.IsStoring() != FALSE)
        {
            archive.WriteCount(kHasArchivedForm ? static_cast<ULONGLONG>(m_nSize) : 0);
            if constexpr (kHasArchivedForm)
                for (INT_PTR i = 0; i < m_nSize; ++i)
                    Store(archive, m_pData[i]);
            return;
        }
        RemoveAll();
        const ULONGLONG count = archive.ReadCount();
        if constexpr (kHasArchivedForm)
            for (ULONGLONG i = 0; i < count;
                 ++i) // the count is not trusted: a short archive ends this with its exception
            {
                TYPE element{};
                Load(archive, element);
                Add(element);
            }
        else if (count != 0)
            AfxThrowArchiveException(CArchiveException::badClass);
    }

protected:
    // Returns the index; a bad one raises CInvalidArgException.
    INT_PTR Checked(INT_PTR index) const
    {
        if (index < 0 || index >= m_nSize)
            AfxThrowInvalidArgException();
        return index;
    }

    // Exchanges the elements and the growth step with those of the other array, without copying.
    void SwapBuffers(CArray& other) noexcept
    {
        std::swap(m_pData, other.m_pData);
        const INT_PTR size = m_nSize; // no reference can be bound to a bit field
        const INT_PTR step = m_nGrowBy;
        const auto isLent = m_nIsLent;
        KeepSize(other.m_nSize);
        m_nGrowBy = other.m_nGrowBy;
        m_nIsLent = other.m_nIsLent;
        other.KeepSize(size);
        other.m_nGrowBy = step & kLargestStep;
        other.m_nIsLent = isLent & 1U;
    }

    // Makes an array without a block use this one, which is just large enough for `size` value-initialised elements.
    // JobxReturnBlock takes it back.
    static void UseBlock(CArray& array, void* block, INT_PTR size)
    {
        std::uninitialized_value_construct(static_cast<TYPE*>(block), static_cast<TYPE*>(block) + size);
        array.m_pData = static_cast<TYPE*>(block);
        array.KeepSize(size);
        array.m_nIsLent = 1;
    }

    // How many elements the block has room for. A block that is lent is never filled again.
    INT_PTR Capacity() const
    {
        if (m_pData == nullptr || m_nIsLent != 0)
            return m_nSize;
        INT_PTR capacity = 0;
        std::memcpy(&capacity, reinterpret_cast<const char*>(m_pData) - kHeader, sizeof capacity);
        return capacity;
    }

    TYPE* m_pData = nullptr;
    // All in one word, because a job has very many small arrays. The capacity is in front of the elements.
    INT_PTR m_nSize : 39 = 0;
    INT_PTR m_nGrowBy : 24 = 0;
    ULONGLONG m_nIsLent : 1 = 0; // whether JobxReturnBlock takes the block, not std::free

private:
    static constexpr INT_PTR kMinGrow = 4;
    static constexpr INT_PTR kMaxGrow = 1024;
    static constexpr INT_PTR kLargestCapacity = (INT_PTR{1} << 38U) - 1; // what the members above can hold
    static constexpr INT_PTR kLargestStep = (INT_PTR{1} << 23U) - 1;
    static constexpr std::size_t kHeader = std::max(sizeof(INT_PTR), alignof(TYPE)); // of a block: its capacity

    void KeepSize(INT_PTR size) noexcept { m_nSize = size & kLargestCapacity; }

    INT_PTR GrownCapacity(INT_PTR needed) const
    {
        if (m_pData == nullptr)
            return std::max<INT_PTR>(needed, m_nGrowBy);
        const INT_PTR step = m_nGrowBy != 0 ? INT_PTR{m_nGrowBy} : std::clamp<INT_PTR>(m_nSize / 8, kMinGrow, kMaxGrow);
        return std::max<INT_PTR>(needed, Capacity() + step);
    }

    void Reallocate(INT_PTR capacity)
    {
        static_assert(alignof(TYPE) <= alignof(std::max_align_t), "blocks have the C library's alignment");
        if (capacity > kLargestCapacity ||
            static_cast<ULONGLONG>(capacity) > (std::numeric_limits<std::ptrdiff_t>::max() - kHeader) / sizeof(TYPE))
            AfxThrowMemoryException();
        const std::size_t bytes = kHeader + static_cast<std::size_t>(capacity) * sizeof(TYPE);
        if constexpr (std::is_trivially_copyable_v<TYPE>)
            if (m_nIsLent == 0)
                return ExtendBlock(bytes, capacity);
        MoveToNewBlock(bytes, capacity);
    }

    // The system moves large blocks page by page, so small growth steps are cheap.
    void ExtendBlock(std::size_t bytes, INT_PTR capacity)
    {
        void* const block = std::realloc(Block(), bytes);
        if (block == nullptr)
            AfxThrowMemoryException();
        m_pData = ElementsOf(block, capacity);
    }

    void MoveToNewBlock(std::size_t bytes, INT_PTR capacity)
    {
        std::unique_ptr<void, void (*)(void*)> memory(std::malloc(bytes), std::free);
        if (memory == nullptr)
            AfxThrowMemoryException();
        TYPE* const elements = ElementsOf(memory.get(), capacity);
        std::uninitialized_move(m_pData, m_pData + m_nSize, elements); // may raise; then nothing has changed
        std::destroy(m_pData, m_pData + m_nSize);
        memory.release(); // NOLINT(bugprone-unused-return-value): m_pData is going to own the block
        ReplaceBlock(elements);
    }

    // The memory of the array, which is not lent.
    void* Block() const noexcept { return m_pData == nullptr ? nullptr : reinterpret_cast<char*>(m_pData) - kHeader; }

    // Where the elements of a block lie, which has room for so many.
    static TYPE* ElementsOf(void* block, INT_PTR capacity) noexcept
    {
        std::memcpy(block, &capacity, sizeof capacity);
        return reinterpret_cast<TYPE*>(static_cast<char*>(block) + kHeader);
    }

    // Frees the block, whose elements are gone, and owns these instead.
    void ReplaceBlock(TYPE* elements) noexcept
    {
        if (m_nIsLent != 0)
            JobxReturnBlock(m_pData);
        else
            std::free(Block());
        m_pData = elements;
        m_nIsLent = 0;
    }

    // Makes room before `index`, which is at most the size.
    void OpenGap(INT_PTR index, INT_PTR count)
    {
        const INT_PTR oldSize = m_nSize;
        if (count > std::numeric_limits<INT_PTR>::max() - oldSize)
            AfxThrowMemoryException();
        SetSize(oldSize + count);
        std::move_backward(m_pData + index, m_pData + oldSize, m_pData + oldSize + count);
    }

    static constexpr bool kIsPlain = std::is_arithmetic_v<TYPE> || std::is_enum_v<TYPE>;
    static constexpr bool kIsArchived = requires(CArchive & archive, TYPE& element)
    {
        archive << element;
        archive >> element;
    };
    static constexpr bool kHasArchivedForm = kIsPlain || kIsArchived;

    static void Store(CArchive& archive, const TYPE& element)
    {
        if constexpr (kIsPlain)
            archive.Write(&element, static_cast<UINT>(sizeof(element)));
        else if constexpr (kIsArchived)
            archive << element;
    }

    static void Load(CArchive& archive, TYPE& element)
    {
        if constexpr (kIsPlain)
            archive.ReadExactly(&element, sizeof(element));
        else if constexpr (kIsArchived)
            archive >> element;
    }
};
