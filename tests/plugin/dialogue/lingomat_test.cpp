// The import of two folders of lines: pairs, groups, tracks, the timeline, and failures that it survives.

#include "dialogue/lingomat.hpp"
#include "entry/entry.hpp"
#include "tests/headless/support/sound_files.hpp"
#include "tests/plugin/support/bound_plugin.hpp"
#include "tests/plugin/support/failing_memory.hpp"

#include <algorithm>

namespace {

namespace fs = std::filesystem;
using mk_test::sample_rate;
using Texts = std::vector<std::string>;

class Import : public mk_test::BoundPlugin {
protected:
    void write(const std::string& name, double seconds = 1.0, double peak = 0.25) const {
        fs::create_directories((folder / name).parent_path());
        headless::test::write_sound(folder / name, headless::test::tone(seconds, peak, sample_rate),
                                    sample_rate);
    }
    /// Leaves a gap of 0.5 s. @returns the names of files without a partner, after what the list held before
    Texts import(double start, int start_end_type, bool match, bool ride, const Texts& fragments = {}) const {
        Texts unmatched{"kept"};
        EXPECT_EQ(mk_api::LINGOMAT::LINGOMAT_InsertMediaItems(folder / "fr", folder / "en", start, 0.5,
                                                              start_end_type, match, ride, 0, fragments,
                                                              unmatched),
                  0);
        for (std::string& path : unmatched)
            path = fs::path(path).filename();
        return unmatched;
    }
    /// A text for each track: depth, name, then position and file of each item.
    Texts tracks() const {
        Texts lines;
        for (const auto& track : project.tracks()) {
            lines.push_back(std::to_string(track->depth()) + track->name);
            for (const auto& item : track->items())
                lines.back() += " " + testing::PrintToString(item->position_seconds()) + ":" +
                                fs::relative(item->take(0)->source.file, folder.path).string();
        }
        return lines;
    }
    headless::project::Project& project = workstation.project();
};

TEST_F(Import, PairsByNameAndGroupsByFragment) {
    for (const char* name :
         {"fr/x/Bob_alice.WAV", "en/Bob_alice.WAV", "en/Line.wav", "en/line.WAV", "fr/line.wav"})
        write(name);
    EXPECT_EQ(import(0.0, 0, false, false, {"ALICE", "bob"}), (Texts{"kept", "line.wav"}));
    Texts found = tracks();
    std::ranges::sort(found);
    EXPECT_EQ(found, (Texts{"0ALICE", "0None", "1base", "1base 0:en/Bob_alice.WAV", "1unique",
                            "1unique 1.5:fr/x/Bob_alice.WAV"}))
        << "a group without pairs has its tracks, too";
}

TEST_F(Import, PlacesPairsInOrderOfTheirPaths) {
    write("en/a.wav", 2.0);
    write("fr/a.wav", 1.0);
    write("fr/a/a.wav", 1.5);
    write("fr/B.wav", 0.25);
    write("en/0/a.wav", 2.0);
    const std::string first =
        (*fs::directory_iterator(folder / "en")).is_directory() ? "en/0/a.wav" : "en/a.wav";
    headless::test::write_bytes(folder / "en/B.wav", "refused, so it takes no time");
    project.markers.add({false, 5.0});
    EXPECT_EQ(import(10.0, 2, false, true), Texts{"kept"}) << "any type but 1 counts from the start";
    const Texts expected{"0None", "1base 10.75:" + first + " 14.75:" + first,
                         "1unique 10:fr/B.wav 13.25:fr/a.wav 17.25:fr/a/a.wav"};
    EXPECT_EQ(tracks(), expected);
    EXPECT_EQ(project.item(4)->takes().size(), 1u) << "no ride without a match";
    import(2.5, 1, false, false);
    EXPECT_EQ(tracks().at(2).substr(0, expected[2].size() + 15), expected[2] + " 21.25:fr/B.wav")
        << "18.75 + 2.5 s";
}

TEST_F(Import, ReusesExistingTracks) {
    for (const auto& [name, change] :
         {std::pair("top", 1), {"None", 1}, {"Base", 0}, {"base", -2}, {"last", 0}}) {
        project.insert_track(99).name = name;
        project.tracks().back()->set_folder_depth_change(change);
    }
    const headless::project::Track* base = project.track(3);
    write("fr/a.wav");
    write("en/a.wav");
    import(0.0, 0, false, false);
    EXPECT_EQ(tracks(),
              (Texts{"0top", "0None", "1Base", "1base 0:en/a.wav", "1unique 1.5:fr/a.wav", "0last"}));
    EXPECT_EQ(project.track(3), base);
}

TEST_F(Import, MatchesAndRidesSubjectLines) {
    for (const char* name : {"a.wav", "b silent.wav", "c brief.wav"}) {
        write(std::string("fr/") + name);
        write(std::string("en/") + name, name[0] == 'c' ? 0.3 : 1.0, name[0] == 'b' ? 0.0 : 0.5);
    }
    import(0.0, 0, true, false);
    const auto& subjects = project.track(2)->items();
    EXPECT_NEAR(subjects.at(0)->volume, 2.0, 0.001);
    EXPECT_EQ(subjects.at(1)->volume, 1.0) << "its base line is silent";
    EXPECT_EQ(subjects.at(2)->volume, 1.0) << "its base line is too short";
    import(0.0, 1, true, true);
    for (const std::size_t i : {3u, 4u, 5u})
        EXPECT_EQ(subjects.at(i)->takes().size(), 2u) << "a ride renders to a new take";
    overrule("NF_AnalyzeTakeLoudness2", static_cast<void*>(nullptr));
    overrule("BR_EnvAlloc", static_cast<void*>(nullptr));
    import(0.0, 1, true, true);
    EXPECT_EQ(messages.size(), 2U) << "one for each missing function";
    EXPECT_EQ(subjects.size(), 9U);
}

TEST_F(Import, AddsTheLengthBeforeTheInterval) {
    write("fr/a.wav", 0.2);
    write("en/a.wav", 0.2);
    import(0.1, 0, false, false);
    EXPECT_EQ(project.item(1)->position_seconds(), (0.1 + 0.2) + 0.5);
}

TEST_F(Import, SurvivesTheFailureOfEachAllocation) {
    for (const char* name : {"fr/a line with a partner.wav", "en/a line with a partner.wav", "fr/other.wav"})
        write(name, 0.5);
    Texts unmatched;
    const int failures = mk_test::fail_each_allocation([&] {
        try {
            unmatched = import(0.0, 0, true, true, {"a line with a partner"});
        } catch (const std::bad_alloc&) {
        }
    });
    EXPECT_GT(failures, 100);
    EXPECT_EQ(unmatched, (Texts{"kept", "other.wav"})) << "once all memory was there";
}

TEST_F(Import, ListsUnpairedLinesWithoutAnyHostFunction) {
    for (const char* name : {"fr/a.wav", "fr/b.wav", "en/a.wav"})
        write(name);
    reaper_plugin_info_t no_host{0x20E, nullptr, nullptr, [](const char*) -> void* { return nullptr; }};
    ReaperPluginEntry(nullptr, &no_host);
    EXPECT_EQ(import(0.0, 1, true, true), (Texts{"kept", "b.wav"}));
    EXPECT_TRUE(project.tracks().empty());
}

} // namespace
