#include "headless/workstation/take_audio.hpp"
#include "tests/headless/workstation/host_fixture.hpp"

namespace headless {
namespace {

class SourceFunctions : public HostTest {
protected:
    static MediaItem_Take* handle(project::Take& take) { return workstation::Workstation::handle(take); }

    PCM_source* source_of(project::Take& take) {
        return function<PCM_source*(MediaItem_Take*)>("GetMediaItemTake_Source")(handle(take));
    }
    PCM_source* create(const std::string& name) {
        return function<PCM_source*(const char*)>("PCM_Source_CreateFromFile")((folder / name).c_str());
    }
    bool set(project::Take& take, PCM_source* source) {
        return function<bool(MediaItem_Take*, PCM_source*)>("SetMediaItemTake_Source")(handle(take), source);
    }
    void destroy(PCM_source* source) { function<void(PCM_source*)>("PCM_Source_Destroy")(source); }
    PCM_source* parent_of(PCM_source* source) {
        return function<PCM_source*(PCM_source*)>("GetMediaSourceParent")(source);
    }
    double length_of(PCM_source* source) {
        return function<double(PCM_source*, bool*)>("GetMediaSourceLength")(source, nullptr);
    }
    std::string file_of(PCM_source* source) {
        std::vector<char> text(1000);
        function<void(PCM_source*, char*, int)>("GetMediaSourceFileName")(source, text.data(), 1000);
        return std::filesystem::path(text.data()).filename();
    }

    struct Properties {
        bool is_section = false;
        double start = 9.0;
        double length = 9.0;
        double fade = 9.0;
        bool is_reversed = false;
        bool operator==(const Properties&) const = default;
    };
    std::optional<Properties> properties_of(project::Take& take) {
        Properties found;
        const bool has_any = function<bool(MediaItem_Take*, bool*, double*, double*, double*, bool*)>(
            "BR_GetMediaSourceProperties")(handle(take), &found.is_section, &found.start, &found.length,
                                           &found.fade, &found.is_reversed);
        return has_any ? std::optional(found) : std::nullopt;
    }
    bool set_properties(project::Take& take, const Properties& wanted) {
        return function<bool(MediaItem_Take*, bool, double, double, double, bool)>(
            "BR_SetMediaSourceProperties")(handle(take), wanted.is_section, wanted.start, wanted.length,
                                           wanted.fade, wanted.is_reversed);
    }
};

TEST_F(SourceFunctions, SourcesBelongToTheWorkstationUntilATakeHasThem) {
    project::Take& take = *insert_item().active_take();
    project::Take& other = *insert_item({0.5F}, 0.0, "other.wav").active_take();
    test::write_sound(folder / "new.wav", test::silence(0.25, 8000), 8000);
    PCM_source* old = source_of(take);
    PCM_source* made = create("new.wav");
    EXPECT_EQ(length_of(made), 0.25);
    EXPECT_EQ(made->GetType(), std::string("WAVE"));
    ASSERT_TRUE(set(take, made));
    EXPECT_EQ(take.source.file, folder / "new.wav");
    EXPECT_EQ(source_of(take), made);
    EXPECT_EQ(file_of(old), "line.wav") << "the caller's from now on";
    ASSERT_TRUE(set(other, made));
    EXPECT_NE(source_of(other), made) << "a copy";
    EXPECT_EQ(file_of(source_of(other)), "new.wav");
    destroy(made);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("belongs to a take")));
    EXPECT_EQ(take.source.file, folder / "new.wav");
    destroy(old);
    destroy(old);
    EXPECT_EQ(length_of(old), 0.0);
    EXPECT_FALSE(set(take, old));
    EXPECT_TRUE(set(take, made)) << "its own";

    EXPECT_EQ(create("missing.wav"), nullptr);
    EXPECT_THAT(workstation.take_failures(), testing::IsEmpty());
    test::write_bytes(folder / "score.mid", "MThd");
    EXPECT_EQ(create("score.mid"), nullptr);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("score.mid")));
    EXPECT_STREQ(function<PCM_source*(const char*)>("PCM_Source_CreateFromType")("MIDI")->GetType(), "MIDI");
}

