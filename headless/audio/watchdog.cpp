#include "headless/audio/watchdog.hpp"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

namespace headless::audio {

struct Watchdog::Desk {
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
    if (desk_) {
        const std::lock_guard lock(desk_->mutex);
        desk_->is_closed = true;
        desk_->changed.notify_all();
    }
}

void Watchdog::work(const std::shared_ptr<Desk>& desk) {
    std::unique_lock lock(desk->mutex);
    for (;;) {
        desk->changed.wait(lock, [&] { return desk->job || desk->is_closed; });
        if (!desk->job)
            return;
        auto job = std::exchange(desk->job, nullptr);
        lock.unlock();
        std::exception_ptr escaped;
        try {
            job(desk->steps);
        } catch (...) {
            escaped = std::current_exception();
        }
        job = nullptr; // destroys what it owns before the caller continues
        lock.lock();
        desk->escaped = std::move(escaped);
        desk->is_busy = false;
        desk->changed.notify_all();
    }
}

bool Watchdog::run(std::function<void(Steps&)> job, std::chrono::milliseconds patience) {
    if (!desk_) {
        const auto desk = std::make_shared<Desk>();
        std::thread([desk] { work(desk); }).detach();
        desk_ = desk; // only now, as starting the thread may have failed
    }
    std::unique_lock lock(desk_->mutex);
    desk_->job = std::move(job);
    desk_->is_busy = true;
    desk_->changed.notify_all();
    for (std::uint64_t seen = desk_->steps;
         !desk_->changed.wait_for(lock, patience, [&] { return !desk_->is_busy; });) {
        if (desk_->steps == seen) {
            desk_->is_closed = true;
            lock.unlock();
            desk_.reset();
            return false;
        }
        seen = desk_->steps;
    }
    if (const std::exception_ptr escaped = std::exchange(desk_->escaped, nullptr))
        std::rethrow_exception(escaped);
    return true;
}

} // namespace headless::audio
