#include "headless/project/envelope.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace headless {
namespace {

project::Envelope envelope_of(std::vector<project::EnvelopePoint> points) {
    project::Envelope envelope("Volume");
    envelope.set_points(std::move(points));
    return envelope;
}

TEST(Envelope, IsLinearBetweenPointsAndFlatOutside) {
    const project::Envelope envelope = envelope_of({{3.0, 4.0}, {1.0, 2.0}, {3.0, 0.5}});
    EXPECT_EQ(envelope.value_at(-1.0), 2.0);
    EXPECT_EQ(envelope.value_at(1.5), 2.5);
    EXPECT_NEAR(envelope.value_at(3.0 - 1e-9), 4.0, 1e-8);
    EXPECT_EQ(envelope.value_at(3.0), 0.5);
    EXPECT_EQ(envelope.value_at(99.0), 0.5);
    EXPECT_EQ(envelope.points_up_to(3.0), 3U);
    EXPECT_EQ(project::Envelope("Volume").value_at(0.0), 1.0);
}

TEST(Envelope, LeavesOutNonFinitePoints) {
    const double nan = std::nan("");
    const project::Envelope envelope = envelope_of({{nan, 1.0}, {0.0, 0.5}, {1.0, nan}});
    EXPECT_EQ(envelope.points().size(), 1U);
    EXPECT_EQ(envelope.value_at(7.0), 0.5);
}

TEST(Envelope, RisesInEveryShape) {
    struct Rise {
        project::PointShape shape;
        double tension, quarter, half; // the values a quarter and half of the way from 0 to 1
    };
    // A bezier of full tension follows x = 1 - (1 - s)^2, y = s^2 (or the two exchanged).
    for (const auto& [shape, tension, quarter, half] :
         {Rise{project::PointShape::linear, 0.0, 0.25, 0.5},
          {project::PointShape::square, 0.0, 0.0, 0.0},
          {project::PointShape::slow_start_end, 0.0, 0.15625, 0.5},
          {project::PointShape::fast_start, 0.0, 0.578125, 0.875},
          {project::PointShape::fast_end, 0.0, 0.015625, 0.125},
          {project::PointShape::bezier, 0.0, 0.25, 0.5},
          {project::PointShape::bezier, 1.0, std::pow(1.0 - std::sqrt(0.75), 2),
           std::pow(1.0 - std::sqrt(0.5), 2)},
          {project::PointShape::bezier, -1.0, 0.75, 2.0 * std::sqrt(0.5) - 0.5}}) {
        SCOPED_TRACE(testing::Message() << "shape " << static_cast<int>(shape) << ", tension " << tension);
        const project::Envelope envelope =
            envelope_of({{0.0, 0.0, shape, false, tension}, {1.0, 1.0, shape}});
        EXPECT_NEAR(envelope.value_at(0.25), quarter, 1e-12);
        EXPECT_NEAR(envelope.value_at(0.5), half, 1e-12);
        for (double position = 0.01; position <= 1.0; position += 0.01)
            EXPECT_GE(envelope.value_at(position), envelope.value_at(position - 0.01));
    }
}

} // namespace
} // namespace headless
