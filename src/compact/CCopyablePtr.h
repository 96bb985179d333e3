#pragma once

#include <memory>
#include <utility>

// A part of an object that may be absent.
// Ownership: owns the part; copies are deep, made by clone. Self-assignment is safe.
// Results:   exhausted memory raises CMemoryException; a failed assignment changes nothing.
template <class T>
class CCopyablePtr
{
public:
    CCopyablePtr() = default;
    // Takes ownership of the part; null means absent.
    CCopyablePtr(std::unique_ptr<T> part) noexcept : m_pPart(std::move(part)) {}
    CCopyablePtr(const CCopyablePtr& other) : m_pPart(other.m_pPart != nullptr ? other.m_pPart->clone() : nullptr) {}
    CCopyablePtr(CCopyablePtr&&) noexcept = default;
    CCopyablePtr& operator=(const CCopyablePtr& other)
    {
        if (this != &other)
            *this = CCopyablePtr(other);
        return *this;
    }
    CCopyablePtr& operator=(CCopyablePtr&&) noexcept = default;
    ~CCopyablePtr() = default;

    // The part, borrowed; null if absent.
    T* get() const { return m_pPart.get(); }
    T* operator->() const { return m_pPart.get(); }
    T& operator*() const { return *m_pPart; }
    bool operator==(std::nullptr_t) const { return m_pPart == nullptr; }
    // Deletes the part and takes ownership of `part`; null means absent.
    void reset(T* part = nullptr) { m_pPart.reset(part); }
    // Gives up the part; the caller owns it.
    T* release() { return m_pPart.release(); }

private:
    std::unique_ptr<T> m_pPart;
};
