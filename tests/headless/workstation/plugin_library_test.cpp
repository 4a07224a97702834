#include "common/plugin_abi.hpp"
#include "headless/workstation/plugin_library.hpp"
#include "tests/headless/workstation/host_fixture.hpp"

#include <cstddef>

namespace headless {
namespace {

// What compiled plug-ins rely on.
static_assert(sizeof(reaper_plugin_info_t) == 32 && offsetof(reaper_plugin_info_t, hwnd_main) == 8);
static_assert(offsetof(reaper_plugin_info_t, Register) == 16 &&
              offsetof(reaper_plugin_info_t, GetFunc) == 24);

using PluginLibraryTest = HostTest;

TEST_F(PluginLibraryTest, EntersAndLeavesAPlugin) {
    workstation.project().insert_track(0);
    {
        const auto plugin = workstation::PluginLibrary::load(FIXTURE_PLUGIN, workstation);
        EXPECT_EQ(function<int()>("Tracks")(), 1);
    }
    EXPECT_EQ(workstation.function("Tracks"), nullptr) << "unregistered by the entry with no record";
}

TEST_F(PluginLibraryTest, ReportsWhyALibraryCannotBeLoaded) {
    test::write_bytes(folder / "text.so", "no library");
    const std::pair<std::filesystem::path, const char*> libraries[] = {
        {"missing.so", "missing.so: "},
        {folder / "text.so", "text.so: "},
        {PLAIN_LIBRARY, "has no ReaperPluginEntry"},
        {DECLINING_PLUGIN, "declined"}};
    for (const auto& [file, reason] : libraries)
        EXPECT_THAT(workstation::PluginLibrary::load(file, workstation), fails_telling(reason));
}

} // namespace
} // namespace headless
