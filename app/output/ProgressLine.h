// Progress of work that takes long.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>

// How much of the work is done, from 0 to 1. Called in another thread; returns early if a stop is requested.
using ProgressMeasure = std::function<double(const std::stop_token&)>;

// While it lives, shows on standard error how far the work is and how long the rest will take, in a line that overwrites
// itself. Only if that is a terminal, `isQuiet` is not set, and the work takes more than half a second.
// Threads:   one at a time may exist.
class ProgressLine
{
public:
    // `title` must be printable.
    ProgressLine(std::string title, bool isQuiet, ProgressMeasure measure);
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine() = default; // stops the thread, which then clears the line

private:
    std::jthread m_thread;
};

// As above, of work that consists of many parts.
class CountedProgress
{
public:
    CountedProgress(std::string title, bool isQuiet, std::int64_t parts);

    void Did(std::int64_t parts) noexcept { m_done->fetch_add(parts, std::memory_order_relaxed); }

private:
    std::shared_ptr<std::atomic<std::int64_t>> m_done = std::make_shared<std::atomic<std::int64_t>>(0);
    ProgressLine m_line;
};

// The line for that part of the work, done in so many seconds, of at most `width` characters.
std::string ProgressText(std::string_view title, double done, double seconds, std::size_t width);
