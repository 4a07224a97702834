#include "tests/headless/host/host_fixture.hpp"

#include <sndfile.h>

#include <cmath>
#include <fstream>

namespace headless {
namespace {

class Insertion : public HostTest {
protected:
    Insertion() : file(write_recording("line.final.wav", {8000, 2, std::vector<float>(8000, 0.5F)})) {}

    int insert(int mode) { return call<int(const char*, int)>("InsertMedia", file.c_str(), mode); }

    std::filesystem::path file;
};

TEST_F(Insertion, puts_the_file_at_the_cursor_of_the_selected_track) {
    Project& project = workstation.project();
    project.insert_track(0).add_item(0.0, 1.0).set_selected(true);
    project.insert_track(1).set_selected(true);
    project.cursor_seconds = 2.0;
    EXPECT_EQ(insert(0), 1);
    ASSERT_EQ(project.track(1)->items().size(), 1U);
    Item& item = *project.track(1)->items()[0];
    EXPECT_EQ(project.selected_items().size(), 1U);
    EXPECT_TRUE(item.selected());
    EXPECT_EQ(item.position_seconds(), 2.0);
    EXPECT_EQ(item.length_seconds(), 0.5);
    EXPECT_EQ(project.cursor_seconds, 2.5);
    EXPECT_EQ(item.active_take()->name, "line.final.wav");
    EXPECT_EQ(item.active_take()->source, (Source{file, "WAVE", 8000, 2, 4000}));

    EXPECT_EQ(insert(3), 1);
    EXPECT_EQ(item.takes().size(), 2U);
}

TEST_F(Insertion, finds_or_makes_a_track) {
    Project& project = workstation.project();
    EXPECT_EQ(insert(0), 1);
    EXPECT_EQ(insert(1), 1);
    EXPECT_EQ(insert(512 + (1 << 16)), 1);
    EXPECT_EQ(project.tracks().size(), 2U);
    EXPECT_EQ(project.track(1)->items().size(), 2U);
    EXPECT_EQ(insert(512 + (2 << 16)), 0);
    EXPECT_EQ(workstation.take_failures().size(), 1U);
}

TEST_F(Insertion, goes_by_what_can_be_decoded_rather_than_by_the_header) {
    Recording tone{8000, 1, {}};
    for (int frame = 0; frame < 80000; ++frame) {
        tone.samples.push_back(static_cast<float>(0.5 * std::sin(0.37 * frame)));
    }
    const auto cut = write_recording("cut.flac", tone, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    std::filesystem::resize_file(cut, std::filesystem::file_size(cut) / 2);
    Track& track = workstation.project().insert_track(0);
    const auto item = workstation.insert_audio(track, cut, 0.0);
    ASSERT_TRUE(item) << item.error().message;
    EXPECT_GT((*item)->length_seconds(), 1.0);
    EXPECT_LT((*item)->length_seconds(), 6.0);
}

TEST_F(Insertion, refuses_what_is_no_audio_and_modes_it_has_not) {
    EXPECT_EQ(insert(4), 0);
    std::ofstream(folder / "line.final.wav") << "no audio at all";
    EXPECT_EQ(insert(1), 0);
    EXPECT_EQ(workstation.project().tracks().size(), 0U);
    const auto failures = workstation.take_failures();
    ASSERT_EQ(failures.size(), 2U);
    EXPECT_NE(failures[1].message.find("line.final.wav"), std::string::npos);
}

} // namespace
} // namespace headless
