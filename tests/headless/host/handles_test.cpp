// Plug-ins may hold handles longer than the objects live, and hand over anything at all.

#include "headless/host/plugin_abi.hpp"
#include "tests/headless/host/host_fixture.hpp"

#include <type_traits>

namespace headless {
namespace {

class HandleTest : public HostTest {
protected:
    template <class T>
    T argument() const {
        if constexpr (std::is_pointer_v<T> && !std::is_arithmetic_v<std::remove_pointer_t<T>>) {
            return reinterpret_cast<T>(address_);
        } else {
            return T();
        }
    }

    // Calls with the address as every handle, and zeros as everything else.
    template <class R, class... A>
    void expect_failure(const char* name, R (*function)(A...)) {
        ASSERT_NE(function, nullptr) << name;
        if constexpr (std::is_void_v<R>) {
            function(argument<A>()...);
        } else {
            EXPECT_EQ(function(argument<A>()...), R()) << name;
        }
    }

    template <class Signature>
    void expect_failure(const char* name) {
        expect_failure(name, workstation.function_as<Signature>(name));
    }

    void expect_failures_of_all(void* address) {
        address_ = address;
        expect_failure<int(ReaProject*)>("CountTracks");
        expect_failure<MediaTrack*(ReaProject*, int)>("GetTrack");
        expect_failure<int(ReaProject*)>("CountSelectedTracks");
        expect_failure<int(ReaProject*, bool)>("CountSelectedTracks2");
        expect_failure<MediaTrack*(ReaProject*, int)>("GetSelectedTrack");
        expect_failure<MediaTrack*(MediaTrack*)>("GetParentTrack");
        expect_failure<int(MediaTrack*)>("GetTrackDepth");
        expect_failure<bool(MediaTrack*, char*, int)>("GetTrackName");
        expect_failure<bool(MediaTrack*, const char*, char*, bool)>("GetSetMediaTrackInfo_String");
        expect_failure<double(MediaTrack*, const char*)>("GetMediaTrackInfo_Value");
        expect_failure<bool(MediaTrack*, const char*, double)>("SetMediaTrackInfo_Value");
        expect_failure<int(MediaTrack*)>("GetTrackColor");
        expect_failure<void(MediaTrack*, int)>("SetTrackColor");
        expect_failure<void(MediaTrack*, bool)>("SetTrackSelected");
        expect_failure<void(MediaTrack*)>("SetOnlyTrackSelected");
        expect_failure<void(MediaTrack*)>("DeleteTrack");
        expect_failure<int(ReaProject*)>("CountMediaItems");
        expect_failure<MediaItem*(ReaProject*, int)>("GetMediaItem");
        expect_failure<int(ReaProject*)>("CountSelectedMediaItems");
        expect_failure<MediaItem*(ReaProject*, int)>("GetSelectedMediaItem");
        expect_failure<int(MediaTrack*)>("CountTrackMediaItems");
        expect_failure<MediaItem*(MediaTrack*, int)>("GetTrackMediaItem");
        expect_failure<ReaProject*(MediaItem*)>("GetItemProjectContext");
        expect_failure<double(MediaItem*, const char*)>("GetMediaItemInfo_Value");
        expect_failure<bool(MediaItem*, const char*, double)>("SetMediaItemInfo_Value");
        expect_failure<void(MediaItem*, bool)>("SetMediaItemSelected");
        expect_failure<void(ReaProject*, bool)>("SelectAllMediaItems");
        expect_failure<int(MediaItem*)>("CountTakes");
        expect_failure<MediaItem_Take*(MediaItem*, int)>("GetTake");
        expect_failure<MediaItem_Take*(MediaItem*)>("GetActiveTake");
        expect_failure<const char*(MediaItem_Take*)>("GetTakeName");
        expect_failure<bool(MediaItem_Take*, const char*, char*, bool)>("GetSetMediaItemTakeInfo_String");
        expect_failure<PCM_source*(MediaItem_Take*)>("GetMediaItemTake_Source");
        expect_failure<void(PCM_source*, char*, int)>("GetMediaSourceType");
        expect_failure<int(MediaItem_Take*, double, double, int, int, int, double*)>(
            "GetMediaItemTake_Peaks");
        expect_failure<int(MediaItem_Take*)>("CountTakeEnvelopes");
        expect_failure<TrackEnvelope*(MediaItem_Take*, int)>("GetTakeEnvelope");
        expect_failure<TrackEnvelope*(MediaItem_Take*, const char*)>("GetTakeEnvelopeByName");
        expect_failure<BR_Envelope*(TrackEnvelope*, bool)>("BR_EnvAlloc");
        expect_failure<bool(BR_Envelope*, bool)>("BR_EnvFree");
        expect_failure<void(BR_Envelope*)>("BR_EnvSortPoints");
        expect_failure<int(BR_Envelope*)>("BR_EnvCountPoints");
        expect_failure<bool(BR_Envelope*, int)>("BR_EnvDeletePoint");
        expect_failure<bool(BR_Envelope*, int, double*, double*, int*, bool*, double*)>("BR_EnvGetPoint");
        expect_failure<bool(BR_Envelope*, int, double, double, int, bool, double)>("BR_EnvSetPoint");
        expect_failure<void(BR_Envelope*, bool*, bool*, bool*, bool*, int*, int*, double*, double*, double*,
                            int*, bool*, int*)>("BR_EnvGetProperties");
        expect_failure<void(BR_Envelope*, bool, bool, bool, bool, int, int, bool, int*)>(
            "BR_EnvSetProperties");
        expect_failure<bool(MediaItem_Take*, bool, double*, double*, double*, double*, double*, double*,
                            double*, double*)>("NF_AnalyzeTakeLoudness2");
    }

    void* address_ = nullptr;
};

TEST_F(HandleTest, get_failure_values_when_they_are_null_foreign_or_stale) {
    expect_failures_of_all(nullptr);
    int no_object = 0;
    expect_failures_of_all(&no_object);
    Track& track = workstation.project().insert_track(0);
    workstation.project().erase_track(track);
    expect_failures_of_all(&track);
    EXPECT_TRUE(workstation.take_failures().empty());
}

TEST_F(HandleTest, of_sources_outlive_their_take) {
    Item& item = insert_level("line.wav", 0.5F, 0.1);
    PCM_source* source = call<PCM_source*(MediaItem_Take*)>("GetMediaItemTake_Source",
                                                            Workstation::handle(*item.active_take()));
    EXPECT_EQ(std::string(source->GetFileName()), folder / "line.wav");
    char type[8] = "";
    call<void(PCM_source*, char*, int)>("GetMediaSourceType", source, type, 8);
    EXPECT_STREQ(type, "WAVE");
    workstation.project().erase_track(item.track());
    EXPECT_EQ(source->GetFileName(), nullptr);
    EXPECT_FALSE(source->IsAvailable());
}

TEST_F(HandleTest, of_this_project_serve_where_null_does) {
    Item& item = insert_level("line.wav", 0.5F, 0.1);
    ReaProject* project = call<ReaProject*(MediaItem*)>("GetItemProjectContext", Workstation::handle(item));
    EXPECT_EQ(call<int(ReaProject*)>("CountMediaItems", project), 1);
    const double address = call<double(MediaItem*, const char*)>("GetMediaItemInfo_Value",
                                                                 Workstation::handle(item), "P_PROJECT");
    EXPECT_EQ(static_cast<std::uintptr_t>(address), reinterpret_cast<std::uintptr_t>(project));
}

} // namespace
} // namespace headless
