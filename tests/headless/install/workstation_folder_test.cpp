// Where the resource folder is on each platform, and what it tells.

#include "headless/install/workstation_folder.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <gmock/gmock.h>
#include <map>

namespace headless::install {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;

struct ResourceFolder : testing::Test {
    fs::path make_folder(const std::string& path) const {
        fs::create_directories(folder / path);
        return folder / path;
    }

    fs::path make_portable(const std::string& path) const {
        make_folder(path);
        test::write_bytes(folder / path / "reaper.ini", "");
        return folder / path;
    }

    std::vector<fs::path> found(Platform platform) const {
        return find_resource_folders(platform, environment);
    }

    test::ScratchFolder folder;
    std::map<std::string, std::string> variables{{"HOME", (folder / "home").string()}};
    Environment environment = [this](const char* name) { return variables[name]; };
};

TEST_F(ResourceFolder, IsTheUsersOwnBeforeThoseOfPortableInstallations) {
    const fs::path portable = make_portable("home/opt/REAPER");
    EXPECT_THAT(found(Platform::gnu_linux), ElementsAre(portable));
    const fs::path own = make_folder("home/.config/REAPER");
    EXPECT_THAT(found(Platform::gnu_linux), ElementsAre(own, portable));
    variables["XDG_CONFIG_HOME"] = (folder / "configuration").string();
    EXPECT_THAT(found(Platform::gnu_linux), ElementsAre(portable));
    const fs::path stated = make_folder("configuration/REAPER");
    EXPECT_THAT(found(Platform::gnu_linux), ElementsAre(stated, portable));
}

TEST_F(ResourceFolder, HasItsPlaceOnEachPlatform) {
    variables["APPDATA"] = (folder / "roaming").string();
    variables["ProgramFiles"] = (folder / "programs").string();
    const fs::path windows = make_folder("roaming/REAPER");
    const fs::path portable = make_portable("programs/REAPER (x64)");
    const fs::path macos = make_folder("home/Library/Application Support/REAPER");
    EXPECT_THAT(found(Platform::windows), ElementsAre(windows, portable));
    EXPECT_THAT(found(Platform::macos), ElementsAre(macos));
    EXPECT_THAT(found(Platform::gnu_linux), IsEmpty());
}

TEST_F(ResourceFolder, LiesBesideAProgramInPathThatHasSettings) {
    const fs::path portable = make_portable("stick/REAPER");
    test::write_bytes(portable / "reaper", "");
    make_folder("bin");
    fs::create_symlink(portable / "reaper", folder / "bin/reaper");
    variables["PATH"] = ":" + (folder / "none").string() + ":" + (folder / "bin").string() + ":";
    EXPECT_THAT(found(Platform::gnu_linux), ElementsAre(fs::canonical(portable)));
    fs::remove(portable / "reaper.ini");
    EXPECT_THAT(found(Platform::gnu_linux), IsEmpty());
}

TEST_F(ResourceFolder, IsNotGuessedWithoutAnEnvironment) {
    variables.clear();
    for (const Platform platform : {Platform::gnu_linux, Platform::macos, Platform::windows})
        EXPECT_THAT(choose_resource_folder({}, platform, environment),
                    test::fails_telling("--resource-path"));
    EXPECT_THAT(choose_resource_folder(folder / "none", Platform::gnu_linux, environment),
                test::fails_telling("none: is not a folder"));
}

TEST_F(ResourceFolder, TellsTheVersionThatSavedTheLastProject) {
    const fs::path project = folder / "last one.rpp";
    test::write_bytes(folder / "reaper.ini",
                      "[other]\nlastproject=no\n[REAPER]\nlastproject=" + project.string() + "\n");
    const auto version = [&](const std::string& head) {
        test::write_bytes(project, head);
        return choose_resource_folder(folder.path, Platform::gnu_linux, environment)->version;
    };
    EXPECT_EQ(version("<REAPER_PROJECT 0.1 \"6.19/linux-x86_64\" 1700000000\r\n  RIPPLE 0\n"), "6.19");
    EXPECT_EQ(version("<REAPER_PROJECT 0.1 \"7.01\" 1700000000"), "7.01");
    for (const char* head : {"", "<REAPER_PROJECT ", "<REAPER_PROJECT 0.1", "<REAPER_PROJECT 0.1 \"6.19",
                             "<REAPER_PROJECT 0.1\n\"6.19/x\"", "other \"6.19/x\""})
        EXPECT_EQ(version(head), "") << head;
}

TEST_F(ResourceFolder, TellsWhetherTheSwsExtensionIsThere) {
    const auto sws = [&] {
        return choose_resource_folder(folder.path, Platform::gnu_linux, environment)->sws;
    };
    EXPECT_EQ(sws(), "");
    make_folder("UserPlugins");
    test::write_bytes(folder / "UserPlugins/reaper_other.so", "");
    EXPECT_EQ(sws(), "");
    test::write_bytes(folder / "UserPlugins/reaper_sws-x86_64.so", "");
    EXPECT_EQ(sws(), "reaper_sws-x86_64.so");
}

} // namespace
} // namespace headless::install
