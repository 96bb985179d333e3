#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

// Counts equal pointers in a table that is allocated once. If that fails, IsReady is false and the caller has to do
// without. Nothing raises.
template <class TYPE>
class CPointerCounts
{
public:
    // For at most that many different pointers; null counts as one.
    explicit CPointerCounts(std::ptrdiff_t pointers) noexcept
        : m_last(std::bit_ceil(2 * static_cast<std::size_t>(pointers) + 1) - 1),
          m_slots(new (std::nothrow) Slot[m_last + 1])
    {
    }

    // False if there was no memory; then nothing may be counted.
    bool IsReady() const noexcept { return m_slots != nullptr; }
    // Adds one and returns the new count.
    std::ptrdiff_t Add(TYPE pointer) noexcept
    {
        Slot& slot = Find(pointer);
        slot.pointer = pointer;
        slot.isTaken = true;
        return ++slot.count;
    }
    // Subtracts one; false if the count is 0.
    bool Take(TYPE pointer) noexcept
    {
        Slot& slot = Find(pointer);
        if (slot.count == 0)
            return false;
        --slot.count;
        return true;
    }

private:
    struct Slot
    {
        TYPE pointer{};
        std::ptrdiff_t count = 0;
        bool isTaken = false;
    };

    // The slot of `pointer`, or the free slot for it; at least half of all slots are free.
    Slot& Find(TYPE pointer) noexcept
    {
        constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U; // pointers are multiples of a power of two
        const auto mixed = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(pointer)) * kSpread;
        std::size_t place = static_cast<std::size_t>(mixed >> 32U) & m_last;
        while (m_slots[place].isTaken && m_slots[place].pointer != pointer)
            place = (place + 1) & m_last;
        return m_slots[place];
    }

    std::size_t m_last; // number of slots, a power of two, minus one
    std::unique_ptr<Slot[]> m_slots;
};
