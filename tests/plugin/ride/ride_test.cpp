// The whole ride on the headless host: the calls it makes, the envelope it leaves, the selection, the render,
// and what happens when something is missing.

#include "host_api/sws_functions.hpp"
#include "ride/requirements.hpp"
#include "ride/ride.hpp"
#include "tests/plugin/ride/plain_ride.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <algorithm>
#include <ios>
#include <sstream>

namespace {

using namespace mk_api::RIDESCRIBER;
using mk_test::babble;

/// The calls on envelope objects: their numbers to the last bit, not their pointers.
std::vector<std::string> calls;

/// Notes a call and passes it on to the host. No two of the functions have one signature.
template <class Signature>
struct Logged;

template <class R, class... A>
struct Logged<R(BR_Envelope*, A...)> {
    static inline const char* name = nullptr;
    static R call(BR_Envelope* envelope, A... arguments) {
        std::ostringstream line;
        line << name << std::hexfloat;
        [[maybe_unused]] const auto append = [&]([[maybe_unused]] auto argument) {
            if constexpr (!std::is_pointer_v<decltype(argument)>)
                line << ' ' << argument;
        };
        (append(arguments), ...);
        calls.push_back(line.str());
        return headless::workstation::Workstation::current()->function_as<R(BR_Envelope*, A...)>(name)(
            envelope, arguments...);
    }
};

class Ride : public mk_test::BoundPlugin {
protected:
    Ride() {
        calls.clear();
        log<sws::EnvSortPoints>("BR_EnvSortPoints");
        log<sws::EnvCountPoints>("BR_EnvCountPoints");
        log<sws::EnvDeletePoint>("BR_EnvDeletePoint");
        log<sws::EnvFree>("BR_EnvFree");
        log<sws::EnvGetPoint>("BR_EnvGetPoint");
        log<sws::EnvSetPoint>("BR_EnvSetPoint");
        log<sws::EnvSetProperties>("BR_EnvSetProperties");
    }

