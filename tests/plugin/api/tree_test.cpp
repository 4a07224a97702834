// The folder tree: depths wished for, the relative numbers written for them, insertions and lists.

#include "api/track/lists.hpp"
#include "api/track/tree.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cmath>
#include <tuple>

namespace {

using namespace mk_api::track;
using namespace MK_FELSPAR;
using Texts = std::vector<std::string>;

std::string writes; ///< "number:relative depth " for each

class Tree : public mk_test::BoundPlugin {
protected:
    Tree() {
        SetMediaTrackInfo_Value = [](MediaTrack* track, const char* key, double value) {
            int number = -1;
            GetTrackItemIndex(track, &number);
            writes += std::to_string(number) + ":" + std::to_string(std::lround(value)) + " ";
            auto* write =
                living().function_as<bool(MediaTrack*, const char*, double)>("SetMediaTrackInfo_Value");
            return write(track, key, value);
        };
    }
    static headless::workstation::Workstation& living() {
        return *headless::workstation::Workstation::current();
    }
    static MediaTrack* track_at(int number) {
        return handle(*living().project().track(static_cast<std::size_t>(number)));
    }
    /// A new tree of a digit for each track's depth.
    void build(const std::string& depths) {
        while (!project.tracks().empty())
            project.erase_track(*project.tracks()[0]);
        for (std::size_t i = 0; i < depths.size(); ++i)
            project.insert_track(i).set_folder_depth_change(i + 1 < depths.size() ? depths[i + 1] - depths[i]
                                                                                  : 0);
        writes.clear();
    }
    static std::string depths() {
        std::vector<mk_object::TrackDetail> tracks;
        GetTrackDepthList(nullptr, tracks);
        std::string digits;
        for (const auto& track : tracks)
            digits += std::to_string(track.Depth->value);
        return digits;
    }
    /// What was written to bring a track to a depth, and the tree then.
    std::string moved(const std::string& before, int number, int depth) {
        build(before);
        EXPECT_EQ(SetTrackIdDepth(nullptr, number, depth), depth != 2) << "two levels below the one before";
        return writes + depths();
    }
    /// The number of a new child of a track, what was written for it, and the tree then.
    std::string with_child(const std::string& before, int parent) {
        build(before);
        int number = -1;
        MediaTrack* child = InsertChildTrack(GetTrack(nullptr, parent), &number);
        EXPECT_EQ(child, GetTrack(nullptr, number));
        EXPECT_EQ(GetParentTrack(child), GetTrack(nullptr, parent));
        return std::to_string(number) + " " + writes + depths();
    }
    headless::project::Project& project = workstation.project();
};

TEST_F(Tree, MovesATrackWithItsSubtree) {
    EXPECT_EQ(
        (Texts{moved("0110", 1, 0), moved("0121", 1, 0), moved("000", 1, 1), moved("0123", 3, 0),
               moved("0120", 3, 3), moved("000", 1, 2), moved("01", 0, 5), moved("01", 9, 1)}),
        (Texts{"0:0 1:1 0010", "0:0 2:0 0011", "0:1 1:-1 010", "2:-2 0120", "2:1 0123", "000", "01", "01"}));
}

TEST_F(Tree, InsertsAChildAfterTheLastOne) {
    EXPECT_EQ((Texts{with_child("0110", 0), with_child("0120", 0), with_child("00", 1), with_child("00", 0),
                     with_child("0120", 2)}),
              (Texts{"3 2:0 3:-1 01110", "2 1:0 2:1 01120", "2 1:1 001", "1 0:1 1:-1 1:-1 010",
                     "3 2:1 3:-3 3:-3 01230"}));
}

std::string calls; ///< one letter each: Count, Get, Depth, Insert

TEST_F(Tree, IsReadInAFixedOrder) {
    build("0110");
    CountTracks = [](ReaProject*) { return calls += "C", 4; };
    GetTrack = [](ReaProject*, int number) {
        calls += "G" + std::to_string(number);
        return track_at(number);
    };
    GetTrackDepth = [](MediaTrack*) { return calls += "D", 1; };
    InsertTrackAtIndex = [](int, bool) { calls += "I"; };
    const auto calls_before_insertion = [](int parent) {
        MediaTrack* track = GetTrack(nullptr, parent);
        calls.clear();
        InsertChildTrack(track, nullptr);
        return calls.substr(0, calls.find('I'));
    };
    EXPECT_EQ(calls_before_insertion(0), "CG0G1G2G3CCG0G1G2D") << "number and depth of the last child";
    EXPECT_EQ(calls_before_insertion(1), "CG0G1G2G3CCG0G1G2DD") << "the track behind, then the parent";
}

TEST_F(Tree, ListsChildrenByParentOrAtTheTop) {
    build("01210");
    int count = 9;
    EXPECT_EQ(GetSelectedTrackFirstInfo(nullptr, &count), nullptr) << "nothing selected";
    EXPECT_EQ(count, 9);
    std::vector<MediaTrack*> children{nullptr};
    EXPECT_TRUE(GetTrackIdChildList(nullptr, 0, children, count));
    EXPECT_EQ(std::tuple(count, children.size()), std::tuple(3, 3u)) << "appended to, with the count of all";
    EXPECT_TRUE(GetTrackIdChildList(nullptr, 9, children, count));
    EXPECT_EQ(count, 5) << "no parent: the top";
}

TEST_F(Tree, InsertsATrackWhoseNameIsMissing) {
    build("01210");
    for (const std::size_t i : {1u, 4u})
        project.track(i)->name = "Bob";
    int number = 9;
    EXPECT_EQ(InsertTrackSearchUniqueOnly(nullptr, "Bob", &number), GetTrack(nullptr, 1));
    EXPECT_EQ(number, 1);
    const MediaTrack* bob = InsertTrackSearchUniqueOnly(nullptr, "bob", &number);
    EXPECT_EQ(number, 5);
    EXPECT_EQ(bob, GetTrack(nullptr, 5));
    EXPECT_EQ(project.track(5)->name, "bob");
    const MediaTrack* last = InsertTrackId(nullptr, 99);
    EXPECT_EQ(last, GetTrack(nullptr, 6));
}

} // namespace
