#include "headless/matching/line_survey.hpp"
#include "headless/matching/near_match.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <climits>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

TEST(LineSurvey, FindsNearNamesWithTheirDifferences) {
    struct NearNames {
        const char* subject;
        const char* base;
        std::vector<std::string_view> differences; ///< empty: they are not one line
    };
    const NearNames rows[] = {{"BOB_01.wav", "bob_01.WAV", {"letter case"}},
                              {"\xc3\x89t\xc3\xa9.wav", "\xc3\xa9t\xc3\xa9.wav", {"letter case"}},
                              {"\xc3\xa9t\xc3\xa9.wav", "e\xcc\x81te\xcc\x81.wav", {"Unicode form"}},
                              {"\xe3\x81\x8c.wav", "\xe3\x81\x8b\xe3\x82\x99.wav", {"Unicode form"}},
                              {" a\xe3\x80\x80.wav", "a.wav", {"blanks"}},
                              {"fr_line.wav", "en_line.wav", {"language"}},
                              {"line-pt-BR.wav", "line.wav", {"language"}},
                              {"japanese.line.wav", "ENG.line.wav", {"language"}},
                              {"it_line.wav", "en_line.wav", {"language"}}, // a word, but against a code
                              {"FR_Line.wav", "en_line.wav", {"letter case", "language"}},
                              {"say_it.wav", "say_no.wav", {}},
                              {"no_way.wav", "way.wav", {}},
                              {"fr_line.wav", "line_fr.wav", {}},
                              {"fr.wav", "en.wav", {}},
                              {"fr_be_quiet.wav", "en_quiet.wav", {}}, // no region
                              {"caf\xe9.wav", "caf\xe8.wav", {}},      // no UTF-8
                              {"line_1.wav", "line_2.wav", {}}};
    for (const auto& [subject, base, differences] : rows) {
        const auto survey = matching::survey_lines({fs::path("/fr") / subject}, {fs::path("/en") / base});
        ASSERT_EQ(survey.near_lines.size(), differences.empty() ? 0U : 1U) << subject;
        for (const auto& near : survey.near_lines)
            EXPECT_EQ(near.differences, differences) << subject;
        EXPECT_THAT(survey.pairs, IsEmpty()) << subject << ": the pairing stays exact";
    }
}

/// Each pair as "subject base".
std::vector<std::string> names_of(const std::vector<matching::LinePair>& pairs) {
    std::vector<std::string> names;
    for (const auto& [subject, base] : pairs)
        names.push_back(subject.string() + " " + base.string());
    return names;
}

TEST(LineSurvey, PairsEqualNamesAndListsTheRest) {
    const matching::LineSurvey survey = matching::survey_lines(
        {"/fr/x/a.wav", "/fr/b.wav", "/fr/a.wav"}, {"/en/y/c.wav", "/en/z/a.wav", "/en/a.wav", "/en/c.wav"});
    EXPECT_THAT(names_of(survey.pairs), ElementsAre("/fr/a.wav /en/z/a.wav", "/fr/x/a.wav /en/z/a.wav"))
        << "the first base line of a name counts";
    EXPECT_THAT(survey.unpaired_subjects, ElementsAre("/fr/b.wav"));
    EXPECT_THAT(survey.unpaired_bases, ElementsAre("/en/c.wav", "/en/y/c.wav"));
    EXPECT_THAT(survey.near_lines, IsEmpty());
    ASSERT_EQ(survey.same_subject_names.size(), 1U);
    EXPECT_THAT(survey.same_subject_names[0].files, ElementsAre("/fr/a.wav", "/fr/x/a.wav"));
    ASSERT_EQ(survey.same_base_names.size(), 2U);
    EXPECT_EQ(survey.same_base_names[1].name, "c.wav");
}

TEST(LineSurvey, FindsWavFilesInSubfoldersButNotInLinkedFolders) {
    const test::ScratchFolder folder;
    fs::create_directories(folder / "b/c");
    for (const char* name : {"b/c/z.wav", "b/a.WAV", "B.wav", ".wav", "a.wave", "target"})
        test::write_bytes(folder / name, "");
    fs::create_directory_symlink("..", folder / "b/loop");
    fs::create_symlink("../target", folder / "b/link.wav");
    fs::create_symlink("gone", folder / "b/gone.wav");
    const auto lines = matching::find_lines(folder.path);
    ASSERT_TRUE(lines);
    EXPECT_THAT(*lines, UnorderedElementsAre(folder / "B.wav", folder / "b/a.WAV", folder / "b/c/z.wav",
                                             folder / "b/link.wav"));
    EXPECT_THAT(matching::find_lines(folder / "missing"), test::fails_telling("missing"));
}

TEST(LineSurvey, FailsForAPathThatIsTooLong) {
    const test::ScratchFolder folder;
    const std::string name(250, 'n');
    int deepest = open(folder.path.c_str(), O_DIRECTORY);
    for (std::size_t length = folder.path.native().size(); length + name.size() < PATH_MAX; length += 251) {
        const int above = deepest;
        mkdirat(above, name.c_str(), 0700);
        deepest = openat(above, name.c_str(), O_DIRECTORY);
        close(above);
    }
    close(openat(deepest, (name + ".wav").c_str(), O_CREAT | O_WRONLY, 0600));
    close(deepest);
    EXPECT_THAT(matching::find_lines(folder.path), test::fails_telling(name + ".wav: File name too long"));
}

} // namespace
} // namespace headless
