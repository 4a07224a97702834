#include "headless/audio/audio_store.hpp"
#include "tests/headless/host/host_fixture.hpp"

#include <gmock/gmock.h>

namespace headless {
namespace {

using testing::HasSubstr;

constexpr int crop = 40131;
constexpr int render = 41999;
constexpr int toggle_volume = 40693;

class Commands : public HostTest {
protected:
    void run(int command) { call<void(int, int, ReaProject*)>("Main_OnCommandEx", command, 0, nullptr); }

    std::string only_failure() {
        const auto failures = workstation.take_failures();
        EXPECT_EQ(failures.size(), 1U);
        return failures.empty() ? "" : failures.front().message;
    }
};

TEST_F(Commands, render_what_is_heard_of_the_selected_items) {
    Item& item = insert_level("line.wav", 0.5F, 1.0, 3.0);
    Item& other = insert_level("other.wav", 0.5F, 1.0);
    Take* source = item.active_take();
    source->name = "scene 1/line.wav";
    source->volume = 2.0;
    source->pan = 0.5;
    source->start_offset_seconds = 0.5;
    item.volume = 0.1;
    item.set_length_seconds(0.75);
    source->add_envelope("Volume").set_points({{0.0, 1.0}, {0.25, 0.0}, {0.25, 1.5}});
    item.set_selected(true);
    run(render);
    EXPECT_TRUE(workstation.take_failures().empty());
    EXPECT_EQ(other.takes().size(), 1U);
    ASSERT_EQ(item.takes().size(), 2U);
    const Take& rendered = *item.active_take();
    EXPECT_EQ(rendered.name, "scene 1/line render 001");
    EXPECT_EQ(rendered.source.file, folder / "scene 1_line.wav");
    EXPECT_EQ(rendered.volume, 1.0);
    EXPECT_EQ(rendered.pan, 0.5);
    EXPECT_EQ(rendered.start_offset_seconds, 0.0);
    EXPECT_EQ(item.take(0), source);

    const Recording result = read_recording(rendered.source.file);
    EXPECT_EQ(result.sample_rate, 8000);
    EXPECT_EQ(result.channels, 1);
    ASSERT_EQ(result.samples.size(), 6000U);
    EXPECT_EQ(result.samples[0], 1.0F);
    EXPECT_EQ(result.samples[1000], 0.5F) << "halfway down the envelope";
    EXPECT_EQ(result.samples[2000], 1.5F) << "after its step, not clipped";
    EXPECT_EQ(result.samples[4000], 0.0F) << "the file has ended";
}

TEST_F(Commands, render_without_an_envelope_that_is_off) {
    Item& item = insert_level("line.wav", 0.5F, 0.1);
    Envelope& envelope = item.active_take()->add_envelope("Volume");
    envelope.set_points({{0.0, 0.0}});
    envelope.properties.active = false;
    item.set_selected(true);
    run(render);
    EXPECT_EQ(read_recording(item.active_take()->source.file).samples[100], 0.5F);
}

TEST_F(Commands, never_overwrite_a_file_unasked) {
    Item& item = insert_level("line.wav", 0.5F, 0.1);
    item.set_selected(true);
    run(render);
    EXPECT_EQ(item.active_take()->source.file, folder / "line-001.wav") << "line.wav is the source";
    item.set_active_take(*item.take(0));
    run(render);
    EXPECT_EQ(item.active_take()->source.file, folder / "line-002.wav");

    item.set_active_take(*item.take(0));
    workstation.allow_replacing([](const std::filesystem::path&) { return true; });
    run(render);
    EXPECT_EQ(item.active_take()->source.file, folder / "line-003.wav") << "not even asked: its own source";
    item.active_take()->name = "line-001";
    run(render);
    EXPECT_EQ(item.active_take()->source.file, folder / "line-001.wav");
    EXPECT_TRUE(workstation.take_failures().empty());
}

struct FailureCase {
    const char* name;
    void (*spoil)(Item&, Project&);
    const char* message;
};

class RenderFailure : public Commands, public testing::WithParamInterface<FailureCase> {};

TEST_P(RenderFailure, leaves_the_item_as_it_was) {
    Item& item = insert_level("line.wav", 0.5F, 0.1);
    item.set_selected(true);
    GetParam().spoil(item, workstation.project());
    run(render);
    EXPECT_EQ(item.takes().size(), 1U);
    EXPECT_THAT(only_failure(), HasSubstr(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    Causes, RenderFailure,
    testing::Values(
        FailureCase{"play_rate", [](Item& item, Project&) { item.active_take()->play_rate = 2.0; },
                    "'line.wav': a play rate other than 1"},
        FailureCase{"no_length", [](Item& item, Project&) { item.set_length_seconds(0.0); }, "length"},
        FailureCase{"endless", [](Item& item, Project&) { item.set_length_seconds(1e300); }, "length"},
        FailureCase{"repeating_source",
                    [](Item& item, Project&) {
                        item.loop = true;
                        item.set_length_seconds(1.0);
                    },
                    "repeats"},
        FailureCase{"no_folder", [](Item&, Project& project) { project.record_path /= "missing"; },
                    "missing"},
        FailureCase{"source_gone",
                    [](Item& item, Project&) { std::filesystem::remove(item.active_take()->source.file); },
                    "line.wav"}),
    [](const auto& test) { return test.param.name; });

TEST_F(Commands, toggle_the_volume_envelope_of_the_active_take) {
    Item& item = insert_level("line.wav", 0.5F, 0.1);
    item.set_selected(true);
    run(toggle_volume);
    Envelope* envelope = item.active_take()->envelope("Volume");
    ASSERT_NE(envelope, nullptr);
    EXPECT_TRUE(envelope->properties.active);
    EXPECT_EQ(envelope->points().size(), 1U);
    EXPECT_EQ(envelope->points()[0], (EnvelopePoint{0.0, 1.0}));
    run(toggle_volume);
    EXPECT_FALSE(envelope->properties.active || envelope->properties.visible);
    run(toggle_volume);
    EXPECT_TRUE(envelope->properties.active && envelope->properties.visible);
}

TEST_F(Commands, crop_to_the_active_take_and_report_what_they_are_not) {
    Item& item = insert_level("line.wav", 0.5F, 0.1);
    Take& second = item.add_take({}, "second");
    item.set_active_take(second);
    item.set_selected(true);
    run(crop);
    EXPECT_EQ(item.takes().size(), 1U);
    EXPECT_EQ(item.active_take(), &second);
    run(40001);
    EXPECT_THAT(only_failure(), HasSubstr("40001"));
}

} // namespace
} // namespace headless
