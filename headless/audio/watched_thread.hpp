#pragma once
// Runs what may hang: the caller waits only as long as it makes progress. For use inside this folder.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace headless {

/// A job counts its steps here; any change is progress.
using Steps = std::atomic<std::uint64_t>;

/// One thread that does jobs one at a time. A job that is given up keeps its thread, until the process ends
/// if need be; the next job gets a new one.
class WatchedThread {
public:
    WatchedThread();
    ~WatchedThread();
    WatchedThread(const WatchedThread&) = delete;
    WatchedThread& operator=(const WatchedThread&) = delete;

    /// Waits for the job. What leaves it is thrown here.
    /// @param job       must own all that it uses: it may run on after it was given up
    /// @param patience  the longest time between two steps
    /// @returns false when the job was given up
    bool run(std::function<void(Steps&)> job, std::chrono::milliseconds patience);

private:
    struct Desk;

    static void work(const std::shared_ptr<Desk>& desk);

    std::shared_ptr<Desk> desk_; // shared with the thread; null before the first job
};

} // namespace headless
