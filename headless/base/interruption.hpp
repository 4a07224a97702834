#pragma once
// Signals that ask the program to end: SIGINT, SIGTERM and SIGHUP. The first one is recorded, and loops check
// for it. A second one ends the program at once, as it would by default.

#include "headless/system/signals.hpp"

#include <atomic>
#include <chrono>

namespace headless::interruption {

using Clock = std::chrono::steady_clock;

/// The message for work that was abandoned on request.
constexpr const char* reason = "interrupted";

namespace detail {

inline std::atomic<int> received = 0;
inline std::atomic<Clock::rep> received_at = 0;
inline std::atomic<void (*)(void*)> reaction = nullptr;
inline std::atomic<void*> argument = nullptr;

static_assert(std::atomic<Clock::rep>::is_always_lock_free);

/// Runs as a signal handler.
inline void record(int number) {
    received_at = Clock::now().time_since_epoch().count();
    received = number;
    if (const auto react = reaction.load())
        react(argument);
}

} // namespace detail

/// From now on the signals are recorded, on the calling thread where the system has signals. One that is
/// ignored, as under nohup, stays ignored.
inline void watch() { system::watch_termination(detail::record); }

/// The number of the signal that came, 0 if none has.
inline int signal_number() { return detail::received; }

/// How long ago the signal came.
inline Clock::duration age() {
    return Clock::now().time_since_epoch() - Clock::duration(detail::received_at.load());
}

/// While this object exists, a signal also makes one more call, from within the signal handler.
class Reaction {
public:
    Reaction(void (*react)(void*), void* argument) {
        detail::argument = argument;
        detail::reaction = react;
    }
    ~Reaction() { detail::reaction = nullptr; }
    Reaction(const Reaction&) = delete;
    Reaction& operator=(const Reaction&) = delete;
};

} // namespace headless::interruption
