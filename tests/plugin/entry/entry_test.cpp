// Load and unload: what the host is asked and told, in which order.

#include "entry/api_table.hpp"
#include "entry/entry.hpp"
#include "host_api/host_functions.hpp"
#include "utility/message_catalogue.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <new>
#include <string>
#include <tuple>
#include <vector>

namespace {

std::vector<std::string> asked;
std::vector<std::pair<std::string, void*>> registered;

int log_registration(const char* name, void* payload) {
    registered.emplace_back(name, payload);
    return 0; // refused: the plug-in does not care
}

void* get_func(const char* name) {
    asked.emplace_back(name);
    return reinterpret_cast<void*>(&log_registration); // any address will do for those that are not called
}

reaper_plugin_info_t record{0x1, nullptr, nullptr, &get_func};

class Loading : public ::testing::Test {
protected:
    Loading() {
        asked.clear();
        registered.clear();
    }
    ~Loading() override {
        ReaperPluginEntry(nullptr, nullptr);
        REAPERAPI_LoadAPI(nullptr);
    }
};

// Runs in a process of its own, as the loaded flag is never cleared.
TEST(EntryDeathTest, UnloadingWithoutALoadDoesNothing) {
    EXPECT_EXIT(
        {
            plugin_register = &log_registration;
            const int result = ReaperPluginEntry(nullptr, nullptr);
            std::exit(result == 0 && registered.empty() && !imported ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(Loading, AsksForEveryHostFunctionInOrder) {
    std::ifstream published(TEST_DATA "/entry/host_functions.txt");
    EXPECT_EQ(ReaperPluginEntry(nullptr, &record), 1);
    EXPECT_EQ(asked, std::vector<std::string>(std::istream_iterator<std::string>(published), {}));
    EXPECT_EQ(asked.size(), 810u);
    EXPECT_EQ(reaper_plugin, &record);
    EXPECT_TRUE(imported);
    EXPECT_NE(GetTrack, nullptr);
}

TEST_F(Loading, RegistersEachRowThriceAndUnregistersIt) {
    ReaperPluginEntry(nullptr, &record);
    std::vector<std::pair<std::string, void*>> expected;
    for (std::size_t i = 0; i < api_define_list.count; ++i) {
        const ApiRow& row = api_define_list.rows[i];
        expected.emplace_back(row.api_name, row.function);
        expected.emplace_back(row.definition_name, const_cast<char*>(row.definition));
        expected.emplace_back(row.vararg_name, row.vararg);
    }
    EXPECT_EQ(registered, expected);

    registered.clear();
    EXPECT_EQ(ReaperPluginEntry(nullptr, nullptr), 0);
    for (auto& entry : expected)
        entry.first.insert(0, "-");
    EXPECT_EQ(registered, expected);
    EXPECT_EQ(reaper_plugin, nullptr);
    EXPECT_TRUE(imported);
}

TEST_F(Loading, CountsMissingHostFunctions) {
    EXPECT_EQ(REAPERAPI_LoadAPI([](const char*) -> void* { return nullptr; }), 810);
    reaper_plugin_info_t empty{0, nullptr, nullptr, nullptr};
    EXPECT_EQ(ReaperPluginEntry(nullptr, &empty), 1);
    EXPECT_EQ(call(CountTracks, nullptr), 0);
    EXPECT_EQ(ReaperPluginEntry(nullptr, nullptr), 0);
}

TEST_F(Loading, FailsWhenMemoryRunsOut) {
    record.GetFunc = [](const char*) -> void* { throw std::bad_alloc(); };
    EXPECT_EQ(ReaperPluginEntry(nullptr, &record), 0);
    record.GetFunc = &get_func;
}

TEST(Language, IsJapaneseOnlyForThatLocale) {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        unsetenv(variable);
    const std::tuple<const char*, const char*, bool> locales[] = {{"LANG", "ja_JP", true},
                                                                  {"LC_ALL", "ja_JP.UTF-8", true},
                                                                  {"LANG", "ja", false},
                                                                  {"LC_MESSAGES", "ja_JPN", false},
                                                                  {"LANG", "", false}};
    for (const auto& [variable, value, japanese] : locales) {
        setenv(variable, value, 1);
        mk_app::message_util::set_localize();
        unsetenv(variable);
        const std::string text = mk_app::message_list->MSG_DEPENDENCY_ERROR();
        const char* start = japanese ? "%sを使用するためには%sのインストールが必要です。\n"
                                     : "To use %s, you need to install %s.\n";
        EXPECT_TRUE(text.starts_with(start)) << value;
        EXPECT_STREQ(mk_app::message_list->ERROR_TITLE(), "MERIDEK_FELSPAR");
    }
}

} // namespace
