#include "tests/headless/workstation/host_fixture.hpp"

namespace headless {
namespace {

constexpr int render = 41999;
constexpr int toggle_volume = 40693;

class Commands : public HostTest {
protected:
    void run(int command) { function<void(int, int, ReaProject*)>("Main_OnCommandEx")(command, 0, nullptr); }

    project::Item& insert_selected_item() {
        project::Item& item = insert_item();
        item.set_selected(true);
        return item;
    }

    std::filesystem::path rendered_again(project::Item& item) {
        item.set_active_take(*item.take(0));
        run(render);
        return item.active_take()->source.file;
    }
};

TEST_F(Commands, RenderSelectedItemsAsHeard) {
    project::Item& item = insert_item(std::vector<float>(8000, 0.5F), 3.0);
    project::Item& other = insert_item({0.5F}, 0.0, "other.wav");
    project::Take& source = *item.active_take();
    source.name = "scene 1/line.wav";
    source.volume = 2.0;
    source.pan = 0.5;
    source.start_offset_seconds = 0.5;
    item.volume = 0.1;
    item.set_length_seconds(0.75);
    project::Envelope& envelope = source.add_envelope("Volume");
    envelope.set_points({{0.0, 1.0}, {0.25, 0.0}, {0.25, 1.5}});
    item.set_selected(true);
    run(render);
    EXPECT_TRUE(workstation.take_failures().empty());
    EXPECT_EQ(other.takes().size(), 1U);
    ASSERT_EQ(item.takes().size(), 2U);
    const project::Take& rendered = *item.active_take();
    EXPECT_EQ(rendered.name, "scene 1/line render 001");
    EXPECT_EQ(rendered.source, (project::Source{folder / "scene 1_line.wav", "WAVE", 8000, 1, 6000}));
    EXPECT_EQ(rendered.volume, 1.0);
    EXPECT_EQ(rendered.pan, 0.5);
    EXPECT_EQ(rendered.start_offset_seconds, 0.0);

    const auto samples = test::read_sound(rendered.source.file).samples;
    ASSERT_EQ(samples.size(), 6000U);
    EXPECT_EQ(samples[0], 1.0F);
    EXPECT_EQ(samples[1000], 0.5F) << "halfway down the envelope";
    EXPECT_EQ(samples[2000], 1.5F) << "after its step, not clipped";
    EXPECT_EQ(samples[4000], 0.0F) << "the file has ended";
    envelope.properties.active = false;
    EXPECT_EQ(test::read_sound(rendered_again(item)).samples.at(1000), 1.0F) << "an envelope that is off";
}

TEST_F(Commands, KeepExistingFilesUnlessAllowed) {
    project::Item& item = insert_selected_item();
    EXPECT_EQ(rendered_again(item), folder / "line-001.wav") << "line.wav is the source";
    EXPECT_EQ(rendered_again(item), folder / "line-002.wav");
    workstation.judge_existing_render = [](const std::filesystem::path&) {
        return workstation::ExistingRender::replace;
    };
    EXPECT_EQ(rendered_again(item), folder / "line-003.wav") << "not even asked: its own source";
    item.take(0)->name = "line-001";
    EXPECT_EQ(rendered_again(item), folder / "line-001.wav");
    EXPECT_TRUE(workstation.take_failures().empty());
}

TEST_F(Commands, KeepItemsThatCannotBeRendered) {
    const std::pair<const char*, void (*)(project::Item&)> causes[] = {
        {"'line.wav': a play rate", [](project::Item& item) { item.active_take()->play_rate = 2.0; }},
        {"no usable length", [](project::Item& item) { item.set_length_seconds(1e300); }},
        {"mute envelope",
         [](project::Item& item) {
             item.active_take()->add_envelope("Mute").set_points({{0.0, 0.0}});
         }},
        {"line.wav", [](project::Item& item) { std::filesystem::remove(item.active_take()->source.file); }},
        {"missing", [](project::Item& item) { item.track().project().record_path /= "missing"; }}};
    for (const auto& [message, spoil] : causes) {
        project::Item& item = insert_selected_item();
        spoil(item);
        run(render);
        EXPECT_EQ(item.takes().size(), 1U) << message;
        EXPECT_THAT(workstation.take_failures(), ElementsAre(tells(message)));
        item.set_selected(false);
    }
    insert_selected_item();
    workstation.note_failed_call();
    run(render);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("a host function failed before")));
    run(render);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("missing")))
        << "asked about, it is tried again";
}

TEST_F(Commands, ToggleTheVolumeEnvelope) {
    project::Item& item = insert_selected_item();
    for (const bool is_on : {true, false, true}) {
        run(toggle_volume);
        const project::Envelope* envelope = item.active_take()->envelope("Volume");
        ASSERT_NE(envelope, nullptr);
        EXPECT_THAT(envelope->points(), ElementsAre(project::EnvelopePoint{0.0, 1.0}));
        EXPECT_EQ(envelope->properties.active, is_on);
        EXPECT_EQ(envelope->properties.visible, is_on);
    }
}

TEST_F(Commands, ReportUnknownNumbers) {
    run(40001);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("40001")));
}

} // namespace
} // namespace headless
