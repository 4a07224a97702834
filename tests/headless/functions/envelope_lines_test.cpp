// Envelopes through functions, and what becomes of their lines.

#include "tests/headless/functions/project_lines.hpp"

#include <array>
#include <cmath>

namespace headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string sample = project_of(
    "  <MASTERVOLENV2\n    ACT 1 -1\n    PT 0 1 0\n  >\n"
    "  <TRACK\n    NAME a\n"
    "    <VOLENV2\n      EGUID {40000000-0000-4000-8000-0000000000E1}\n      ACT 1 -1\n      VIS 1 1 1\n"
    "      ARM 0\n      VOLTYPE 1\n      POOLEDENVINST 4 1 2.5 0 1 0 0 1 1 0 0 0 0 3 0 0\n"
    "      PT 0.00000000 1.00000000 0\n      PT 1.00000000 2.00000000 5 0 1 0 0.25\n"
    "      PT 2.00000000 0.00000000 1\n    >\n"
    "    <PANENV2\n      ACT 0 -1\n      PT 0 0.5 2\n      PT 4 -0.5 0\n    >\n"
    "    <ITEM\n      POSITION 3\n      LENGTH 1\n      NAME take\n      <SOURCE EMPTY\n      >\n    >\n  "
    ">\n");

class EnvelopeLines : public ProjectLines {
protected:
    EnvelopeLines() {
        read(sample);
        volume = by_name(track(0), "Volume");
        pan = by_name(track(0), "Pan");
    }

    TrackEnvelope* by_name(MediaTrack* track, const char* name) const {
        return function<TrackEnvelope*(MediaTrack*, const char*)>("GetTrackEnvelopeByName")(track, name);
    }

    bool insert(TrackEnvelope* envelope, double time, double value, bool no_sort = false) const {
        return function<bool(TrackEnvelope*, double, double, int, double, bool, bool*)>(
            "InsertEnvelopePoint")(envelope, time, value, 0, 0.0, false, &no_sort);
    }

    bool move(TrackEnvelope* envelope, int index, double time, bool no_sort = false) const {
        return function<bool(TrackEnvelope*, int, double*, double*, int*, double*, bool*, bool*)>(
            "SetEnvelopePoint")(envelope, index, &time, nullptr, nullptr, nullptr, nullptr, &no_sort);
    }

    std::vector<double> times(TrackEnvelope* envelope) const {
        std::vector<double> found;
        const auto get =
            function<bool(TrackEnvelope*, int, double*, double*, int*, double*, bool*)>("GetEnvelopePoint");
        for (double time = 0.0;
             get(envelope, static_cast<int>(found.size()), &time, nullptr, nullptr, nullptr, nullptr);)
            found.push_back(time);
        return found;
    }

    double evaluate(TrackEnvelope* envelope, double time) const {
        double value = -1.0;
        function<int(TrackEnvelope*, double, double, int, double*, double*, double*, double*)>(
            "Envelope_Evaluate")(envelope, time, 0.0, 0, &value, nullptr, nullptr, nullptr);
        return value;
    }

    TrackEnvelope* volume = nullptr;
    TrackEnvelope* pan = nullptr;
};

TEST_F(EnvelopeLines, AreFoundByNameKindAndIdentifier) {
    const auto by_kind = function<TrackEnvelope*(MediaTrack*, const char*)>("GetTrackEnvelopeByChunkName");
    ASSERT_NE(volume, nullptr);
    EXPECT_EQ(by_kind(track(0), "<VOLENV2"), volume);
    EXPECT_EQ(by_kind(track(0), "{40000000-0000-4000-8000-0000000000E1}"), volume);
    EXPECT_EQ(by_kind(track(0), "<VOLENV"), nullptr);
    EXPECT_NE(by_kind(master(), "<VOLENV2"), nullptr);
    EXPECT_EQ(by_name(track(0), "Width"), nullptr);
    EXPECT_EQ(function<TrackEnvelope*(MediaTrack*, int)>("GetTrackEnvelope")(track(0), 1), pan);
    EXPECT_EQ(function<TrackEnvelope*(MediaTrack*, int)>("GetTrackEnvelope")(track(0), 2), nullptr);
    EXPECT_EQ(value(track(0), "P_ENV:<PANENV2"), static_cast<double>(reinterpret_cast<std::uintptr_t>(pan)));
}

