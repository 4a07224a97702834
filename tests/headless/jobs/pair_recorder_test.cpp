#include "headless/functions/all_functions.hpp"
#include "headless/jobs/pair_recorder.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/sound_files.hpp"

namespace headless::test {
namespace {

TEST(PairRecorder, LooksInsertedFilesUpAmongThePlannedPairs) {
    const ScratchFolder folder;
    for (const char* name : {"base", "subject_1", "subject_2", "new"})
        write_sound(folder / name, tone(0.5, 0.5, 8000), 8000);
    workstation::Workstation workstation{functions::all_functions()};
    workstation.project().insert_track(0).set_selected(true);
    jobs::OutputGuard guard({});
    const std::vector<matching::LinePair> planned{{folder / "subject_1", folder / "base"},
                                                  {folder / "subject_2", folder / "base"}};
    jobs::PairRecorder recorder(workstation, guard, planned, {});
    auto* insert = workstation.function_as<int(const char*, int)>("InsertMedia");
    for (const char* name : {"base", "subject_1", "new", "base"})
        EXPECT_EQ(insert((folder / name).c_str(), 0), 1);
    recorder.finish();
    ASSERT_EQ(recorder.pairs().size(), 2U);
    EXPECT_EQ(recorder.pairs()[0].subject.position_seconds, 0.5);
    EXPECT_EQ(recorder.pairs()[1].base.position_seconds, 1.5);
    EXPECT_EQ(recorder.pairs()[1].subject.file, folder / "subject_2");
    EXPECT_FALSE(recorder.pairs()[1].subject.is_placed);
    EXPECT_EQ(recorder.pairs()[1].remark, "the import ended before its subject line");
    EXPECT_THAT(recorder.failures(), testing::ElementsAre(tells("new: was inserted out of turn")));
}

} // namespace
} // namespace headless::test
