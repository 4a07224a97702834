// Every row called with handles, numbers and texts that make no sense, against hosts that lack functions:
// each call returns, and what it reports is a failure or the host's answer.

#include "host/api_table.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cstdio>
#include <fstream>
#include <limits>
#include <sstream>

namespace {

using mk_test::BoundPlugin;

std::vector<std::string> parameter_types(const ApiRow& row) {
    std::istringstream fields(
        std::string(row.definition + std::char_traits<char>::length(row.definition) + 1));
    std::vector<std::string> types;
    for (std::string type; std::getline(fields, type, ',');)
        types.push_back(type);
    return types;
}

class Abuse : public BoundPlugin {
protected:
    /// Calls each row through its adapter, with the given words for handles, ints and texts.
    void call_every_row(void* handle_word, int number, double real, const char* text) {
        char buffer[16] = "";
        double out[4] = {};
        for (std::size_t i = 0; i < api_define_list.count; ++i) {
            const ApiRow& row = api_define_list.rows[i];
            std::vector<void*> words;
            for (const std::string& type : parameter_types(row)) {
                if (type == "int")
                    words.push_back(reinterpret_cast<void*>(static_cast<std::intptr_t>(number)));
                else if (type == "double")
                    words.push_back(&real);
                else if (type == "const char*")
                    words.push_back(const_cast<char*>(text));
                else if (type == "char*")
                    words.push_back(buffer);
                else if (type == "int*" || type == "bool*" || type == "double*")
                    words.push_back(text ? out : nullptr);
                else
                    words.push_back(handle_word);
            }
            reinterpret_cast<void* (*)(void**, int)>(row.vararg)(words.data(),
                                                                 static_cast<int>(words.size()));
            ++calls;
        }
    }

    std::size_t calls = 0;
};

TEST_F(Abuse, of_nulls_stale_handles_and_odd_values_returns_every_time) {
    headless::Project& project = workstation.project();
    headless::Item& item = add_item(mk_test::babble(0.2, 8000, 1));
    MediaItem* stale = handle(item);
    project.erase_track(*project.tracks()[0]);
    const std::string long_text(1 << 20, 'x');
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (void* word :
         {static_cast<void*>(nullptr), static_cast<void*>(stale), static_cast<void*>(&project)}) {
        call_every_row(word, 0, 0.0, nullptr);
        call_every_row(word, -1, nan, "");
        call_every_row(word, 16, -std::numeric_limits<double>::infinity(), long_text.c_str());
        call_every_row(word, std::numeric_limits<int>::min(), 1e308, "\xff\xfe\n\"");
    }
    EXPECT_EQ(calls, 12 * api_define_list.count);
    EXPECT_TRUE(project.tracks().empty());
    EXPECT_TRUE(messages.empty());
}

TEST_F(Abuse, of_a_host_that_lacks_any_one_of_its_functions_returns_every_time) {
    std::ifstream names(TEST_DATA "/host/host_functions.txt");
    std::size_t hosts = 0;
    for (std::string name; names >> name;) {
        if (!workstation.function(name.c_str()))
            continue; // not one of those that are called
        headless::Item& item = add_item(mk_test::babble(0.1, 8000, 2), 0.0, name + ".wav");
        overrule(name, static_cast<void*>(nullptr));
        enter();
        call_every_row(handle(item), 0, 0.0, "name");
        call_every_row(headless::Workstation::handle(item.track()), 0, 0.0, "name");
        overrule(name, workstation.function(name.c_str()));
        workstation.project().erase_track(item.track());
        ++hosts;
    }
    EXPECT_GT(hosts, 40u);
}

} // namespace