    template <class Signature>
    static void log(const char* name) {
        Logged<Signature>::name = name;
        overrule(name, &Logged<Signature>::call);
    }
};

/// Writes the plain reckoning's curve, call by call.
void plain_ride(BR_Envelope* envelope, const mk_test::Peaks& peaks, int ratio_type) {
    const auto remove = [&](int id) { Logged<sws::EnvDeletePoint>::call(envelope, id); };
    const auto set = [&](int id, double position, double value) {
        Logged<sws::EnvSetPoint>::call(envelope, id, position, value, 0, false, 0.0);
    };
    const auto get = [&](int id) { // position, and distance from unity
        double position, value;
        Logged<sws::EnvGetPoint>::call(envelope, id, &position, &value, nullptr, nullptr, nullptr);
        return std::pair(position, std::abs(1.0 - value));
    };
    Logged<sws::EnvSortPoints>::call(envelope);
    for (int id = Logged<sws::EnvCountPoints>::call(envelope); id >= 1; --id)
        remove(id);
    set(0, 0.0, 1.0);
    mk_test::PlainScan scan = mk_test::plain_scan(peaks);
    for (const auto& window : scan.windows)
        set(-1, window.pos, 1.0);
    mk_test::plain_assign(scan, ratio_type);
    for (std::size_t i = 0; i < scan.windows.size(); ++i)
        if (scan.windows[i].point_value)
            set(static_cast<int>(i), scan.windows[i].pos, *scan.windows[i].point_value);
    const std::vector<int> flat = mk_test::plain_flat(scan);
    std::for_each(flat.rbegin(), flat.rend(), remove);
    for (int id = Logged<sws::EnvCountPoints>::call(envelope) - 1; id >= 2; --id) {
        const auto [high, high_distance] = get(id);
        const auto [low, low_distance] = get(id - 1);
        if (high == low && high_distance != low_distance)
            remove(low_distance > high_distance ? id : id - 1);
    }
    Logged<sws::EnvFree>::call(envelope, true);
}

class RideOnRecordings : public Ride, public ::testing::WithParamInterface<std::pair<double, int>> {};

TEST_P(RideOnRecordings, EqualsThePlainReckoning) {
    const auto [seconds, ratio_type] = GetParam();
    headless::project::Item& item = add_item(babble(seconds, 1), 2.5);
    headless::project::Take& take = *item.active_take(); // beneath the render, later
    const auto add_envelope = [&take](const char* envelope_name) -> headless::project::Envelope& {
        headless::project::Envelope& envelope = take.add_envelope(envelope_name);
        envelope.set_points(
            {{.position_seconds = 0.125, .value = 0.5}, {.position_seconds = 1.0, .value = 2.0}});
        envelope.properties.armed = true;
        return envelope;
    };
    headless::project::Envelope& volume = add_envelope("Volume");
    headless::project::Envelope& twin = add_envelope("Pan");
    mk_test::Peaks peaks;
    mk_api::mediaItem::read_peak_levels(handle(item), peaks);

    EXPECT_TRUE(SetMediaItemRIDESCRIBER(handle(item), ratio_type));

    EXPECT_TRUE(volume.properties.active);
    EXPECT_TRUE(volume.properties.visible);
    EXPECT_TRUE(volume.properties.armed) << "passes through as read";
    EXPECT_FALSE(twin.properties.active);
    EXPECT_FALSE(twin.properties.visible);
    EXPECT_EQ(item.takes().size(), 2u);
    EXPECT_EQ(item.active_take()->name, "line.wav");
    EXPECT_EQ(item.volume, 1.0);
    EXPECT_TRUE(workstation.take_failures().empty());
    const std::vector<std::string> made = std::exchange(calls, {});
    // Each of the two envelopes is switched off in an object of its own, then one is switched on.
    const std::string off = "BR_EnvSetProperties 0 0 1 1 0 0 0", free = "BR_EnvFree 1";
    calls = {off, free, off, free, "BR_EnvSetProperties 1 1 1 1 0 0 0"};
    auto* allocate = workstation.function_as<sws::EnvAlloc>("BR_EnvAlloc");
    plain_ride(allocate(GetTakeEnvelopeByName(GetTake(handle(item), 0), "Pan"), false), peaks, ratio_type);
    EXPECT_EQ(made, calls);
    EXPECT_TRUE(std::ranges::equal(volume.points(), twin.points()));
}

// The last three: one window, a window and a tail, and not one level.
INSTANTIATE_TEST_SUITE_P(Recordings, RideOnRecordings,
                         ::testing::Values(std::pair(3.0, 0), std::pair(3.001, 1), std::pair(2.995, 3),
                                           std::pair(0.01, 0), std::pair(0.016, 3), std::pair(0.0004, 0)));

TEST_F(Ride, ChangesNothingWithoutAFunctionOfSws) {
    headless::project::Item& item = add_item(babble(0.5, 1));
    SetMediaItemSelected(handle(item), true);
    for (const char* missing :
         {"BR_EnvAlloc", "BR_EnvSortPoints", "BR_EnvCountPoints", "BR_EnvDeletePoint", "BR_EnvFree",
          "BR_EnvGetPoint", "BR_EnvSetPoint", "BR_EnvGetProperties", "BR_EnvSetProperties"}) {
        messages.clear();
        overrule(missing, static_cast<void*>(nullptr));
        EXPECT_FALSE(can_ride()) << missing;
        EXPECT_FALSE(SetMediaItemRIDESCRIBER(handle(item), 0)) << missing;
        ASSERT_EQ(messages.size(), 1u) << missing;
        EXPECT_TRUE(
            messages[0].starts_with("To use MK_SetMediaItemRideScriber, you need to install SWS Extension."));
        EXPECT_EQ(item.takes().size(), 1u);
        EXPECT_TRUE(item.active_take()->envelopes().empty());
        EXPECT_TRUE(item.selected());
        overrule(missing, workstation.function(missing));
    }
}

TEST_F(Ride, KeepsTheSelection) {
    headless::project::Item& first = add_item(babble(0.5, 1), 0.0, "1.wav");
    headless::project::Item& second = add_item(babble(0.5, 2), 0.0, "2.wav");
    second.set_selected(true);
    EXPECT_TRUE(SetMediaIdRIDESCRIBER(nullptr, 0, 0));
    EXPECT_TRUE(SetSelectedMediaIdRIDESCRIBER(nullptr, 0, 0));
    EXPECT_EQ(first.takes().size() + second.takes().size(), 4u);
    EXPECT_FALSE(first.selected());
    EXPECT_TRUE(second.selected());
}

TEST_F(Ride, FailsWithoutTakeOrEnvelope) {
    headless::project::Item& item = add_item(babble(0.5, 1));
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

TEST_F(Ride, ContinuesAListAfterAFailure) {
    headless::project::Item& first = add_item(babble(0.5, 1), 0.0, "1.wav");
    headless::project::Item& second = add_item(babble(0.5, 2), 0.0, "2.wav");
    EXPECT_EQ(SetMediaItemListRIDESCRIBER({handle(first), nullptr, handle(second)}, 0), 0);
    EXPECT_EQ(first.takes().size() + second.takes().size(), 4u);
    overrule("BR_EnvAlloc", static_cast<void*>(nullptr));
    EXPECT_EQ(SetMediaItemListRIDESCRIBER({}, 0), 0);
    EXPECT_TRUE(messages.empty()) << "an empty list looks nothing up";
    EXPECT_EQ(SetMediaItemListRIDESCRIBER({handle(first), handle(second)}, 0), 0);
    EXPECT_EQ(messages.size(), 2u) << "once an item";
}

} // namespace
