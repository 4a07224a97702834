#pragma once
// Runs jobs that may hang: the caller waits only as long as a job makes progress. For use inside this folder.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

namespace headless::audio {

/// A job counts its steps here. Any change counts as progress.
using Steps = std::atomic<std::uint64_t>;

/// Runs jobs one at a time on a thread of its own. An abandoned job keeps that thread, until the process ends
/// if need be, and the next job gets a new one.
class Watchdog {
public:
    Watchdog();
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// Runs the job and waits for it. An exception that leaves the job is thrown here.
    /// @param job      must own everything it uses: it may still be running after it was abandoned
    /// @param timeout  the longest time without a step
    /// @returns false if the job was abandoned
    bool run(std::function<void(Steps&)> job, std::chrono::milliseconds timeout);

private:
    struct SharedState;

    static void work(const std::shared_ptr<SharedState>& state);

    std::shared_ptr<SharedState> state_; // shared with the thread; null if there is no thread
    std::thread thread_;
};

} // namespace headless::audio
