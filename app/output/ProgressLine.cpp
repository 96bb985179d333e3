#include "output/ProgressLine.h"

#include "output/CleanEnd.h"
#include "output/Terminal.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <system_error>

namespace
{
using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kBeforeFirst{500};
constexpr std::chrono::milliseconds kBetween{100};

constexpr std::size_t kBarWidth = 20;
constexpr double kLeastDone = 0.01; // before, the time left is a guess

std::string TimeLeft(double done, double seconds)
{
    constexpr std::int64_t kMinute = 60;
    constexpr std::int64_t kHour = 60 * kMinute;
    if (done < kLeastDone || done >= 1.0)
        return {};
    const auto left = static_cast<std::int64_t>(std::ceil(seconds * (1.0 - done) / done));
    if (left >= kHour)
        return fmt::format(", {} h {} min left", left / kHour, left % kHour / kMinute);
    if (left >= kMinute)
        return fmt::format(", {} min {} s left", left / kMinute, left % kMinute);
    return fmt::format(", {} s left", left);
}

// Waits; false if the work has ended meanwhile.
bool Wait(const std::stop_token& stop, std::chrono::milliseconds time)
{
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    never.wait_for(lock, stop, time, [] { return false; });
    return !stop.stop_requested();
}

void DrawUntilStopped(const std::stop_token& stop, const std::string& title, const ProgressMeasure& measure)
{
    const Clock::time_point start = Clock::now();
    try
    {
        for (bool isWorking = Wait(stop, kBeforeFirst); isWorking; isWorking = Wait(stop, kBetween))
        {
            const double done = measure(stop);
            const std::size_t width = TerminalWidth(stderr);
            if (stop.stop_requested() || width < 2)
                continue;
            const std::chrono::duration<double> seconds = Clock::now() - start;
            const std::string line = ProgressText(title, done, seconds.count(), width - 1);
            ReplaceProgressLine(line, CharacterCount(line));
        }
    }
    catch (...)
    {
        // The work goes on without the line.
    }
    ClearProgressLine();
}
} // namespace

std::string ProgressText(std::string_view title, double done, double seconds, std::size_t width)
{
    const double part = std::clamp(done, 0.0, 1.0);
    const auto filled = static_cast<std::size_t>(part * static_cast<double>(kBarWidth));
    const std::string line = fmt::format("[{:-<{}}] {:3}%{}: {}", std::string(filled, '#'), kBarWidth,
                                         static_cast<int>(part * 100), TimeLeft(part, seconds), title);
    return std::string(FirstCharacters(line, width));
}

ProgressLine::ProgressLine(std::string title, bool isQuiet, ProgressMeasure measure)
{
    if (isQuiet || !IsTerminal(stderr))
        return;
    const SignalsElsewhere elsewhere;
    try
    {
        m_thread = std::jthread([title = std::move(title), measure = std::move(measure)](const std::stop_token& stop)
                                { DrawUntilStopped(stop, title, measure); });
    }
    catch (const std::system_error&)
    {
        // No more threads are allowed: the work goes on without the line.
    }
}

CountedProgress::CountedProgress(std::string title, bool isQuiet, std::int64_t parts)
    : m_line(std::move(title), isQuiet,
             [done = m_done, parts](const std::stop_token&)
             { return static_cast<double>(*done) / static_cast<double>(std::max<std::int64_t>(parts, 1)); })
{
}
