#include "headless/audio/watchdog.hpp"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <utility>

namespace headless::audio {

struct Watchdog::SharedState {
    std::mutex mutex;
    std::condition_variable changed;
    std::function<void(Steps&)> job; // null if none is waiting
    std::exception_ptr escaped;
    bool is_busy = false; // from the request for a job until its end
    bool is_closed = false;
    Steps steps = 0;
};

Watchdog::Watchdog() = default;

Watchdog::~Watchdog() {
    if (!state_)
        return;
    {
        const std::lock_guard lock(state_->mutex);
        state_->is_closed = true;
        state_->changed.notify_all();
    }
    thread_.join(); // it waits for a job, so it ends at once
}

void Watchdog::work(const std::shared_ptr<SharedState>& state) {
    std::unique_lock lock(state->mutex);
    for (;;) {
        state->changed.wait(lock, [&] { return state->job || state->is_closed; });
        if (!state->job)
            return;
        auto job = std::exchange(state->job, nullptr);
        lock.unlock();
        std::exception_ptr escaped;
        try {
            job(state->steps);
        } catch (...) {
            escaped = std::current_exception();
        }
        job = nullptr; // destroys what it owns before the caller continues
        lock.lock();
        state->escaped = std::move(escaped);
        state->is_busy = false;
        state->changed.notify_all();
    }
}

bool Watchdog::run(std::function<void(Steps&)> job, std::chrono::milliseconds timeout) {
    if (!state_) {
        const auto state = std::make_shared<SharedState>();
        thread_ = std::thread([state] { work(state); });
        state_ = state; // last, as starting the thread may fail
    }
    std::unique_lock lock(state_->mutex);
    state_->job = std::move(job);
    state_->is_busy = true;
    state_->changed.notify_all();
    for (std::uint64_t seen = state_->steps;
         !state_->changed.wait_for(lock, timeout, [&] { return !state_->is_busy; });) {
        if (state_->steps == seen) {
            state_->is_closed = true;
            lock.unlock();
            state_.reset();
            thread_.detach();
            return false;
        }
        seen = state_->steps;
    }
    if (const std::exception_ptr escaped = std::exchange(state_->escaped, nullptr))
        std::rethrow_exception(escaped);
    return true;
}

} // namespace headless::audio
