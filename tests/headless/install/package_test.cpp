// What there is to install, in the layout of an archive and of an installation.

#include "headless/install/package.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <gmock/gmock.h>

namespace headless::install {
namespace {

using testing::Key;
using testing::UnorderedElementsAre;

struct FoundPackage : testing::Test {
    std::filesystem::path make(const std::string& path) const {
        std::filesystem::create_directories((folder / path).parent_path());
        test::write_bytes(folder / path, path);
        return folder / path;
    }

    test::ScratchFolder folder;
};

TEST_F(FoundPackage, HasThePluginScriptsAndDefinitionsOfAnArchive) {
    const auto plugin = make("reaper_MERIDEK_FELSPAR.dll");
    make("scripts/lua/one.lua");
    make("scripts/lua/notes.txt");
    make("scripts/python/one.py");
    make("stubs/reaper_MERIDEK_FELSPAR.lua");
    const auto package = find_package(plugin, Platform::windows);
    ASSERT_TRUE(package) << package.error().message;
    EXPECT_THAT(*package,
                UnorderedElementsAre(Key("UserPlugins/reaper_MERIDEK_FELSPAR.dll"),
                                     Key("Scripts/MERIDEK_FELSPAR/one.lua"),
                                     Key("Scripts/MERIDEK_FELSPAR/stubs/reaper_MERIDEK_FELSPAR.lua")));
    EXPECT_EQ(test::bytes_of(package->at("Scripts/MERIDEK_FELSPAR/one.lua")), "scripts/lua/one.lua");
}

TEST_F(FoundPackage, GivesAnInstalledPluginTheNameThatTheWorkstationLoads) {
    const auto plugin = make("lib/felspar/libreaper_MERIDEK_FELSPAR_for_6.x.so");
    make("share/felspar/scripts/lua/one.lua");
    make("share/felspar/luals/reaper_MERIDEK_FELSPAR.lua");
    const auto package = find_package(plugin, Platform::gnu_linux);
    ASSERT_TRUE(package) << package.error().message;
    EXPECT_EQ(package->at("UserPlugins/reaper_MERIDEK_FELSPAR.so"), plugin);
    EXPECT_EQ(package->size(), 3U);
    EXPECT_EQ(plugin_path(Platform::macos), "UserPlugins/reaper_MERIDEK_FELSPAR.dylib");
}

TEST_F(FoundPackage, IsRefusedWithoutScripts) {
    const auto plugin = make("reaper_MERIDEK_FELSPAR.so");
    make("stubs/reaper_MERIDEK_FELSPAR.lua");
    EXPECT_THAT(find_package(plugin, Platform::gnu_linux), test::fails_telling("are not there"));
}

} // namespace
} // namespace headless::install
