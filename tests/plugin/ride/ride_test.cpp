// The whole ride on the headless host: the calls it makes, the envelope it leaves, the selection, the render,
// and what happens when something is missing.

#include "api/media/peak_levels.hpp"
#include "host/sws_functions.hpp"
#include "ride/ride.hpp"
#include "tests/headless/support/sound_files.hpp"
#include "tests/plugin/ride/plain_ride.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <set>

namespace {

using namespace mk_api::RIDESCRIBER;
using mk_test::PlainEnvelope;
using mk_test::PlainPeak;

const std::vector<std::string> sws_names = {
    "BR_EnvAlloc",    "BR_EnvSortPoints", "BR_EnvCountPoints",   "BR_EnvDeletePoint",  "BR_EnvFree",
    "BR_EnvGetPoint", "BR_EnvSetPoint",   "BR_EnvGetProperties", "BR_EnvSetProperties"};

headless::Workstation* real_host = nullptr;
PlainEnvelope log; // its calls only

// Notes a call on an envelope object (its numbers, not its pointers) and passes it on.
template <class T>
void append(std::string& line, T value) {
    if constexpr (std::is_same_v<T, double>)
        line += PlainEnvelope::text(" %a", value);
    else if constexpr (std::is_integral_v<T>)
        line += PlainEnvelope::text(" %d", value);
}

template <auto Name, class Signature>
struct Logged;

template <auto Name, class R, class... A>
struct Logged<Name, R(BR_Envelope*, A...)> {
    static R call(BR_Envelope* envelope, A... arguments) {
        std::string line = Name();
        (append(line, arguments), ...);
        log.calls.push_back(line);
        return reinterpret_cast<R (*)(BR_Envelope*, A...)>(real_host->function(Name()))(envelope,
                                                                                        arguments...);
    }
};

class Ride : public mk_test::BoundPlugin {
protected:
    Ride() {
        real_host = &workstation;
        log = {};
    }

    template <auto Name, class Signature>
    static void log_calls() {
        overrule(Name(), &Logged<Name, Signature>::call);
    }

    static void log_envelope_calls() {
        log_calls<[] { return "BR_EnvSortPoints"; }, sws::EnvSortPoints>();
        log_calls<[] { return "BR_EnvCountPoints"; }, sws::EnvCountPoints>();
        log_calls<[] { return "BR_EnvDeletePoint"; }, sws::EnvDeletePoint>();
        log_calls<[] { return "BR_EnvFree"; }, sws::EnvFree>();
        log_calls<[] { return "BR_EnvGetPoint"; }, sws::EnvGetPoint>();
        log_calls<[] { return "BR_EnvSetPoint"; }, sws::EnvSetPoint>();
        log_calls<[] { return "BR_EnvSetProperties"; }, sws::EnvSetProperties>();
    }

    static std::vector<PlainPeak> plain_peaks(headless::Item& item) {
        std::vector<mk_api::mediaItem::PeakLevel> levels;
        mk_api::mediaItem::read_peak_levels(handle(item), levels);
        std::vector<PlainPeak> peaks;
        for (std::size_t i = 0; i < levels.size(); ++i)
            peaks.push_back({static_cast<double>(i) * 0.001, levels[i].max_db, levels[i].min_db});
        return peaks;
    }

