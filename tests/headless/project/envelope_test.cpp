#include "headless/project/envelope.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace headless {
namespace {

Envelope envelope_of(std::vector<EnvelopePoint> points) {
    Envelope envelope("Volume");
    envelope.set_points(std::move(points));
    return envelope;
}

TEST(Envelope, is_a_straight_line_between_points_and_flat_outside) {
    const Envelope envelope = envelope_of({{1.0, 2.0}, {3.0, 4.0}});
    EXPECT_EQ(envelope.value_at(-1.0), 2.0);
    EXPECT_EQ(envelope.value_at(1.5), 2.5);
    EXPECT_EQ(envelope.value_at(3.0), 4.0);
    EXPECT_EQ(envelope.value_at(99.0), 4.0);
    EXPECT_EQ(Envelope("Volume").value_at(0.0), 1.0);
}

TEST(Envelope, steps_where_two_points_share_a_position) {
    const Envelope envelope = envelope_of({{2.0, 0.5}, {1.0, 1.0}, {1.0, 0.25}});
    EXPECT_EQ(envelope.points_up_to(1.0), 2U);
    EXPECT_EQ(envelope.value_at(0.999), 1.0);
    EXPECT_EQ(envelope.value_at(1.0), 0.25);
}

TEST(Envelope, leaves_out_points_that_are_no_numbers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Envelope envelope = envelope_of({{nan, 1.0}, {0.0, 0.5}, {1.0, nan}});
    EXPECT_EQ(envelope.points().size(), 1U);
    EXPECT_EQ(envelope.value_at(7.0), 0.5);
}

struct ShapeCase {
    const char* name;
    PointShape shape;
    double tension;
    double quarter; // value a quarter of the way from 0 to 1
    double half;
};

class ShapeTest : public testing::TestWithParam<ShapeCase> {};

TEST_P(ShapeTest, rises_from_one_point_to_the_next_without_turning_back) {
    const ShapeCase& shape = GetParam();
    const Envelope envelope =
        envelope_of({{0.0, 0.0, shape.shape, false, shape.tension}, {1.0, 1.0, shape.shape, false, 0.0}});
    EXPECT_EQ(envelope.value_at(0.0), 0.0);
    EXPECT_NEAR(envelope.value_at(0.25), shape.quarter, 1e-12);
    EXPECT_NEAR(envelope.value_at(0.5), shape.half, 1e-12);
    EXPECT_EQ(envelope.value_at(1.0), 1.0);
    for (double position = 0.01; position < 1.0; position += 0.01) {
        EXPECT_GE(envelope.value_at(position), envelope.value_at(position - 0.01));
    }
}

// A bezier of full tension follows x = 1 - (1 - s)^2, y = s^2 (or the two exchanged).
INSTANTIATE_TEST_SUITE_P(
    Shapes, ShapeTest,
    testing::Values(ShapeCase{"linear", PointShape::linear, 0.0, 0.25, 0.5},
                    ShapeCase{"square", PointShape::square, 0.0, 0.0, 0.0},
                    ShapeCase{"slow_start_end", PointShape::slow_start_end, 0.0, 0.15625, 0.5},
                    ShapeCase{"fast_start", PointShape::fast_start, 0.0, 0.578125, 0.875},
                    ShapeCase{"fast_end", PointShape::fast_end, 0.0, 0.015625, 0.125},
                    ShapeCase{"straight_bezier", PointShape::bezier, 0.0, 0.25, 0.5},
                    ShapeCase{"late_bezier", PointShape::bezier, 1.0, std::pow(1.0 - std::sqrt(0.75), 2),
                              std::pow(1.0 - std::sqrt(0.5), 2)},
                    ShapeCase{"early_bezier", PointShape::bezier, -1.0, 0.75, 2.0 * std::sqrt(0.5) - 0.5}),
    [](const auto& test) { return test.param.name; });

} // namespace
} // namespace headless
