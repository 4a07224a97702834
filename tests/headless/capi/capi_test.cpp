// The C interface as a program calls it: what the Python package cannot get wrong, a program can.

#include "headless/capi/capi.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <cstdint>
#include <gmock/gmock.h>
#include <map>

namespace headless::test {
namespace {

using testing::HasSubstr;
using Call = void*(void** words, int count);

std::map<std::string, Call*> functions() {
    std::map<std::string, Call*> functions;
    const char* name = nullptr;
    const char* definition = nullptr;
    Call* call = nullptr;
    for (int index = 0; felspar_function(index, &name, &definition, &call); ++index)
        functions.emplace(name, call);
    return functions;
}

int count_tracks() {
    void* project = nullptr;
    return static_cast<int>(reinterpret_cast<std::intptr_t>(functions().at("CountTracks")(&project, 1)));
}

struct CApi : testing::Test {
    ~CApi() override {
        felspar_close();
        while (felspar_next_failure()) {
        }
    }

    ScratchFolder folder;
};

TEST_F(CApi, CallsSavesAndReopens) {
    const std::string project = folder / "project.rpp";
    ASSERT_TRUE(felspar_open(FIXTURE_PLUGIN, nullptr));
    EXPECT_EQ(count_tracks(), 0);
    void* words[] = {nullptr, nullptr}; // at index 0, without defaults
    functions().at("InsertTrackAtIndex")(words, 2);
    EXPECT_TRUE(felspar_answer("title", "OK"));
    EXPECT_TRUE(felspar_save(project.c_str()));
    EXPECT_FALSE(felspar_function(-1, nullptr, nullptr, nullptr));
    felspar_close();
    EXPECT_TRUE(functions().empty());
    ASSERT_TRUE(felspar_open(FIXTURE_PLUGIN, project.c_str()));
    EXPECT_EQ(count_tracks(), 1);
    EXPECT_EQ(felspar_next_failure(), nullptr);
}

TEST_F(CApi, GivesAReasonForEachFailureOnce) {
    EXPECT_FALSE(felspar_open(nullptr, nullptr));
    EXPECT_FALSE(felspar_open((folder / "no_plugin.so").c_str(), nullptr));
    EXPECT_FALSE(felspar_open(FIXTURE_PLUGIN, (folder / "missing.rpp").c_str()));
    EXPECT_FALSE(felspar_save("a.rpp"));
    EXPECT_FALSE(felspar_answer("title", "OK"));
    ASSERT_TRUE(felspar_open(FIXTURE_PLUGIN, nullptr));
    EXPECT_FALSE(felspar_open(FIXTURE_PLUGIN, nullptr));
    EXPECT_FALSE(felspar_save(nullptr));
    EXPECT_FALSE(felspar_answer(nullptr, "OK"));
    EXPECT_FALSE(felspar_save((folder / "none/a.rpp").c_str()));
    for (const char* reason :
         {"no plug-in is named", "no_plugin.so", "missing.rpp", "no workstation is open",
          "no workstation is open", "a workstation is open already", "no project file is named",
          "a dialog's title or answer is missing", "none/a.rpp"})
        EXPECT_THAT(felspar_next_failure(), HasSubstr(reason));
    EXPECT_EQ(felspar_next_failure(), nullptr);
}

} // namespace
} // namespace headless::test