// The file has gains; scripts see positions of a fader.
TEST_F(EnvelopeLines, VolumesAreOnTheFadersScale) {
    const auto to_scale = function<double(int, double)>("ScaleToEnvelopeMode");
    const auto from_scale = function<double(int, double)>("ScaleFromEnvelopeMode");
    EXPECT_NEAR(to_scale(1, 1.0), 716.21785031261, 1e-9);
    EXPECT_NEAR(to_scale(1, 2.0), 852.774454406994, 1e-9);
    EXPECT_EQ(to_scale(1, 0.0), 0.0);
    EXPECT_NEAR(from_scale(1, to_scale(1, 0.3)), 0.3, 1e-12);
    EXPECT_EQ(to_scale(0, 0.3), 0.3);
    EXPECT_NEAR(evaluate(volume, 0.0), 716.21785031261, 1e-9);
    EXPECT_EQ(evaluate(volume, 2.0), 0.0);
    EXPECT_NEAR(evaluate(volume, 0.5), (716.21785031261 + 852.774454406994) / 2.0, 1e-9);
    EXPECT_EQ(evaluate(pan, 2.0), 0.0) << "the middle of a slow start and end";
    EXPECT_EQ(evaluate(pan, -1.0), 0.5);
    EXPECT_TRUE(insert(volume, 0.5, to_scale(1, 1.0)));
    const Lines added = changes();
    ASSERT_EQ(added.size(), 1);
    EXPECT_EQ(added.front().substr(0, 8), "+PT 0.5 ");
    EXPECT_NEAR(std::stod(added.front().substr(8)), 1.0, 1e-12);
}

TEST_F(EnvelopeLines, PointsAreSortedUnlessToldOtherwise) {
    EXPECT_TRUE(insert(pan, 1.0, 0.1));
    EXPECT_TRUE(insert(pan, 4.0, 0.2));
    EXPECT_THAT(times(pan), ElementsAre(0.0, 1.0, 4.0, 4.0));
    EXPECT_THAT(changes(), ElementsAre("+PT 1 0.1 0", "+PT 4 0.2 0")) << "after the one of the same time";
    EXPECT_TRUE(insert(pan, 3.0, 0.3, true));
    EXPECT_TRUE(insert(pan, 2.0, 0.4, true));
    EXPECT_THAT(times(pan), ElementsAre(0.0, 1.0, 4.0, 4.0, 3.0, 2.0));
    EXPECT_TRUE(move(pan, 0, 2.5, true));
    EXPECT_THAT(times(pan), ElementsAre(2.5, 1.0, 4.0, 4.0, 3.0, 2.0));
    EXPECT_TRUE(function<bool(TrackEnvelope*)>("Envelope_SortPoints")(pan));
    EXPECT_THAT(times(pan), ElementsAre(1.0, 2.0, 2.5, 3.0, 4.0, 4.0));
    EXPECT_TRUE(move(pan, 5, 1.5));
    EXPECT_TRUE(move(pan, 0, 9.0));
    EXPECT_THAT(times(pan), ElementsAre(1.5, 2.0, 2.5, 3.0, 4.0, 9.0));
    EXPECT_FALSE(move(pan, 6, 0.0));
    EXPECT_FALSE(move(pan, 0, NAN));
    EXPECT_EQ(function<int(TrackEnvelope*, double)>("GetEnvelopePointByTime")(pan, 2.7), 2);
    EXPECT_EQ(function<int(TrackEnvelope*, double)>("GetEnvelopePointByTime")(pan, 1.0), -1);
    EXPECT_TRUE(function<bool(TrackEnvelope*, double, double)>("DeleteEnvelopePointRange")(pan, 2.0, 4.0));
    EXPECT_THAT(times(pan), ElementsAre(1.5, 4.0, 9.0));
    EXPECT_TRUE(function<bool(TrackEnvelope*, int, int)>("DeleteEnvelopePointEx")(pan, -1, 1));
    EXPECT_TRUE(
        function<bool(TrackEnvelope*, double, double)>("DeleteEnvelopePointRange")(pan, 2.0, INFINITY));
    EXPECT_THAT(times(pan), ElementsAre(1.5));
}

TEST_F(EnvelopeLines, ManyPointsInFallingOrderAreSortedOnce) {
    constexpr int count = 100000;
    for (int i = count; i > 0; --i)
        ASSERT_TRUE(insert(pan, 4.0 + i, 0.0));
    EXPECT_EQ(function<int(TrackEnvelope*)>("CountEnvelopePoints")(pan), count + 2);
    const auto sorted = times(pan);
    EXPECT_TRUE(std::ranges::is_sorted(sorted));
    EXPECT_EQ(sorted.back(), 4.0 + count);
}

