// Actions on one item with the selection kept, the render, and envelopes switched off.

#include "api/media/actions.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

namespace {

using mk_api::action::ActionMediaItemSelectKeep;
using mk_api::envelope::SetMediaItemEnvelopeAllOFF;
using mk_api::render::RenderMediaItemActiveTake;

std::vector<MediaItem*> selection() {
    std::vector<MediaItem*> items(static_cast<std::size_t>(CountSelectedMediaItems(nullptr)));
    for (int i = 0; MediaItem * &item : items)
        item = GetSelectedMediaItem(nullptr, i++);
    return items;
}

std::vector<std::vector<MediaItem*>> selected_while_running;
std::vector<int> commands;

class Actions : public mk_test::BoundPlugin {
protected:
    Actions() {
        selected_while_running.clear();
        commands.clear();
    }
    static void log_commands() {
        Main_OnCommandEx = [](int command, int, ReaProject*) {
            commands.push_back(command);
            selected_while_running.push_back(selection());
        };
    }
    headless::Item& first = add_item(mk_test::babble(0.5, 8000, 1), 0.0, "first.wav");
    headless::Item& second = add_item(mk_test::babble(0.5, 8000, 2), 1.0, "second.wav");
    headless::Item& third = add_item(mk_test::babble(0.5, 8000, 3), 2.0, "third.wav");
};

TEST_F(Actions, run_on_the_one_item_and_restore_the_selection) {
    log_commands();
    for (headless::Item* item : {&first, &third})
        SetMediaItemSelected(handle(*item), true);
    const auto before = selection();
    EXPECT_TRUE(ActionMediaItemSelectKeep(handle(second), 40131));
    EXPECT_TRUE(mk_api::action::ActionSelectedMediaIdSelectKeep(nullptr, 1, 41999));
    EXPECT_EQ(commands, std::vector({40131, 41999}));
    EXPECT_EQ(selected_while_running,
              std::vector<std::vector<MediaItem*>>({{handle(second)}, {handle(third)}}));
    EXPECT_EQ(selection(), before);
}

TEST_F(Actions, do_nothing_without_an_item) {
    log_commands();
    SetMediaItemSelected(handle(first), true);
    EXPECT_FALSE(ActionMediaItemSelectKeep(nullptr, 40131));
    EXPECT_FALSE(mk_api::action::ActionMediaIdSelectKeep(nullptr, 3, 40131));
    EXPECT_FALSE(RenderMediaItemActiveTake(nullptr));
    EXPECT_FALSE(RenderMediaItemActiveTake(handle(first.track().add_item(9.0, 1.0)))) << "no take";
    EXPECT_FALSE(mk_api::render::RenderSelectedMediaIdActiveTake(nullptr, 1));
    EXPECT_TRUE(commands.empty());
    EXPECT_EQ(selection(), std::vector({handle(first)}));
}

TEST_F(Actions, render_to_a_new_take_that_bears_the_old_name) {
    EXPECT_TRUE(mk_api::render::RenderMediaIdActiveTake(nullptr, 0));
    ASSERT_EQ(first.takes().size(), 2u);
    EXPECT_EQ(first.active_take(), first.take(1));
    EXPECT_EQ(first.active_take()->name, "first.wav");
    EXPECT_TRUE(std::filesystem::exists(first.active_take()->source.file));

    // The second time there are two takes: the item is cropped to the render, which is rendered in its turn.
    EXPECT_TRUE(RenderMediaItemActiveTake(handle(first)));
    ASSERT_EQ(first.takes().size(), 2u);
    EXPECT_EQ(first.take(0)->name, "first.wav");
    EXPECT_NE(first.take(0)->source.file, folder.path / "first.wav");
}

TEST_F(Actions, switch_off_all_envelopes_and_leave_the_rest_of_them) {
    headless::Take& take = *first.active_take();
    for (const char* name : {"Volume", "Pan", "Pitch"})
        take.add_envelope(name).set_points({{.position_seconds = 0.25, .value = 0.5}});
    take.envelopes()[1]->properties.armed = true;
    EXPECT_TRUE(mk_api::envelope::SetMediaIdEnvelopeAllOFF(nullptr, 0));
    for (const auto& envelope : take.envelopes()) {
        EXPECT_FALSE(envelope->properties.active || envelope->properties.visible) << envelope->name();
        EXPECT_EQ(envelope->properties.armed, envelope->name() == "Pan");
        EXPECT_EQ(envelope->points().size(), 1u);
    }
    EXPECT_TRUE(SetMediaItemEnvelopeAllOFF(handle(second))) << "no envelopes";
    EXPECT_FALSE(mk_api::envelope::SetSelectedMediaIdEnvelopeAllOFF(nullptr, 0)) << "nothing selected";
}

TEST_F(Actions, tell_once_which_function_is_missing_and_change_nothing) {
    first.active_take()->add_envelope("Volume");
    for (const char* name : {"BR_EnvAlloc", "BR_EnvGetProperties", "BR_EnvSetProperties", "BR_EnvFree"}) {
        messages.clear();
        overrule(name, static_cast<void*>(nullptr));
        EXPECT_FALSE(SetMediaItemEnvelopeAllOFF(handle(first)));
        ASSERT_EQ(messages.size(), 1u) << name;
        EXPECT_TRUE(messages[0].starts_with("To use MK_SetMediaItemRideScriber, you need to install "));
        EXPECT_TRUE(first.active_take()->envelopes()[0]->properties.active);
        overrule(name, workstation.function(name));
    }
}

} // namespace
