#pragma once
// Runs jobs that may hang: the caller waits only as long as a job makes progress. For use inside this folder.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace headless::audio {

/// A job counts its steps here. Any change counts as progress.
using Steps = std::atomic<std::uint64_t>;

/// One thread that runs jobs one at a time. An abandoned job keeps its thread, until the process ends if need
/// be; the next job gets a new one.
class Watchdog {
public:
    Watchdog();
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// Runs the job and waits for it. An exception that leaves the job is thrown here.
    /// @param job       must own everything it uses: it may still be running after it was abandoned
    /// @param patience  the longest time between two steps
    /// @returns false if the job was abandoned
    bool run(std::function<void(Steps&)> job, std::chrono::milliseconds patience);

private:
    struct Desk;

    static void work(const std::shared_ptr<Desk>& desk);

    std::shared_ptr<Desk> desk_; // shared with the thread; null before the first job
};

} // namespace headless::audio
