#include "headless/jobs/output_guard.hpp"
#include "headless/report/import_report.hpp"
#include "headless/rpp/rpp.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/published_render.hpp"
#include "tests/headless/support/sound_files.hpp"

namespace headless::test {
namespace {

namespace fs = std::filesystem;
using workstation::ExistingRender;

/// A recording that the run reads, a render of an earlier run, and a guard that knows the recording.
struct OutputGuard : testing::Test {
    OutputGuard() {
        audio::AudioCache cache;
        write_sound(recording, tone(0.1, 0.5, 8000), 8000);
        guard.protect({&recording, 1});
        EXPECT_TRUE(render_published(cache, recording, {0, 800}, audio::GainCurve(), render));
    }

    ScratchFolder folder;
    const fs::path recording = folder / "recording.wav";
    const fs::path render = folder / "render.wav";
    jobs::OutputGuard guard{{}};
};

void expect_refusal(const Result<void>& permitted, const std::string& reason) {
    ASSERT_THAT(permitted, fails_telling(reason));
    EXPECT_EQ(permitted.error().kind, FailureKind::refused) << reason;
}

TEST_F(OutputGuard, LetsAudioReplaceOnlyEarlierRenders) {
    EXPECT_TRUE(guard.permits_audio(folder / "new.wav"));
    EXPECT_TRUE(guard.permits_audio(render));
    fs::create_hard_link(recording, folder / "same.wav");
    fs::create_symlink("nowhere", folder / "link.wav");
    write_bytes(folder / "note.wav", "a note");
    expect_refusal(guard.permits_audio(recording),
                   "recording.wav: not overwritten, as it is one of the recordings");
    expect_refusal(guard.permits_audio(folder / "same.wav"), "is one of the recordings");
    expect_refusal(guard.permits_audio(folder / "note.wav"), "was not made by this command");
    expect_refusal(guard.permits_audio(folder / "link.wav"), "is a link that leads nowhere");
    guard.wrote(render);
    expect_refusal(guard.permits_audio(render), "was written for another recording of that name");
}

TEST_F(OutputGuard, JudgesExistingRenders) {
    EXPECT_EQ(guard.judge_render(render), ExistingRender::replace);
    EXPECT_EQ(guard.judge_render(recording), ExistingRender::avoid);
    EXPECT_TRUE(guard.may_remove(render));
    guard.spare({&render, 1});
    EXPECT_EQ(guard.judge_render(render), ExistingRender::use_if_same);
    EXPECT_FALSE(guard.may_remove(render)) << "a project plays it";
    guard.wrote(render);
    EXPECT_EQ(guard.judge_render(render), ExistingRender::avoid);
}

TEST_F(OutputGuard, LetsTextReplaceOnlyItsOwnKind) {
    const fs::path project = folder / "p.rpp";
    project::Project empty;
    ASSERT_TRUE(rpp::save_project(empty, project));
    const fs::path table = folder / "table";
    write_bytes(table, report::csv_heading() + "a pair");
    const fs::path list = folder / "list";
    write_bytes(list, "/fr/a.wav\n/fr/b.WAV\n");
    EXPECT_TRUE(guard.permits_project(project));
    EXPECT_TRUE(guard.permits_table(table));
    EXPECT_TRUE(guard.permits_list(list));
    expect_refusal(guard.permits_project(table), "table: not overwritten, as it is no project file");
    expect_refusal(guard.permits_table(list), "is no table made by this command");
    expect_refusal(guard.permits_list(project), "is no list made by this command");
    write_bytes(list, "C:\\fr\\a.wav\n\\\\server\\fr\\b.wav\n");
    EXPECT_TRUE(guard.permits_list(list));
    for (const char* foreign : {"/fr/a.wav\na note\n", "fr/a.wav\n", "C:a.wav\n"}) {
        write_bytes(list, foreign);
        expect_refusal(guard.permits_list(list), "is no list");
    }
    EXPECT_THAT(guard.permits_table(folder / "none/table"),
                fails_telling("the folder for the table does not exist"));
    guard.protect({&project, 1});
    expect_refusal(guard.permits_project(project), "is one of the recordings");
}

} // namespace
} // namespace headless::test
