#include "headless/base/gap_buffer.hpp"

#include <gtest/gtest.h>

#include <deque>
#include <random>

namespace headless {
namespace {

template <class Stack>
class GapBufferTest : public testing::Test {};

using Stacks = testing::Types<std::vector<int>, std::deque<int>>;
TYPED_TEST_SUITE(GapBufferTest, Stacks);

TYPED_TEST(GapBufferTest, HoldsWhatAVectorHolds) {
    std::vector<int> expected{1, 2, 3};
    GapBuffer<int, TypeParam> buffer{std::span<const int>(expected)};
    std::mt19937 random(7);
    for (int step = 0; step < 3000; ++step) {
        const std::size_t index = random() % (expected.size() + 1);
        const auto place = expected.begin() + static_cast<std::ptrdiff_t>(index);
        if (place == expected.end() || random() % 5 < 3) {
            expected.insert(place, step);
            buffer.insert(index, step);
        } else {
            expected.erase(place);
            buffer.erase(index);
        }
        ASSERT_EQ(buffer.elements(), expected);
        for (std::size_t i = 0; i < expected.size(); i += 97)
            ASSERT_EQ(buffer[i], expected[i]);
    }
}

} // namespace
} // namespace headless
