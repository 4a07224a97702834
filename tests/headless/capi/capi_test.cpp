// The C interface as a program calls it: what the Python package cannot get wrong, a program can.

#include "headless/capi/capi.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <gmock/gmock.h>

namespace headless::test {
namespace {

using testing::HasSubstr;

TEST(CApi, GivesAReasonForEachFailureOnce) {
    const ScratchFolder folder;
    EXPECT_FALSE(felspar_open(nullptr, nullptr));
    EXPECT_FALSE(felspar_open((folder / "no_plugin.so").c_str(), nullptr));
    EXPECT_FALSE(felspar_open(FIXTURE_PLUGIN, (folder / "missing.rpp").c_str()));
    EXPECT_FALSE(felspar_save("a.rpp"));
    EXPECT_FALSE(felspar_answer("title", "OK"));
    EXPECT_FALSE(felspar_function(0, nullptr, nullptr, nullptr));
    ASSERT_TRUE(felspar_open(FIXTURE_PLUGIN, nullptr));
    EXPECT_FALSE(felspar_open(FIXTURE_PLUGIN, nullptr));
    EXPECT_FALSE(felspar_function(-1, nullptr, nullptr, nullptr));
    EXPECT_FALSE(felspar_save(nullptr));
    EXPECT_FALSE(felspar_answer(nullptr, "OK"));
    EXPECT_FALSE(felspar_save((folder / "none/a.rpp").c_str()));
    for (const char* reason :
         {"no plug-in is named", "no_plugin.so", "missing.rpp", "no workstation is open",
          "no workstation is open", "a workstation is open already", "no project file is named",
          "a dialog's title or answer is missing", "none/a.rpp"})
        EXPECT_THAT(felspar_next_failure(), HasSubstr(reason));
    EXPECT_EQ(felspar_next_failure(), nullptr);
    felspar_close();
}

} // namespace
} // namespace headless::test
