// The rows of the API against a hand-kept list, and the adapters' conversions.

#include "host/api_table.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <new>

namespace {

using mk_test::BoundPlugin;

const ApiRow* find_row(const std::string& name) {
    for (std::size_t i = 0; i < api_define_list.count; ++i)
        if (api_define_list.rows[i].api_name == "API_" + name)
            return &api_define_list.rows[i];
    return nullptr;
}

/// The four texts of a definition, joined as the hand-kept list has them.
std::string joined_definition(const char* definition) {
    std::string joined;
    for (int field = 0; field < 4; ++field) {
        joined += (field ? "|" : "") + std::string(definition);
        definition += std::strlen(definition) + 1;
    }
    return joined;
}

TEST(ApiTable, holds_the_rows_of_the_list_in_their_order_byte_for_byte) {
    std::ifstream list(TEST_DATA "/host/rows.txt");
    std::string line;
    std::size_t i = 0;
    for (; std::getline(list, line); ++i) {
        ASSERT_LT(i, api_define_list.count) << line;
        const ApiRow& row = api_define_list.rows[i];
        const std::string name = line.substr(0, line.find('|'));
        EXPECT_EQ(name + "|" + joined_definition(row.definition), line);
        EXPECT_EQ(row.api_name, "API_" + name);
        EXPECT_EQ(row.definition_name, "APIdef_" + name);
        EXPECT_EQ(row.vararg_name, "APIvararg_" + name);
        EXPECT_EQ(row.withdraw_api_name, "-API_" + name);
        EXPECT_EQ(row.withdraw_definition_name, "-APIdef_" + name);
        EXPECT_EQ(row.withdraw_vararg_name, "-APIvararg_" + name);
    }
    EXPECT_EQ(i, api_define_list.count);
}

TEST(ApiTable, has_the_empty_function_on_rows_that_only_document) {
    const ApiRow* row = find_row("MK_SetMediaItemListRIDESCRIBER");
    ASSERT_TRUE(row);
    EXPECT_EQ(row->function, reinterpret_cast<void*>(&__verarg_empty));
    EXPECT_EQ(row->vararg, row->function);
    EXPECT_EQ(__verarg_empty(nullptr, 0), nullptr);
}

bool bool_of_bool(bool value) { return value; }
bool int_is_minus_two(int value) { return value == -2; }
bool double_is_minus_six(double value) { return value == -6.0; }
int code(int value) { return value; }
MediaTrack* same_track(MediaTrack* track) { return track; }
bool throwing_bool(int) { throw std::bad_alloc(); }
int throwing_code(int) { throw std::bad_alloc(); }

template <auto Function>
std::uintptr_t through_adapter(std::uintptr_t word) {
    void* argv[] = {reinterpret_cast<void*>(word)};
    return reinterpret_cast<std::uintptr_t>(Entry<Function>::vararg(argv, 0));
}

TEST(Adapter, converts_words_as_the_bridge_passes_them) {
    EXPECT_EQ(through_adapter<&bool_of_bool>(0x100000000), 1u) << "only high bits set is still true";
    EXPECT_EQ(through_adapter<&bool_of_bool>(0), 0u);
    EXPECT_EQ(through_adapter<&int_is_minus_two>(0x7FFFFFFFE), 0u + 1u) << "the low 32 bits, signed";
    const double volume = -6.0;
    EXPECT_EQ(through_adapter<&double_is_minus_six>(reinterpret_cast<std::uintptr_t>(&volume)), 1u);
    EXPECT_EQ(through_adapter<&double_is_minus_six>(0), 0u) << "no pointer reads as 0.0";
    EXPECT_EQ(through_adapter<&same_track>(0x1234), 0x1234u);
    EXPECT_EQ(through_adapter<&code>(7), 1u) << "a code passes as 0 or 1";
    EXPECT_EQ(through_adapter<&code>(0), 0u);
    EXPECT_EQ(through_adapter<&throwing_bool>(0), 0u) << "an exception is the failure of its kind";
    EXPECT_EQ(through_adapter<&throwing_code>(0), 1u);
}

TEST_F(BoundPlugin, adapter_reaches_the_project_and_writes_its_outputs) {
    headless::Track& track = workstation.project().insert_track(0);
    auto* set = reinterpret_cast<void* (*)(void**, int)>(find_row("MK_SetTrackItemVolume")->vararg);
    double volume_db = -6.0;
    void* set_arguments[] = {handle(track), &volume_db};
    EXPECT_EQ(set(set_arguments, 2), reinterpret_cast<void*>(1));
    EXPECT_EQ(track.volume, std::exp(-6.0 * 0.115129254));

    auto* get = reinterpret_cast<void* (*)(void**, int)>(find_row("MK_GetTrackIdVolume")->vararg);
    double read_db = 0.0;
    void* get_arguments[] = {nullptr, nullptr, &read_db};
    EXPECT_EQ(get(get_arguments, 3), reinterpret_cast<void*>(1));
    EXPECT_EQ(read_db, -6.0);
    get_arguments[1] = reinterpret_cast<void*>(1);
    EXPECT_EQ(get(get_arguments, 3), nullptr) << "no second track";
}

} // namespace
