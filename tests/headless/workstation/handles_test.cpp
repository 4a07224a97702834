// Plug-ins may hold handles longer than the objects live, and hand over anything at all.

#include "common/plugin_abi.hpp"
#include "tests/headless/workstation/host_fixture.hpp"

namespace headless {
namespace {

class Handles : public HostTest {
protected:
    /// Calls with each bad address as the handle, and zeros as everything else.
    template <class R, class Handle, class... Rest>
    void fail(const char* name) {
        for (void* address : bad_addresses) {
            const R value = function<R(Handle*, Rest...)>(name)(static_cast<Handle*>(address), Rest()...);
            EXPECT_EQ(value, R()) << name;
        }
    }

    std::vector<void*> bad_addresses;
};

TEST_F(Handles, InvalidOnesGetFailureValues) {
    int no_object = 0;
    project::Track& track = project.insert_track(0);
    project.erase_track(track);
    bad_addresses = {nullptr, &no_object, &track};
    fail<MediaTrack*, ReaProject, int>("GetTrack");
    function<void(MediaTrack*)>("SetOnlyTrackSelected")(nullptr); // as plug-ins do
    fail<double, MediaTrack, const char*>("GetMediaTrackInfo_Value");
    fail<MediaItem_Take*, MediaItem>("GetActiveTake");
    fail<const char*, MediaItem_Take>("GetTakeName");
    fail<double, PCM_source, bool*>("GetMediaSourceLength"); // is called with null
    fail<BR_Envelope*, TrackEnvelope, bool>("BR_EnvAlloc");
    fail<bool, BR_Envelope, bool>("BR_EnvFree");
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
