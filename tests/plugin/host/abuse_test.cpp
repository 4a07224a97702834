// Every row called with handles, numbers and texts that make no sense, against hosts that lack functions:
// each call returns.

#include "host/api_table.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

namespace {

class Abuse : public mk_test::BoundPlugin {
protected:
    Abuse() { std::filesystem::current_path(folder.path); } // for files and folders of relative names
    ~Abuse() override { std::filesystem::current_path(old_folder); }

    /// Calls each row through its adapter, with the given words for handles, ints and texts.
    void call_every_row(void* handle_word, int number, double real, const char* text) {
        char buffer[16] = "";
        double out[4] = {};
        const std::map<std::string, void*> word_of_type{
            {"int", reinterpret_cast<void*>(static_cast<std::intptr_t>(number))},
            {"double", &real},
            {"const char*", const_cast<char*>(text)},
            {"char*", buffer},
            {"int*", text ? out : nullptr},
            {"bool*", text ? out : nullptr},
            {"double*", text ? out : nullptr}};
        for (std::size_t i = 0; i < api_define_list.count; ++i) {
            const ApiRow& row = api_define_list.rows[i];
            std::istringstream types(row.definition + std::strlen(row.definition) + 1);
            std::vector<void*> words;
            for (std::string type; std::getline(types, type, ',');) {
                const auto word = word_of_type.find(type);
                words.push_back(word == word_of_type.end() ? handle_word : word->second);
            }
            const int count = static_cast<int>(words.size());
            reinterpret_cast<void* (*)(void**, int)>(row.vararg)(words.data(), count);
        }
    }

private:
    const std::filesystem::path old_folder = std::filesystem::current_path();
};

TEST_F(Abuse, of_nulls_stale_handles_and_odd_values_returns_every_time) {
    headless::Project& project = workstation.project();
    void* stale = handle(add_item(mk_test::babble(0.2, 1)));
    project.erase_track(*project.tracks()[0]);
    const std::string long_text(1 << 20, 'x');
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (void* word : {static_cast<void*>(nullptr), stale, static_cast<void*>(&project)}) {
        call_every_row(word, 0, 0.0, nullptr);
        call_every_row(word, -1, nan, "");
        call_every_row(word, 16, -std::numeric_limits<double>::infinity(), long_text.c_str());
        call_every_row(word, std::numeric_limits<int>::min(), 1e308, "\xff\xfe\n\"");
    }
    EXPECT_EQ(messages, std::vector<std::string>(3)) << "the box that is asked for with 0, and no other";
}

TEST_F(Abuse, of_a_host_that_lacks_any_one_of_its_functions_returns_every_time) {
    std::ifstream names(TEST_DATA "/host/host_functions.txt");
    std::size_t hosts = 0;
    for (std::string name; names >> name;) {
        if (!workstation.function(name.c_str()))
            continue; // not one of those that are called
        headless::Item& item = add_item(mk_test::babble(0.1, 2), 0.0, name + ".wav");
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
