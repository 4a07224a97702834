// The rows of the API against a hand-kept list, and the adapters' conversions.

#include "entry/api_row.hpp"
#include "entry/api_table.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <algorithm>
#include <fstream>
#include <new>
#include <string_view>

namespace {

/// Rows whose parameters are objects: what scripts read about functions that they call in another way.
constexpr std::string_view documentation[] = {"MK_Json_Deserialize", "MK_Json_Serialize", "MK_GetPathInfo",
                                              "MK_SetMediaItemListRIDESCRIBER",
                                              "MK_LINGOMAT_InsertMediaItems"};

TEST(ApiTable, EqualsTheHandKeptList) {
    std::ifstream list(TEST_DATA "/entry/rows.txt");
    std::string line;
    std::size_t i = 0;
    for (; std::getline(list, line); ++i) {
        ASSERT_LT(i, api_define_list.count) << line;
        const ApiRow& row = api_define_list.rows[i];
        const std::string name = line.substr(0, line.find('|'));
        std::string definition = line.substr(name.size() + 1) + '|';
        std::ranges::replace(definition, '|', '\0'); // ends each of the four texts
        EXPECT_EQ(std::string(row.definition, definition.size()), definition);
        EXPECT_EQ(row.api_name, "API_" + name);
        EXPECT_EQ(row.definition_name, "APIdef_" + name);
        EXPECT_EQ(row.vararg_name, "APIvararg_" + name);
        const bool only_documents = std::ranges::count(documentation, name) == 1;
        EXPECT_EQ(row.function == reinterpret_cast<void*>(&__verarg_empty), only_documents) << name;
        EXPECT_EQ(row.vararg == row.function, only_documents) << name;
    }
    EXPECT_EQ(i, api_define_list.count);
    EXPECT_EQ(i, 105u);
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
std::uintptr_t through_adapter(std::uintptr_t argument) {
    void* argv[] = {reinterpret_cast<void*>(argument)};
    return reinterpret_cast<std::uintptr_t>(ApiFunction<Function>::vararg(argv));
}

TEST(Adapter, ConvertsArgumentsAndResults) {
    EXPECT_EQ(through_adapter<&bool_of_bool>(0x100000000), 1u) << "only high bits set is still true";
    EXPECT_EQ(through_adapter<&bool_of_bool>(0), 0u);
    EXPECT_EQ(through_adapter<&int_is_minus_two>(0x7FFFFFFFE), 1u) << "the low 32 bits, signed";
    const double volume = -6.0;
    EXPECT_EQ(through_adapter<&double_is_minus_six>(reinterpret_cast<std::uintptr_t>(&volume)), 1u);
    EXPECT_EQ(through_adapter<&double_is_minus_six>(0), 0u) << "no pointer reads as 0.0";
    EXPECT_EQ(through_adapter<&same_track>(0x1234), 0x1234u);
    EXPECT_EQ(through_adapter<&code>(7), 1u) << "a code passes as 0 or 1";
    EXPECT_EQ(through_adapter<&code>(0), 0u);
    EXPECT_EQ(through_adapter<&throwing_bool>(0), 0u) << "an exception is the failure of its kind";
    EXPECT_EQ(through_adapter<&throwing_code>(0), 1u);
}

} // namespace