TEST_F(SourceFunctions, SectionsHaveAParentAndProperties) {
    project::Take& take = *insert_item(test::silence(1.0, 8000)).active_take();
    EXPECT_EQ(properties_of(take), (Properties{false, 0.0, 1.0, 0.0, false}));
    EXPECT_EQ(parent_of(source_of(take)), nullptr);
    const Properties section{true, 0.25, 0.5, 0.01, true};
    ASSERT_TRUE(set_properties(take, section));
    EXPECT_EQ(properties_of(take), section);
    PCM_source* outer = source_of(take);
    EXPECT_EQ(outer->GetType(), std::string("SECTION"));
    EXPECT_EQ(length_of(outer), 0.5);
    EXPECT_EQ(file_of(outer), "");
    EXPECT_EQ(file_of(parent_of(outer)), "line.wav");
    EXPECT_EQ(length_of(parent_of(outer)), 1.0);
    EXPECT_EQ(function<int(PCM_source*)>("GetMediaSourceSampleRate")(outer), 8000);
    EXPECT_FALSE(set_properties(take, {true, 0.25, 0.0, 0.01, true}));
    ASSERT_TRUE(set_properties(take, {false, 0.25, 0.5, 0.01, true}));
    EXPECT_EQ(properties_of(take), (Properties{false, 0.0, 1.0, 0.0, true}));
    PCM_source* inside = parent_of(source_of(take));
    ASSERT_TRUE(set_properties(take, {}));
    EXPECT_EQ(take.source.file, folder / "line.wav");
    EXPECT_EQ(inside->GetFileName(), nullptr) << "the section is gone";
    take.source = {.file = {}, .type = "MIDI"};
    EXPECT_FALSE(properties_of(take));
    EXPECT_TRUE(function<bool(MediaItem_Take*)>("TakeIsMIDI")(handle(take)));
    ASSERT_TRUE((function<bool(MediaItem_Take*, const char*, bool)>("BR_SetTakeSourceFromFile")(
        handle(take), (folder / "line.wav").c_str(), false)));
    EXPECT_FALSE(function<bool(MediaItem_Take*)>("TakeIsMIDI")(handle(take)));
}

TEST_F(SourceFunctions, OfflineMediaIsNotPlayed) {
    project::Take& take = *insert_item().active_take();
    PCM_source* source = source_of(take);
    const auto set_online = function<void(PCM_source*, bool)>("CF_SetMediaSourceOnline");
    const auto is_online = function<bool(PCM_source*)>("CF_GetMediaSourceOnline");
    set_online(source, false);
    EXPECT_FALSE(is_online(source));
    EXPECT_FALSE(source->IsAvailable());
    EXPECT_THAT(workstation::audio_of(workstation.audio(), take), fails_telling("offline"));
    set_online(source, true);
    EXPECT_TRUE(is_online(source));
    EXPECT_TRUE(workstation::audio_of(workstation.audio(), take));
}

TEST_F(SourceFunctions, ReadMetadata) {
    const auto file = folder / "field.wav";
    {
        SndfileHandle handle(file.c_str(), SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, 48000);
        SF_BROADCAST_INFO broadcast{};
        std::string("A door").copy(broadcast.description, sizeof(broadcast.description));
        std::string("12:34:56").copy(broadcast.origination_time, sizeof(broadcast.origination_time));
        broadcast.time_reference_high = 1;
        broadcast.version = 1;
        handle.command(SFC_SET_BROADCAST_INFO, &broadcast, sizeof(broadcast));
        handle.setString(SF_STR_TITLE, "Doors");
        const std::vector<short> samples(100);
        handle.write(samples.data(), 100);
    }
    PCM_source* source = create("field.wav");
    const auto text_of = [&](const char* identifier) {
        std::vector<char> text(4000, 'x');
        const int found = function<int(PCM_source*, const char*, char*, int)>("GetMediaFileMetadata")(
            source, identifier, text.data(), 4000);
        return std::to_string(found) + " " + text.data();
    };
    EXPECT_EQ(text_of("BWF:Description"), "1 A door");
    EXPECT_EQ(text_of("BWF:OriginationTime"), "1 12:34:56");
    EXPECT_EQ(text_of("BWF:TimeReference"), "1 4294967296");
    EXPECT_EQ(text_of("BWF:Originator"), "0 ");
    EXPECT_EQ(text_of("INFO:INAM"), "1 Doors");
    EXPECT_THAT(text_of(""), testing::HasSubstr("BWF:Description\nBWF:OriginationTime\n"));
    EXPECT_THAT(workstation.take_failures(), testing::IsEmpty());
    EXPECT_EQ(text_of("IXML:PROJECT"), "0 ");
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("kind IXML")));
}

} // namespace
} // namespace headless
