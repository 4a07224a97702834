// Arrays, maps and records by handle, made, read and released in any order, also wrongly: nothing is left in
// the pools, and nothing that has gone is touched.

#include "bindings/python/functions.hpp"
#include "bindings/python/value_pools.hpp"
#include "object/records.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <random>

namespace {

using namespace python_api;

std::size_t pooled() {
    using namespace mk_object;
    return python_utility::pyvar_array_list.size() + python_utility::pyvar_map_list.size() +
           mk_List::mkList_pool.size() + mk_Peak::pool.size() + TrackDetail::pool.size() +
           mk_Midi::pool.size();
}

class Handles : public mk_test::BoundPlugin {
protected:
    std::size_t random(std::size_t choices) { return random_() % choices; }

    /// A handle that once was or still is, or a number that never was one.
    Handle any() { return known_.empty() || random(20) == 0 ? random_() : known_[random(known_.size())]; }

    void create(MediaItem* item) {
        static constexpr std::array classes{"TrackDetail", "mk_Midi", "mk_Peak", "LINGOMAT_Tracks"};
        Handle handle = 0;
        const std::function<void()> ways[] = {
            [&] { handle = py_create_array(); },
            [&] { handle = py_create_map(); },
            [&] { handle = py_create_mkList_array(); },
            [&] { handle = py_create_mkObj_inarray(any(), classes[random(classes.size())]); },
            [&] { py_GetStringSplitList("a,b", ",", &handle); },
            [&] { py_GetTrackItemList(nullptr, &handle); },
            [&] { py_GetTrackDepthList(nullptr, &handle); },
            [&] { py_GetMediaItemPeakList(item, &handle); }};
        ways[random(std::size(ways))]();
        known_.push_back(handle);
    }

    void write_and_read() {
        py_set_array_ptr(any(), reinterpret_cast<void*>(any()));
        py_set_array_string(any(), "text");
        py_set_map_string(any(), "key", "text");
        py_set_string_inmkObj(any(), "Name", "text");
        std::array<char, 1024> key{}, value{};
        py_get_string_inarray(any(), 0, value.data());
        py_get_string_inmap(any(), 0, key.data(), value.data());
        py_get_key_inmkObj(any(), 0, key.data(), value.data());
        py_get_string_inmkobj(any(), "Name", value.data());
        py_get_double_inmkobj(any(), "Time");
        const Handle object = any();
        if (const int size = py_get_obj_size(object); size > 0)
            known_.push_back(reinterpret_cast<Handle>(py_get_ptr_inarray(object, size - 1)));
    }

    void release_all() {
        std::shuffle(known_.begin(), known_.end(), random_);
        for (const Handle handle : known_)
            py_release_obj(handle);
        known_.clear();
    }

private:
    std::mt19937_64 random_{1};
    std::vector<Handle> known_;
};

TEST_F(Handles, LeaveNothingInThePools) {
    MediaItem* item = handle(add_item(mk_test::babble(0.003, 1)));
    ASSERT_EQ(pooled(), 0U);
    std::size_t most = 0;
    for (int cycle = 1; cycle <= 100'000; ++cycle) {
        create(item);
        write_and_read();
        for (std::size_t left = random(5); left > 0; --left)
            (random(3) == 0 ? py_release_obj2 : py_release_obj)(any());
        most = std::max(most, pooled());
        if (cycle % 100 == 0) {
            release_all();
            ASSERT_EQ(pooled(), 0U) << "after cycle " << cycle;
        }
    }
    EXPECT_GT(most, 20U);
}

} // namespace
