// Every row called with handles, numbers and strings that make no sense, through its adapter and at its
// address, against hosts that lack functions: each call returns.

#include "api/media/actions.hpp"
#include "api/media/loudness.hpp"
#include "api/project/dialogs.hpp"
#include "api/project/files.hpp"
#include "api/project/folders.hpp"
#include "api/project/random_numbers.hpp"
#include "api/project/regions.hpp"
#include "api/project/strings.hpp"
#include "api/track/lookup.hpp"
#include "api/track/state.hpp"
#include "api/track/tree.hpp"
#include "api/track/volume_name.hpp"
#include "entry/api_row.hpp"
#include "entry/api_table.hpp"
#include "entry/entry.hpp"
#include "ride/ride.hpp"
#include "tests/plugin/support/bound_plugin.hpp"
#include "tests/plugin/support/failing_memory.hpp"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>

namespace {

/// Calls a function at its address, as other extensions do, with the words of its arguments.
template <class R, class... A>
void call_natively(R (*function)(A...), void** words) {
    [&]<std::size_t... I>(std::index_sequence<I...>) {
        static_cast<void>(function(definition_text::decode_argument<A>(words[I])...));
    }
    (std::index_sequence_for<A...>{});
}

#define MK_ROW(scope, name, names, help) [](void** words) { call_natively(&scope::name, words); },
#define MK_DOC_ROW(name, result, types, names, help) [](void**) { __verarg_empty(nullptr, 0); },

void (*const native_calls[])(void** words) = {
#include "entry/api_rows.inc"
};

class Abuse : public mk_test::BoundPlugin {
protected:
    Abuse() { std::filesystem::current_path(folder.path); } // for files and folders of relative names
    ~Abuse() override {
        std::filesystem::current_path(old_folder);
        RecordProperty("calls", calls);
        std::cout << calls << " calls\n";
    }

    /// Calls each row with the given words for handles, numbers and texts; without a text nothing can be
    /// written to.
    void call_every_row(void* handle_word, int number, double real, const char* text) {
        constexpr std::intptr_t buffer_size = 16;
        char buffer[buffer_size] = "";
        double out[4] = {};
        const std::map<std::string, void*> word_of_type{
            {"int", reinterpret_cast<void*>(static_cast<std::intptr_t>(number))},
            {"double", &real},
            {"const char*", const_cast<char*>(text)},
            {"char*", text ? buffer : nullptr},
            {"int*", text ? out : nullptr},
            {"bool*", text ? out : nullptr},
            {"double*", text ? out : nullptr}};
        ASSERT_EQ(std::size(native_calls), api_define_list.count);
        for (std::size_t i = 0; i < api_define_list.count; ++i) {
            const ApiRow& row = api_define_list.rows[i];
            const char* const type_text = row.definition + std::strlen(row.definition) + 1;
            std::istringstream types(type_text), names(type_text + std::strlen(type_text) + 1);
            std::vector<void*> words;
            for (std::string type, name; std::getline(types, type, ',') && std::getline(names, name, ',');) {
                const auto word = word_of_type.find(type);
                words.push_back(word == word_of_type.end() ? handle_word : word->second);
                if (name.ends_with("_sz") && number > buffer_size)
                    words.back() = reinterpret_cast<void*>(buffer_size);
            }
            const auto adapter = reinterpret_cast<void* (*)(void**, int)>(row.vararg);
            const auto call_adapter = [&] { adapter(words.data(), static_cast<int>(words.size())); };
            if (memory_runs_out) {
                calls += 1 + mk_test::fail_each_allocation(call_adapter);
                continue;
            }
            call_adapter();
            native_calls[i](words.data());
            calls += 2;
        }
    }

    void call_every_row_oddly(void* handle_word) {
        std::string long_text(1 << 20, 'x');
        call_every_row(handle_word, 0, 0.0, nullptr);
        call_every_row(handle_word, -1, std::numeric_limits<double>::quiet_NaN(), "");
        call_every_row(handle_word, 16, -std::numeric_limits<double>::infinity(), long_text.c_str());
        call_every_row(handle_word, std::numeric_limits<int>::max(), 1e308, "*");
        call_every_row(handle_word, std::numeric_limits<int>::min(), 1e308, "\xff\xfe\n\"");
        std::fill_n(long_text.begin(), long_text.size(), '\xe3');
        call_every_row(handle_word, 9, 0.0, long_text.c_str());
    }

    bool memory_runs_out = false; ///< at each allocation of each adapter in turn

private:
    const std::filesystem::path old_folder = std::filesystem::current_path();
    int calls = 0;
};

TEST_F(Abuse, ReturnsForNullsStaleHandlesAndOddValues) {
    headless::project::Project& project = workstation.project();
    void* stale = handle(add_item(mk_test::babble(0.2, 1)));
    project.erase_track(*project.tracks()[0]);
    for (void* word : {static_cast<void*>(nullptr), stale, static_cast<void*>(&project)})
        call_every_row_oddly(word);
    EXPECT_EQ(messages, std::vector<std::string>(6)) << "the box that is asked for with 0, and no other";
}

TEST_F(Abuse, ReturnsWhenMemoryRunsOut) {
    headless::project::Item& item = add_item(mk_test::babble(0.5, 2));
    memory_runs_out = true;
    for (void* word : {static_cast<void*>(handle(item)), static_cast<void*>(handle(item.track()))})
        call_every_row(word, 0, 0.0, "a name of more letters than a short text holds");
}

TEST_F(Abuse, ReturnsWithAHostWithoutFunctions) {
    reaper_plugin_info_t no_host{0x20E, nullptr, nullptr, [](const char*) -> void* { return nullptr; }};
    ReaperPluginEntry(nullptr, &no_host);
    for (void* word : {static_cast<void*>(nullptr), static_cast<void*>(this)})
        call_every_row_oddly(word);
    EXPECT_TRUE(messages.empty());
}

TEST_F(Abuse, ReturnsWithoutAnyOneHostFunction) {
    std::ifstream names(TEST_DATA "/entry/host_functions.txt");
    std::size_t hosts = 0;
    for (std::string name; names >> name;) {
        if (!workstation.function(name.c_str()))
            continue; // not one of those that are called
        headless::project::Item& item = add_item(mk_test::babble(0.1, 2), 0.0, name + ".wav");
        void* const known = get_func(name.c_str());
        overrule(name, static_cast<void*>(nullptr));
        enter();
        call_every_row(handle(item), 0, 0.0, "name");
        call_every_row(handle(item.track()), 0, 0.0, "name");
        overrule(name, known);
        workstation.project().erase_track(item.track());
        ++hosts;
    }
    EXPECT_GT(hosts, 40u);
}

} // namespace
