#include "headless/audio/watchdog.hpp"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>

namespace headless {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds for_ever{600'000};

TEST(Watchdog, AbandonsAHangingJobAndRunsTheNext) {
    audio::Watchdog watchdog;
    std::promise<void> release;
    std::promise<void> released;
    const auto hanging = [gate = release.get_future().share(), &released](audio::Steps&) {
        gate.wait();
        released.set_value();
    };
    EXPECT_FALSE(watchdog.run(hanging, milliseconds(1)));
    bool is_done = false;
    EXPECT_TRUE(watchdog.run([&](audio::Steps&) { is_done = true; }, for_ever));
    EXPECT_TRUE(is_done);
    EXPECT_THROW(watchdog.run([](audio::Steps&) { throw std::length_error("too long"); }, for_ever),
                 std::length_error);
    EXPECT_TRUE(watchdog.run([](audio::Steps&) {}, for_ever));
    release.set_value();
    released.get_future().wait(); // it ran on, and nobody minded
}

} // namespace
} // namespace headless
