// Numbers for pointers, so that an object refers to another one with half a word.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <new>
#include <utility>

// Pointers by number. An entry never moves; all are freed when the last pointer is removed.
// Threads: all at once. Adding and removing lock the table; looking up does not. Whoever looks up a number must know
//          that it has been added and is not removed meanwhile.
template <class T>
class CPointerTable
{
public:
    // Numbers are below this.
    static constexpr std::uint32_t kMost = 0x7FFF'FFFF;

    // The number of a pointer, which is in the table from now on. Raises std::bad_alloc if there is no memory or the
    // table is full.
    std::uint32_t Add(T* pointer)
    {
        const std::lock_guard lock(m_mutex);
        const bool isReused = m_free != kNone;
        const std::uint32_t number = isReused ? m_free : m_used;
        if (!isReused)
            MakeRoom(number);
        Entry& entry = At(number);
        if (isReused)
            m_free = entry.nextFree;
        else
            ++m_used;
        entry.pointer = pointer;
        ++m_living;
        return number;
    }

    T* Find(std::uint32_t number) const noexcept { return At(number).pointer; }

    // Frees the number for another pointer.
    void Remove(std::uint32_t number) noexcept
    {
        const std::lock_guard lock(m_mutex);
        At(number).nextFree = std::exchange(m_free, number);
        if (--m_living == 0)
            FreeBlocks();
    }

private:
    union Entry
    {
        T* pointer;
        std::uint32_t nextFree;
    };

    static constexpr unsigned kFirstBits =
        5; // of the number of entries in the first block; each next one has twice as many
    static constexpr std::uint32_t kFirst = std::uint32_t{1} << kFirstBits;
    static constexpr std::uint32_t kNone = kMost;

    static std::size_t BlockOf(std::uint32_t number) noexcept
    {
        // The width of a number above 0, so that compilers see that the result is not negative.
        return static_cast<std::size_t>(std::bit_width(number / kFirst + 1)) - 1;
    }
    Entry& At(std::uint32_t number) const noexcept
    {
        const std::size_t block = BlockOf(number);
        return m_blocks[block].load(std::memory_order_acquire)[number + kFirst - (kFirst << block)];
    }

    void MakeRoom(std::uint32_t number)
    {
        if (number >= kMost)
            throw std::bad_alloc();
        std::atomic<Entry*>& block = m_blocks[BlockOf(number)];
        if (block.load(std::memory_order_relaxed) == nullptr)
            block.store(new Entry[std::size_t{kFirst} << BlockOf(number)], std::memory_order_release);
    }

    void FreeBlocks() noexcept
    {
        for (std::atomic<Entry*>& block : m_blocks)
            delete[] block.exchange(nullptr, std::memory_order_relaxed);
        m_used = 0;
        m_free = kNone;
    }

    std::mutex m_mutex;
    std::array<std::atomic<Entry*>, 32 - kFirstBits> m_blocks{};
    std::uint32_t m_used = 0;     // numbers given so far
    std::uint32_t m_free = kNone; // the first of those that are free again; each has the next
    std::uint32_t m_living = 0;
};