    /// The volume envelope of the take that was ridden, which lies beneath the render.
    static const headless::Envelope& ridden_envelope(headless::Item& item) {
        return *item.take(0)->envelope("Volume");
    }
};

struct Item {
    const char* name;
    double seconds;
    unsigned seed;
    int ratio_type;
};

class RideOnRecordings : public Ride, public ::testing::WithParamInterface<Item> {};

TEST_P(RideOnRecordings, makes_the_calls_and_leaves_the_points_of_the_plain_reckoning) {
    headless::Item& item = add_item(mk_test::babble(GetParam().seconds, 8000, GetParam().seed), 2.5);
    headless::Envelope& old = item.active_take()->add_envelope("Volume");
    old.set_points({{.position_seconds = 0.125, .value = 0.5}, {.position_seconds = 1.0, .value = 2.0}});
    old.properties.armed = true;
    item.active_take()->add_envelope("Pan");
    const PlainEnvelope plain =
        mk_test::plain_ride(plain_peaks(item), GetParam().ratio_type, {{0.125, 0.5}, {1.0, 2.0}});
    log_envelope_calls();

    EXPECT_TRUE(SetMediaItemRIDESCRIBER(handle(item), GetParam().ratio_type));

    // Two envelopes are switched off first, each in an object of its own.
    const std::string free = "BR_EnvFree 1";
    const std::vector<std::string> off{"BR_EnvSetProperties 0 0 1 1 0 0 0", free,
                                       "BR_EnvSetProperties 0 0 0 1 0 0 0", free};
    ASSERT_GE(log.calls.size(), off.size());
    EXPECT_EQ(std::vector(log.calls.begin(), log.calls.begin() + 4), off);
    EXPECT_EQ(std::vector(log.calls.begin() + 4, log.calls.end()), plain.calls);
    std::vector<PlainEnvelope::Point> left;
    for (const headless::EnvelopePoint& point : ridden_envelope(item).points())
        left.push_back({point.position_seconds, point.value});
    EXPECT_EQ(left, plain.points);
    EXPECT_TRUE(ridden_envelope(item).properties.active && ridden_envelope(item).properties.visible);
    EXPECT_TRUE(ridden_envelope(item).properties.armed) << "passes through as read";
    EXPECT_FALSE(item.take(0)->envelope("Pan")->properties.active);
    EXPECT_EQ(item.takes().size(), 2u);
    EXPECT_EQ(item.active_take()->name, "line.wav");
    EXPECT_EQ(item.volume, 1.0);
    EXPECT_TRUE(workstation.take_failures().empty());
}

INSTANTIATE_TEST_SUITE_P(Recordings, RideOnRecordings,
                         ::testing::Values(Item{"lightest", 3.0, 1, 0}, Item{"ratio_1", 3.001, 2, 1},
                                           Item{"ratio_2", 2.506, 3, 2}, Item{"hardest", 2.995, 4, 3},
                                           Item{"ratio_beyond", 2.008, 5, 4}, Item{"ratio_below", 1.0, 6, -5},
                                           Item{"one_window", 0.01, 7, 0}, Item{"only_a_tail", 0.009, 8, 0},
                                           Item{"window_and_tail", 0.016, 9, 3},
                                           Item{"too_short", 0.005, 10, 0}),
                         [](const auto& test) { return test.param.name; });

TEST_F(Ride, asks_for_its_functions_in_order_before_anything_else) {
    headless::Item& item = add_item(mk_test::babble(0.5, 8000, 1));
    for (std::size_t missing = 0; missing < sws_names.size(); ++missing) {
        messages.clear();
        overrule(sws_names[missing], static_cast<void*>(nullptr));
        SetMediaItemSelected(handle(item), true);
        EXPECT_FALSE(SetMediaItemRIDESCRIBER(handle(item), 0)) << sws_names[missing];
        ASSERT_EQ(messages.size(), 1u) << sws_names[missing];
        EXPECT_TRUE(
            messages[0].starts_with("To use MK_SetMediaItemRideScriber, you need to install SWS Extension."));
        EXPECT_EQ(item.takes().size(), 1u);
        EXPECT_TRUE(item.active_take()->envelopes().empty());
        EXPECT_TRUE(item.selected());
        overrule(sws_names[missing], workstation.function(sws_names[missing].c_str()));
    }
}

TEST_F(Ride, keeps_the_selection_whether_or_not_the_item_is_in_it) {
    headless::Item& first = add_item(mk_test::babble(0.5, 8000, 1), 0.0, "1.wav");
    headless::Item& second = add_item(mk_test::babble(0.5, 8000, 2), 0.0, "2.wav");
    headless::Item& third = add_item(mk_test::babble(0.5, 8000, 3), 0.0, "3.wav");
    SetMediaItemSelected(handle(first), true);
    SetMediaItemSelected(handle(third), true);
    EXPECT_TRUE(SetMediaIdRIDESCRIBER(nullptr, 1, 0));
    EXPECT_TRUE(SetSelectedMediaIdRIDESCRIBER(nullptr, 1, 0));
    EXPECT_EQ(second.takes().size(), 2u);
    EXPECT_EQ(third.takes().size(), 2u);
    EXPECT_TRUE(first.selected() && !second.selected() && third.selected());
}

TEST_F(Ride, crops_an_item_of_several_takes_to_the_active_one) {
    headless::Item& item = add_item(mk_test::babble(1.0, 8000, 1), 0.0, "old.wav");
    const auto newer = headless::test::write_sound(folder / "new.wav", mk_test::babble(1.0, 8000, 2), 8000);
    headless::Source source = item.take(0)->source;
    source.file = newer;
    item.set_active_take(item.add_take(source, "new"));
    EXPECT_TRUE(SetMediaItemRIDESCRIBER(handle(item), 0));
    ASSERT_EQ(item.takes().size(), 2u);
    EXPECT_EQ(item.take(0)->source.file, newer);
    EXPECT_EQ(item.active_take(), item.take(1));
    EXPECT_EQ(item.take(1)->name, "new");
}

TEST_F(Ride, of_an_item_without_level_leaves_one_point_and_renders) {
    headless::Item& item = add_item(mk_test::babble(0.5, 8000, 1));
    item.set_length_seconds(0.0004);
    EXPECT_TRUE(SetMediaItemRIDESCRIBER(handle(item), 0));
    ASSERT_EQ(ridden_envelope(item).points().size(), 1u);
    EXPECT_EQ(ridden_envelope(item).points()[0], headless::EnvelopePoint{});
}

TEST_F(Ride, fails_on_what_cannot_be_ridden_and_keeps_the_selection) {
    headless::Item& item = add_item(mk_test::babble(0.5, 8000, 1));
    SetMediaItemSelected(handle(item), true);
    EXPECT_FALSE(SetMediaItemRIDESCRIBER(nullptr, 0));
    EXPECT_FALSE(SetMediaIdRIDESCRIBER(nullptr, 7, 0));
    EXPECT_FALSE(SetSelectedMediaIdRIDESCRIBER(nullptr, 1, 0));
    EXPECT_FALSE(SetMediaItemRIDESCRIBER(handle(item.track().add_item(5.0, 1.0)), 0)) << "no take";
    GetTakeEnvelopeByName = [](MediaItem_Take*, const char*) -> TrackEnvelope* { return nullptr; };
    EXPECT_FALSE(SetMediaItemRIDESCRIBER(handle(item), 0)) << "a host that gives no envelope";
    EXPECT_TRUE(item.selected());
    EXPECT_EQ(item.takes().size(), 1u);
    EXPECT_TRUE(messages.empty());
}

TEST_F(Ride, on_a_list_goes_on_after_an_item_that_fails) {
    headless::Item& first = add_item(mk_test::babble(0.5, 8000, 1), 0.0, "1.wav");
    headless::Item& second = add_item(mk_test::babble(0.5, 8000, 2), 0.0, "2.wav");
    EXPECT_EQ(SetMediaItemListRIDESCRIBER({handle(first), nullptr, handle(second)}, 0), 0);
    EXPECT_EQ(first.takes().size() + second.takes().size(), 4u);
    overrule("BR_EnvAlloc", static_cast<void*>(nullptr));
    EXPECT_EQ(SetMediaItemListRIDESCRIBER({}, 0), 0);
    EXPECT_TRUE(messages.empty()) << "an empty list looks nothing up";
    EXPECT_EQ(SetMediaItemListRIDESCRIBER({handle(first), handle(second)}, 0), 0);
    EXPECT_EQ(messages.size(), 2u) << "once an item";
}

} // namespace
