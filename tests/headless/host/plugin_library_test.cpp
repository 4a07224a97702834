#include "headless/host/plugin_abi.hpp"
#include "headless/host/plugin_library.hpp"
#include "tests/headless/host/host_fixture.hpp"

#include <cstddef>

namespace headless {
namespace {

using testing::HasSubstr;

// What compiled plug-ins rely on.
static_assert(sizeof(PluginRecord) == 32 && offsetof(PluginRecord, hwnd_main) == 8);
static_assert(offsetof(PluginRecord, Register) == 16 && offsetof(PluginRecord, GetFunc) == 24);

using PluginLibraryTest = HostTest;

TEST_F(PluginLibraryTest, enters_and_leaves_a_plugin) {
    workstation.project().insert_track(0);
    {
        const auto plugin = PluginLibrary::load(FIXTURE_PLUGIN, workstation);
        ASSERT_TRUE(plugin) << plugin.error().message;
        EXPECT_EQ(function<int(int)>("TracksPlusVersion")(1000), 1 + 0x20E + 1000);
    }
    EXPECT_EQ(workstation.function("TracksPlusVersion"), nullptr) << "withdrawn by the entry with no record";
}

TEST_F(PluginLibraryTest, tells_why_a_library_cannot_be_used) {
    const auto reason = [&](const std::filesystem::path& file) {
        return PluginLibrary::load(file, workstation).error().message;
    };
    test::write_bytes(folder / "text.so", "no library");
    EXPECT_THAT(reason("missing.so"), HasSubstr("missing.so: "));
    EXPECT_THAT(reason(folder / "text.so"), HasSubstr("text.so: "));
    EXPECT_THAT(reason(PLAIN_LIBRARY), HasSubstr("has no ReaperPluginEntry"));
    EXPECT_THAT(reason(DECLINING_PLUGIN), HasSubstr("declined"));
}

} // namespace
} // namespace headless
