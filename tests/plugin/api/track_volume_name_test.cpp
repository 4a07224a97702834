#include "api/track/volume_name.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cmath>
#include <cstring>

namespace {

using namespace MK_FELSPAR;
using namespace mk_api::track;

int redraws = 0;

class TrackVolumeName : public mk_test::BoundPlugin {
protected:
    TrackVolumeName() {
        SetTrackSelected(track, true);
        redraws = 0;
        UpdateArrange = [] { ++redraws; };
    }
    headless::Track& model = workstation.project().insert_track(0);
    MediaTrack* track = handle(model);
    double volume = 99.0;
};

TEST_F(TrackVolumeName, reads_decibels_at_two_digits) {
    model.volume = 0.5;
    EXPECT_TRUE(GetTrackItemVolume(track, &volume));
    EXPECT_EQ(volume, -6.02);
    model.volume = 0.0;
    EXPECT_TRUE(GetSelectedTrackIdVolume(nullptr, 0, &volume));
    EXPECT_EQ(volume, -std::numeric_limits<double>::infinity());
}

TEST_F(TrackVolumeName, writes_and_adds_decibels_unrounded_and_redraws) {
    EXPECT_TRUE(SetTrackIdVolume(nullptr, 0, 0.0));
    EXPECT_EQ(model.volume, 1.0);
    EXPECT_TRUE(SetTrackItemAddVolume(track, 0.0));
    EXPECT_EQ(model.volume, 1.0);
    EXPECT_TRUE(SetSelectedTrackIdAddVolume(nullptr, 0, -6.0));
    EXPECT_EQ(model.volume, std::exp((20.0 * std::log10(1.0) + -6.0) * 0.115129254));
    EXPECT_EQ(redraws, 3);
}

TEST_F(TrackVolumeName, does_nothing_for_a_missing_track) {
    EXPECT_FALSE(SetTrackIdVolume(nullptr, 1, -6.0));
    EXPECT_FALSE(SetTrackIdAddVolume(nullptr, 1, -6.0));
    EXPECT_FALSE(GetTrackIdVolume(nullptr, 1, &volume));
    EXPECT_FALSE(SetTrackIdName(nullptr, 1, "x"));
    EXPECT_FALSE(SetTrackItemName(nullptr, "x"));
    EXPECT_EQ(volume, 99.0);
    EXPECT_EQ(redraws, 0);
}

TEST_F(TrackVolumeName, names_a_track_and_reads_the_name_cut_to_the_buffer) {
    EXPECT_TRUE(SetSelectedTrackIdName(nullptr, 0, "Vocal"));
    char name[8] = "";
    EXPECT_TRUE(GetTrackItemName(track, name, sizeof name));
    EXPECT_STREQ(name, "Vocal");
    EXPECT_TRUE(GetTrackIdName(nullptr, 0, name, 4));
    EXPECT_STREQ(name, "Voc");
    EXPECT_FALSE(GetTrackIdName(nullptr, 1, name, sizeof name));
    EXPECT_STREQ(name, "Voc") << "untouched when there is no name";
    EXPECT_EQ(redraws, 0);
}

// The caller's size goes to the host, but never more than the library's own buffer holds.
TEST_F(TrackVolumeName, lets_no_host_write_past_the_working_buffer) {
    model.name = std::string(3000, 'n');
    std::vector<char> name(5000, '?');
    EXPECT_TRUE(GetTrackItemName(track, name.data(), static_cast<int>(name.size())));
    EXPECT_EQ(std::strlen(name.data()), 1023u);
}

} // namespace