TEST_F(EnvelopeLines, OnlyChangedPropertiesAndPointsAreWritten) {
    const auto text = function<bool(TrackEnvelope*, const char*, char*, bool)>("GetSetEnvelopeInfo_String");
    std::array<char, 1024> buffer{"1"};
    EXPECT_TRUE(text(volume, "ARM", buffer.data(), true));
    EXPECT_TRUE(move(volume, 2, 3.0));
    EXPECT_THAT(changes(), ElementsAre("-ARM 0", "+ARM 1", "-PT 2.00000000 0.00000000 1", "+PT 3 0 1"));
    EXPECT_TRUE(text(pan, "ACTIVE", buffer.data(), false));
    EXPECT_STREQ(buffer.data(), "0");
    buffer = {"my note"};
    EXPECT_TRUE(text(pan, "P_EXT:note", buffer.data(), true));
    EXPECT_THAT(changes(), ElementsAre("+<EXT", "+note \"my note\"", "+>"));

    const auto automation =
        function<double(TrackEnvelope*, int, const char*, double, bool)>("GetSetAutomationItemInfo");
    EXPECT_EQ(function<int(TrackEnvelope*)>("CountAutomationItems")(volume), 1);
    EXPECT_EQ(automation(volume, 0, "D_LENGTH", 0.0, false), 2.5);
    EXPECT_EQ(automation(volume, 0, "D_POSITION", 7.0, true), 7.0);
    EXPECT_EQ(automation(volume, 1, "D_POSITION", 7.0, true), 0.0);
    EXPECT_THAT(changes(), ElementsAre("-POOLEDENVINST 4 1 2.5 0 1 0 0 1 1 0 0 0 0 3 0 0",
                                       "+POOLEDENVINST 4 7 2.5 0 1 0 0 1 1 0 0 0 0 3 0 0"));
    EXPECT_THAT(workstation.take_failures(), IsEmpty());
    EXPECT_EQ(function<int(TrackEnvelope*, int)>("CountEnvelopePointsEx")(volume, 0), 0);
    EXPECT_EQ(workstation.take_failures().size(), 1) << "the points of automation items";
}

TEST_F(EnvelopeLines, StatesReplaceTheWholeEnvelope) {
    const auto get = function<bool(TrackEnvelope*, char*, int, bool)>("GetEnvelopeStateChunk");
    const auto set = function<bool(TrackEnvelope*, const char*, bool)>("SetEnvelopeStateChunk");
    std::array<char, 1024> state{};
    EXPECT_TRUE(get(pan, state.data(), state.size(), false));
    EXPECT_STREQ(state.data(), "<PANENV2\nACT 0 -1\nPT 0 0.5 2\nPT 4 -0.5 0\n>\n");
    EXPECT_TRUE(set(pan, "<PANENV2\nACT 1 -1\nODD 1\nPT 1 0.25 0\n>\n", false));
    EXPECT_THAT(times(pan), ElementsAre(1.0));
    EXPECT_FALSE(set(pan, "<VOLENV2\nPT 1 0.25 0\n>\n", false));
    EXPECT_FALSE(set(pan, "no block", false));
    EXPECT_NE(written().find("    <PANENV2\n      ACT 1 -1\n      ODD 1\n      PT 1 0.25 0\n    >\n"),
              std::string::npos);

    project::Take& take = *project.item(0)->take(0);
    take.add_envelope("Volume").set_points({{0.0, 1.0}});
    TrackEnvelope* of_take = workstation::Workstation::handle(*take.envelope("Volume"));
    changes();
    EXPECT_TRUE(set(of_take, "<VOLENV\nPT 0 0.5 0\n>\n", false));
    EXPECT_NE(written().find("<VOLENV\n"), std::string::npos) << "an envelope that had no lines yet";
    int effect = 0;
    EXPECT_EQ(function<MediaItem_Take*(TrackEnvelope*, int*, int*)>("Envelope_GetParentTake")(
                  of_take, &effect, nullptr),
              workstation::Workstation::handle(take));
    EXPECT_EQ(effect, -1);
    EXPECT_EQ((function<MediaTrack*(TrackEnvelope*, int*, int*)>("Envelope_GetParentTrack")(of_take, nullptr,
                                                                                            nullptr)),
              nullptr);
}

