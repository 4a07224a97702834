// Actions on one item with the selection kept, the render, and envelopes switched off.

#include "api/media/actions.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

namespace {

using namespace mk_api::action;
using namespace mk_api::envelope;
using namespace mk_api::render;
using mk_test::babble;
using Items = std::vector<MediaItem*>;

Items selection() {
    Items items;
    for (int i = 0; i < CountSelectedMediaItems(nullptr); ++i)
        items.push_back(GetSelectedMediaItem(nullptr, i));
    return items;
}

std::vector<std::pair<int, Items>> commands; ///< and what was selected at the time

class Actions : public mk_test::BoundPlugin {
protected:
    static void log_commands() {
        commands.clear();
        Main_OnCommandEx = [](int command, int, ReaProject*) { commands.emplace_back(command, selection()); };
    }
    headless::project::Item& first = add_item(babble(0.5, 1), 0.0, "first.wav");
    headless::project::Item& second = add_item(babble(0.5, 2), 1.0, "second.wav");
    headless::project::Item& third = add_item(babble(0.5, 3), 2.0, "third.wav");
};

TEST_F(Actions, RestoreTheSelection) {
    log_commands();
    for (headless::project::Item* item : {&first, &third})
        SetMediaItemSelected(handle(*item), true);
    const Items before = selection();
    EXPECT_TRUE(ActionMediaItemSelectKeep(handle(second), 40131));
    EXPECT_TRUE(ActionSelectedMediaIdSelectKeep(nullptr, 1, 41999));
    const decltype(commands) expected{{40131, {handle(second)}}, {41999, {handle(third)}}};
    EXPECT_EQ(commands, expected);
    EXPECT_FALSE(ActionMediaItemSelectKeep(nullptr, 40131));
    EXPECT_FALSE(ActionMediaIdSelectKeep(nullptr, 3, 40131));
    EXPECT_FALSE(RenderMediaItemActiveTake(handle(first.track().add_item(9.0, 1.0)))) << "no take";
    EXPECT_FALSE(RenderSelectedMediaIdActiveTake(nullptr, 2));
    EXPECT_EQ(commands, expected) << "nothing to run on";
    EXPECT_EQ(selection(), before);
}

TEST_F(Actions, RenderTheActiveTakeToANewOne) {
    EXPECT_TRUE(RenderMediaIdActiveTake(nullptr, 0));
    const std::filesystem::path rendered = first.active_take()->source.file;
    EXPECT_TRUE(RenderMediaItemActiveTake(handle(first)));
    ASSERT_EQ(first.takes().size(), 2u);
    EXPECT_EQ(first.take(0)->source.file, rendered) << "cropped to the active take";
    EXPECT_EQ(first.active_take(), first.take(1));
    EXPECT_EQ(first.active_take()->name, "first.wav");
}

TEST_F(Actions, SwitchOffAllEnvelopes) {
    headless::project::Envelope& envelope = first.active_take()->add_envelope("Pan");
    envelope.set_points({{.position_seconds = 0.25, .value = 0.5}});
    for (const char* name : {"BR_EnvAlloc", "BR_EnvGetProperties", "BR_EnvSetProperties", "BR_EnvFree"}) {
        messages.clear();
        overrule(name, static_cast<void*>(nullptr));
        EXPECT_FALSE(SetMediaItemEnvelopeAllOFF(handle(first)));
        EXPECT_EQ(messages.size(), 1u) << name;
        EXPECT_TRUE(envelope.properties.active);
        overrule(name, workstation.function(name));
    }
    EXPECT_TRUE(SetMediaIdEnvelopeAllOFF(nullptr, 0));
    EXPECT_FALSE(envelope.properties.active);
    EXPECT_FALSE(envelope.properties.visible);
    EXPECT_EQ(envelope.points().size(), 1u);
    EXPECT_TRUE(SetMediaItemEnvelopeAllOFF(handle(second))) << "no envelopes";
    EXPECT_FALSE(SetSelectedMediaIdEnvelopeAllOFF(nullptr, 0)) << "nothing selected";
}

} // namespace
