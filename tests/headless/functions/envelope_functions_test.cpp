#include "tests/headless/workstation/host_fixture.hpp"

#include <limits>

namespace headless {
namespace {

class EnvelopeFunctions : public HostTest {
protected:
    EnvelopeFunctions() {
        project::Item& item = project.insert_track(0).add_item(10.0, 1.0);
        envelope = &item.add_take({}, "take").add_envelope("Volume");
        envelope->set_points({{0.0, 1.0}, {1.0, 0.5}});
    }

    BR_Envelope* take_out(bool project_time = false) {
        const auto allocate = function<BR_Envelope*(TrackEnvelope*, bool)>("BR_EnvAlloc");
        return allocate(workstation::Workstation::handle(*envelope), project_time);
    }

    bool set(BR_Envelope* object, int id, double position, double value) {
        return function<bool(BR_Envelope*, int, double, double, int, bool, double)>("BR_EnvSetPoint")(
            object, id, position, value, 0, false, 0.0);
    }

    double position_of(BR_Envelope* object, int id) {
        double position = -1.0;
        EXPECT_TRUE((function<bool(BR_Envelope*, int, double*, double*, int*, bool*, double*)>(
            "BR_EnvGetPoint")(object, id, &position, nullptr, nullptr, nullptr, nullptr)));
        return position;
    }

    bool (*free)(BR_Envelope*, bool) = function<bool(BR_Envelope*, bool)>("BR_EnvFree");
    project::Envelope* envelope;
};

TEST_F(EnvelopeFunctions, PointsKeepTheirIndicesUntilSorted) {
    const auto remove = function<bool(BR_Envelope*, int)>("BR_EnvDeletePoint");
    BR_Envelope* object = take_out();
    EXPECT_TRUE(set(object, 1, 1.0, 4.0)) << "before the last one is created, so not counted";
    EXPECT_TRUE(set(object, -1, 0.5, 2.0));
    EXPECT_TRUE(set(object, 0, 9.0, 0.25));
    EXPECT_EQ(position_of(object, 0), 9.0);
    EXPECT_EQ(position_of(object, 2), 0.5);
    EXPECT_FALSE(set(object, 3, 0.0, 1.0));
    EXPECT_FALSE(set(object, -1, std::numeric_limits<double>::infinity(), 1.0));
    EXPECT_FALSE(remove(object, 3));
    EXPECT_TRUE(remove(object, 1));
    function<void(BR_Envelope*)>("BR_EnvSortPoints")(object);
    EXPECT_EQ(position_of(object, 0), 0.5);
    EXPECT_TRUE(free(object, true));
    EXPECT_THAT(envelope->points(),
                ElementsAre(project::EnvelopePoint{0.5, 2.0}, project::EnvelopePoint{9.0, 0.25}));
    const auto [created, rewritten, deleted, kept] = workstation.last_envelope_edit();
    EXPECT_THAT((std::vector{created, rewritten, deleted, kept}), ElementsAre(1, 1, 1, 2));
}

TEST_F(EnvelopeFunctions, OnlyCommittedChangesAreWritten) {
    BR_Envelope* dropped = take_out();
    set(dropped, 0, 0.0, 7.0);
    EXPECT_FALSE(free(dropped, false));
    EXPECT_EQ(envelope->value_at(0.0), 1.0);
    EXPECT_FALSE(free(dropped, true)) << "released already";
    BR_Envelope* unchanged = take_out();
    set(unchanged, 0, 0.0, 1.0);
    EXPECT_FALSE(free(unchanged, true));
    BR_Envelope* hidden = take_out();
    function<void(BR_Envelope*, bool, bool, bool, bool, int, int, bool, int*)>("BR_EnvSetProperties")(
        hidden, false, false, true, true, 40, 5, false, nullptr);
    BR_Envelope* orphan = take_out();
    EXPECT_TRUE(free(hidden, true));
    EXPECT_EQ(envelope->properties, (project::EnvelopeProperties{false, false, true, true, 40,
                                                                 project::PointShape::bezier, false, -1}));
    set(orphan, 0, 0.0, 7.0);
    project.erase_track(*project.track(0));
    EXPECT_FALSE(free(orphan, true)) << "its envelope has gone";
}

TEST_F(EnvelopeFunctions, PositionsAreThoseOfTheItemAtEveryPlayRate) {
    envelope->take->play_rate = 2.0; // the envelope runs in the time of the source
    BR_Envelope* object = take_out();
    EXPECT_EQ(position_of(object, 1), 0.5);
    EXPECT_TRUE(set(object, 1, 0.25, 0.5));
    EXPECT_TRUE(free(object, true));
    EXPECT_EQ(envelope->points()[1].position_seconds, 0.5);
}

TEST_F(EnvelopeFunctions, PositionsMayBeProjectTime) {
    BR_Envelope* object = take_out(true);
    EXPECT_EQ(position_of(object, 1), 11.0);
    EXPECT_TRUE(set(object, 1, 10.25, 0.5));
    EXPECT_TRUE(free(object, true));
    EXPECT_EQ(envelope->points()[1].position_seconds, 0.25);
}

} // namespace
} // namespace headless
