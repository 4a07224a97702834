#include "tests/headless/workstation/host_fixture.hpp"

namespace headless {
namespace {

class Insertion : public HostTest {
protected:
    int insert(int mode) { return function<int(const char*, int)>("InsertMedia")(file.c_str(), mode); }

    std::filesystem::path file =
        test::write_sound(folder / "line.final.wav", std::vector<float>(8000, 0.5F), 8000, 2);
};

TEST_F(Insertion, InsertsAtTheCursorOfTheSelectedTrack) {
    project.insert_track(0).add_item(0.0, 1.0).set_selected(true);
    project.insert_track(1).set_selected(true);
    project.cursor_seconds = 2.0;
    EXPECT_EQ(insert(0), 1);
    ASSERT_EQ(project.track(1)->items().size(), 1U);
    project::Item& item = *project.track(1)->items()[0];
    EXPECT_EQ(project.selected_items().size(), 1U);
    EXPECT_TRUE(item.selected());
    EXPECT_EQ(item.position_seconds(), 2.0);
    EXPECT_EQ(item.length_seconds(), 0.5);
    EXPECT_EQ(project.cursor_seconds, 2.5);
    EXPECT_EQ(item.active_take()->name, "line.final.wav");
    EXPECT_EQ(item.active_take()->source, (project::Source{file, "WAVE", 8000, 2, 4000}));
    EXPECT_EQ(insert(3), 1);
    EXPECT_EQ(item.takes().size(), 2U);
}

TEST_F(Insertion, FindsOrCreatesATrack) {
    EXPECT_EQ(insert(0), 1);
    EXPECT_EQ(insert(1), 1);
    EXPECT_EQ(insert(512 + (1 << 16)), 1);
    EXPECT_EQ(project.tracks().size(), 2U);
    EXPECT_EQ(project.track(1)->items().size(), 2U);
}

TEST_F(Insertion, UsesTheDecodableLength) {
    const auto cut = test::write_sound(folder / "cut.flac", test::noise(80000, 0.5), 8000, 1,
                                       SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    std::filesystem::resize_file(cut, std::filesystem::file_size(cut) / 2);
    const project::Item& item = *workstation.insert_audio(project.insert_track(0), cut, 0.0).value();
    EXPECT_NEAR(item.length_seconds(), 5.0, 1.0);
}

TEST_F(Insertion, RefusesUnusableFilesModesAndTracks) {
    EXPECT_EQ(insert(4), 0);
    EXPECT_EQ(insert(512 + (2 << 16)), 0);
    test::write_bytes(file, "no audio at all");
    EXPECT_EQ(insert(1), 0);
    EXPECT_EQ(project.tracks().size(), 0U);
    EXPECT_THAT(workstation.take_failures(),
                ElementsAre(tells("mode 4"), tells("no track"), tells("line.final.wav")));
}

} // namespace
} // namespace headless
