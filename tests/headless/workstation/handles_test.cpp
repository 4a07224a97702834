// Plug-ins may hold handles longer than the objects live, and hand over anything at all.

#include "common/plugin_abi.hpp"
#include "tests/headless/workstation/host_fixture.hpp"

#include <initializer_list>
#include <type_traits>

namespace headless {
namespace {

class Handles : public HostTest {
protected:
    /// Calls with each bad address as the handle, and zeros as everything else.
    template <class R, class Handle, class... Rest>
    void fail(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            for (void* address : bad_addresses) {
                auto* handle = static_cast<Handle*>(address);
                if constexpr (std::is_void_v<R>)
                    function<R(Handle*, Rest...)>(name)(handle, Rest()...);
                else
                    EXPECT_EQ(function<R(Handle*, Rest...)>(name)(handle, Rest()...), R()) << name;
            }
        }
    }

    std::vector<void*> bad_addresses;
};

TEST_F(Handles, InvalidOnesGetFailureValues) {
    int no_object = 0;
    project::Track& track = project.insert_track(0);
    project.erase_track(track);
    bad_addresses = {nullptr, &no_object, &track};
    fail<int, ReaProject>(
        {"CountTracks", "CountSelectedTracks", "CountMediaItems", "CountSelectedMediaItems"});
    fail<MediaTrack*, ReaProject, int>({"GetTrack", "GetSelectedTrack"});
    fail<MediaItem*, ReaProject, int>({"GetMediaItem", "GetSelectedMediaItem"});
    fail<int, MediaTrack>({"GetTrackDepth", "GetTrackColor", "CountTrackMediaItems"});
    fail<void, MediaTrack>({"SetOnlyTrackSelected", "DeleteTrack"});
    fail<bool, MediaTrack, char*, int>({"GetTrackName"});
    fail<double, MediaTrack, const char*>({"GetMediaTrackInfo_Value"});
    fail<bool, MediaTrack, const char*, double>({"SetMediaTrackInfo_Value"});
    fail<ReaProject*, MediaItem>({"GetItemProjectContext"});
    fail<void, MediaItem, bool>({"SetMediaItemSelected"});
    fail<int, MediaItem>({"CountTakes"});
    fail<MediaItem_Take*, MediaItem>({"GetActiveTake"});
    fail<const char*, MediaItem_Take>({"GetTakeName"});
    fail<PCM_source*, MediaItem_Take>({"GetMediaItemTake_Source"});
    fail<void, PCM_source, char*, int>({"GetMediaSourceType"});
    fail<TrackEnvelope*, MediaItem_Take, int>({"GetTakeEnvelope"});
    fail<BR_Envelope*, TrackEnvelope, bool>({"BR_EnvAlloc"});
    fail<bool, BR_Envelope, bool>({"BR_EnvFree"});
    fail<int, BR_Envelope>({"BR_EnvCountPoints"});
    fail<bool, BR_Envelope, int>({"BR_EnvDeletePoint"});
    fail<bool, MediaItem_Take, bool, double*, double*, double*, double*, double*, double*, double*, double*>(
        {"NF_AnalyzeTakeLoudness2"});
    EXPECT_TRUE(workstation.take_failures().empty());
}

TEST_F(Handles, ForeignProjectGetsSpecificFailureValues) {
    int no_object = 0;
    int markers = 1;
    auto* handle = reinterpret_cast<ReaProject*>(&no_object);
    EXPECT_EQ((function<int(ReaProject*, bool, double, double, const char*, int)>("AddProjectMarker")(
                  handle, false, 1.0, 0.0, "", -1)),
              -1);
    function<int(ReaProject*, int*, int*)>("CountProjectMarkers")(handle, &markers, nullptr);
    EXPECT_EQ(markers, 0) << "written for a project that is not there, too";
}

TEST_F(Handles, SourcesOutliveTheirTake) {
    project::Item& item = insert_item();
    PCM_source* source = function<PCM_source*(MediaItem_Take*)>("GetMediaItemTake_Source")(
        workstation::Workstation::handle(*item.active_take()));
    EXPECT_EQ(std::string(source->GetFileName()), folder / "line.wav");
    project.erase_track(item.track());
    EXPECT_EQ(source->GetFileName(), nullptr);
    EXPECT_FALSE(source->IsAvailable());
}

} // namespace
} // namespace headless