class ProjectSettings : public ProjectLines {
protected:
    ProjectSettings() {
        read(project_of(
            "  RECORD_PATH \"media\" \"\"\n  <RECORD_CFG\n    ZXZhdxgAAQ==\n  >\n  RENDER_FILE \"out\"\n"
            "  RENDER_FMT 0 2 44100\n  RENDER_RANGE 1 0 0 18 1000\n  SAMPLERATE 44100 0 0\n"
            "  MARKER 1 2.5 intro 0 0 1 B {50000000-0000-4000-8000-000000000001} 0\n"));
    }

    std::string text(const char* key, std::string given = "", bool is_set = false) const {
        std::array<char, 1024> buffer{};
        std::ranges::copy(given, buffer.begin());
        return function<bool(ReaProject*, const char*, char*, bool)>("GetSetProjectInfo_String")(
                   nullptr, key, buffer.data(), is_set)
                   ? buffer.data()
                   : "(false)";
    }
};

TEST_F(ProjectSettings, AreFieldsOfTheirLines) {
    const auto info = function<double(ReaProject*, const char*, double, bool)>("GetSetProjectInfo");
    EXPECT_EQ(info(nullptr, "RENDER_SRATE", 0.0, false), 44100);
    EXPECT_EQ(info(nullptr, "RENDER_BOUNDSFLAG", 2.0, true), 2);
    EXPECT_EQ(info(nullptr, "PROJECT_SRATE_USE", 1.0, true), 1);
    EXPECT_EQ(info(nullptr, "RENDER_NORMALIZE_TARGET", 0.5, true), 0.5);
    EXPECT_THAT(changes(), ElementsAre("-RENDER_RANGE 1 0 0 18 1000", "-SAMPLERATE 44100 0 0",
                                       "+RENDER_RANGE 2 0 0 18 1000", "+RENDER_NORMALIZE 0 0.5",
                                       "+SAMPLERATE 44100 1 0"));
    EXPECT_EQ(info(nullptr, "RENDER_NOTHING", 0.0, false), 0);
    EXPECT_EQ(workstation.take_failures().size(), 1);
}

TEST_F(ProjectSettings, TextsReadBack) {
    EXPECT_EQ(text("RECORD_PATH"), "media");
    EXPECT_EQ(text("RECORD_FORMAT"), "ZXZhdxgAAQ==");
    EXPECT_EQ(text("MARKER_GUID:0"), "{50000000-0000-4000-8000-000000000001}");
    EXPECT_EQ(text("MARKER_INDEX_FROM_GUID:{50000000-0000-4000-8000-000000000001}"), "0");
    EXPECT_EQ(text("MARKER_GUID:1"), "(false)");
    EXPECT_EQ(text("RENDER_METADATA"), "");
    EXPECT_EQ(text("RENDER_METADATA", "ID3:TALB"), "(false)");
    EXPECT_THAT(changes(), IsEmpty());
    text("PROJECT_TITLE", "Ein Stück", true);
    text("RENDER_PATTERN", "$project", true);
    text("RENDER_FORMAT", "l3pm", true);
    text("RENDER_METADATA", "ID3:TALB|An album", true);
    text("TRACK_GROUP_NAME:2", "Drums", true);
    EXPECT_THAT(changes(),
                testing::UnorderedElementsAre("+RENDER_PATTERN $project", "+<RENDER_CFG", "+bDNwbQ==", "+>",
                                              "+<RENDER_METADATA", "+TAG ID3:TALB \"An album\"", "+>",
                                              "+TITLE \"Ein Stück\"", "+GROUP_NAME 1 \"Drums\""));
    EXPECT_EQ(text("RENDER_METADATA"), "ID3:TALB");
    EXPECT_EQ(text("RENDER_METADATA", "ID3:TALB"), "An album");
    EXPECT_EQ(text("TRACK_GROUP_NAME:2"), "Drums");
    EXPECT_EQ(text("PROJECT_TITLE"), "Ein Stück");
    text("RENDER_METADATA", "ID3:TALB|", true);
    text("TRACK_GROUP_NAME:2", "", true);
    EXPECT_THAT(changes(), ElementsAre("-TAG ID3:TALB \"An album\"", "-GROUP_NAME 1 \"Drums\""));
}

} // namespace
} // namespace headless
